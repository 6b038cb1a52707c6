#pragma once

namespace tallyfold::reader {

/// Sets resource limits of this process, which cannot be raised again: 1 GB of address space (no limit under
/// a sanitizer), an hour of processor time, file size 0, no core file, no new privileges. False when the
/// system refuses one of them.
[[nodiscard]] bool limitResources();

} // namespace tallyfold::reader
