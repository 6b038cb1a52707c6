#pragma once

#include "files/Descriptor.h"
#include "pdf/viewing/PictureRooms.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <stop_token>
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
    /// none. A stop that is requested meanwhile, on any thread, ends the process at once, and with it the
    /// wait.
    [[nodiscard]] bool ask(std::string_view request, int descriptor, std::string &answer,
                           const std::stop_token &givenUp = {});

    /// Memory of `size` bytes or more for the process to leave a picture in, which is nobody else's until the
    /// last one who has it lets go. Its content is anything. Null when there is none.
    [[nodiscard]] std::shared_ptr<PictureRoom> roomFor(std::size_t size);

private:
    /// Whether it runs and has nothing to say that was not asked for: it may have been ended while nobody
    /// needed it, as by a system that is short of memory.
    [[nodiscard]] bool isWaiting() const;
    bool start();
    void stop();
    bool converse(std::string_view request, int descriptor, std::string &answer,
                  const std::stop_token &givenUp);

    Program m_program;
    files::Descriptor m_socket;
    int m_process = -1;
    PictureRooms m_rooms;
};

} // namespace tallyfold::pdf
