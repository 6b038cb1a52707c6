#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// A child process that reads pages, started when it is first asked. It may crash or hang on what it is
/// given: an answer that does not come in time ends it, and the next question starts another.
class ReaderProcess {
public:
    /// A process nobody else is using, kept from earlier or new. At most two are kept.
    [[nodiscard]] static std::unique_ptr<ReaderProcess> borrow();
    /// Keeps `process` for the next one who needs one.
    static void giveBack(std::unique_ptr<ReaderProcess> process);

    /// The program that is run, and how long one of its answers may take.
    struct Program {
        std::filesystem::path path;
        std::chrono::milliseconds longestAnswer;

        /// The reader of the program at `program`: the one that lies beside it, as in a build, else the one
        /// that was installed with it. Five seconds for an answer, a thousand times what an ordinary page
        /// takes.
        [[nodiscard]] static Program of(const std::filesystem::path &program);
        /// That of the program that runs.
        [[nodiscard]] static Program installed();
    };

    explicit ReaderProcess(Program program = Program::installed());
    ~ReaderProcess();
    ReaderProcess(const ReaderProcess &) = delete;
    ReaderProcess &operator=(const ReaderProcess &) = delete;

    /// Asks, with the open file `descriptor` unless that is -1, and waits for the answer; false when there is
    /// none.
    [[nodiscard]] bool ask(std::string_view request, int descriptor, std::string &answer);

    /// A file in memory of `size` bytes or more, for the process to leave a picture in: the same one each
    /// time, as long as the process is the same. Its content is that of last time. -1 when there is no room.
    [[nodiscard]] int roomFor(std::size_t size);

private:
    /// Whether it runs and has nothing to say that was not asked for: it may have been ended while nobody
    /// needed it, as by a system that is short of memory.
    [[nodiscard]] bool isWaiting() const;
    bool start();
    void stop();
    void closeRoom();

    Program m_program;
    int m_socket = -1;
    int m_process = -1;
    int m_room = -1;
    std::size_t m_roomSize = 0;
};

} // namespace tallyfold::pdf
