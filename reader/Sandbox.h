#pragma once

namespace tallyfold::reader {

/// What came of entering the sandbox.
enum class SandboxEntry {
    entered,
    leftOut, ///< This was built without libseccomp, or runs on a system that has no such filters.
    refused, ///< The system has such filters and does not let this process have one.
};

/// Takes from this process, all its threads and for good, every call of the system that reading pages does
/// not need. What is left: memory, time, its own threads, reading files, and talking through the open
/// `socket`. Opening a file to write is answered with EACCES, starting a process with EPERM, and any other
/// call as by a system that does not have it, with ENOSYS.
[[nodiscard]] SandboxEntry enterSandbox(int socket);

} // namespace tallyfold::reader
