#include "ui/desktop/TerminationSignals.h"

#include "ui/Log.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace tallyfold {

namespace {

constexpr std::array<int, 3> watched{SIGTERM, SIGINT, SIGHUP};

/// The pipe through which the signal handler wakes the event loop; write is async-signal-safe.
int readEnd = -1;
int writeEnd = -1;

void wake(int)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written =
        ::write(writeEnd, &byte, 1); // If the pipe is full, the loop has been woken.
}

void handleWith(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : watched) {
        sigaction(signal, &action, nullptr);
    }
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent) : QObject(parent)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qCInfo(uiLog) << "no pipe for signals to end:" << std::generic_category().message(errno).c_str();
        return; // The signals keep their default action.
    }
    readEnd = ends[0];
    writeEnd = ends[1];
    m_notifier = std::make_unique<QSocketNotifier>(readEnd, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (::read(readEnd, &byte, 1) > 0) {
        }
        Q_EMIT received();
    });
    handleWith(wake);
}

TerminationSignals::~TerminationSignals()
{
    if (m_notifier) {
        handleWith(SIG_DFL);
        m_notifier.reset();
        ::close(readEnd);
        ::close(writeEnd);
    }
}

} // namespace tallyfold
