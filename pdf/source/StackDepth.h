#pragma once

namespace tallyfold::pdf {

/// Whether the stack of this thread is nearly used up. What recurses as deep as a file says asks this before
/// it goes deeper: a stack that overflows ends the program, and nothing can catch that.
[[nodiscard]] bool isStackNearlyFull();

} // namespace tallyfold::pdf
