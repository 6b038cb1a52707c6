#pragma once

namespace tallyfold::reader {

/// Limits what this process may take of the machine, for good: much more than any page should, much less than
/// there is. 1 GB of addresses (under a sanitizer as many as it likes), an hour of the processor, no new
/// bytes in files, no core file, no privileges from programs that give some. False when the system refuses
/// one of them.
[[nodiscard]] bool limitResources();

} // namespace tallyfold::reader
