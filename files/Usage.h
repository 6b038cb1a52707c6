#pragma once

#include <chrono>
#include <cstdint>

namespace tallyfold::files {

/// Whether little is left of the stack of the thread that asks: enough for everything that does not recurse.
/// False where the system does not tell how large the stack is.
[[nodiscard]] bool isStackNearlyFull();

/// The processor time that the thread that asks has used.
[[nodiscard]] std::chrono::nanoseconds processorTimeOfThread();

/// The bytes of memory that this process has for itself, without allocating any; 0 when that cannot be found
/// out.
[[nodiscard]] std::int64_t memoryOfProcess() noexcept;

} // namespace tallyfold::files
