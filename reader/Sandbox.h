#pragma once

namespace tallyfold::reader {

/// The result of entering the sandbox.
enum class SandboxEntry {
    entered,
    leftOut, ///< Built without libseccomp, or the system has no seccomp filters.
    refused, ///< The system has seccomp filters and refuses one for this process.
};

/// Forbids this process and all its threads, irrevocably, every system call that reading pages does not need.
/// Allowed are memory, time, threads of its own, reading files, and messages through the open `socket`.
/// Opening a file for writing fails with EACCES, starting a process with EPERM, any other call with ENOSYS.
[[nodiscard]] SandboxEntry enterSandbox(int socket);

} // namespace tallyfold::reader
