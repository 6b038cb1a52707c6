#pragma once

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

    ReaderProcess() = default;
    ~ReaderProcess();
    ReaderProcess(const ReaderProcess &) = delete;
    ReaderProcess &operator=(const ReaderProcess &) = delete;

    /// Asks, with the open file `descriptor` unless that is -1, and waits for the answer; false when there is
    /// none.
    [[nodiscard]] bool ask(std::string_view request, int descriptor, std::string &answer);

private:
    bool start();
    void stop();

    int m_socket = -1;
    int m_process = -1;
};

} // namespace tallyfold::pdf
