#pragma once

#include "files/Descriptor.h"
#include "pdf/viewing/SharedPixelBufferPool.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// A child process that reads pages, started by the first request. It may crash or hang on a file: one that
/// does not answer in time is killed, and the next request starts another.
class ReaderProcess {
public:
    /// An idle process, or a new one. At most two idle ones are kept.
    [[nodiscard]] static std::unique_ptr<ReaderProcess> borrow();
    /// Keeps `process` for the next `borrow`.
    static void giveBack(std::unique_ptr<ReaderProcess> process);

    /// The program that is run, and the time limit of one answer.
    struct Program {
        std::filesystem::path path;
        std::chrono::milliseconds maxAnswerTime;

        /// The reader that belongs to the program at `program`: the one beside it, as in a build, else the
        /// installed one. An answer may take five seconds, a thousand times that of an ordinary page.
        [[nodiscard]] static Program of(const std::filesystem::path &program);
        /// That of the running program.
        [[nodiscard]] static Program installed();
    };

    explicit ReaderProcess(Program program = Program::installed());
    ~ReaderProcess();
    ReaderProcess(const ReaderProcess &) = delete;
    ReaderProcess &operator=(const ReaderProcess &) = delete;

    /// Sends `request`, with the open file `descriptor` unless that is -1, and receives the answer, if
    /// there is one. A stop that is requested meanwhile, on any thread, kills the process and ends the wait.
    [[nodiscard]] std::optional<std::string> ask(std::string_view request, int descriptor,
                                                 const std::stop_token &givenUp = {});

    /// A buffer for a picture of `size` bytes, as `SharedPixelBufferPool::lend`.
    [[nodiscard]] std::shared_ptr<SharedPixelBuffer> bufferFor(std::size_t size);

private:
    /// Whether it runs and has sent nothing unasked. The system may have killed it meanwhile, for instance
    /// when memory ran out.
    [[nodiscard]] bool isWaiting() const;
    bool start();
    /// Ends the process; gives its status as waitpid has it, 0 when none ran.
    int stop();
    std::optional<std::string> converse(std::string_view request, int descriptor,
                                        const std::stop_token &givenUp);

    Program m_program;
    files::Descriptor m_socket;
    int m_process = -1;
    SharedPixelBufferPool m_buffers;
};

} // namespace tallyfold::pdf
