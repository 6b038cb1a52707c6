#include "app/LooseTask.h"
#include "app/Translations.h"
#include "ui/desktop/ColorScheme.h"
#include "ui/desktop/InstanceService.h"
#include "ui/desktop/RunsOnDesktop.h"
#include "ui/desktop/TerminationSignals.h"
#include "ui/shell/AppIdentity.h"
#include "ui/shell/CommandLine.h"
#include "ui/shell/TallyfoldApp.h"
#include "window_support/LocalizedTitle.h"

#include <QApplication>
#include <QIcon>
#include <QLocale>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <span>

namespace {

using namespace tallyfold;
using Task = CommandLine::Task;

enum ExitCode { done = 0, usage = 64, unavailable = 69 };

/// Time to wait for the first request: D-Bus activation sends one immediately.
constexpr std::chrono::seconds longestWait{10};

CommandLine lineOf(int count, char **arguments)
{
    return CommandLine::of(
        std::span<const char *const>(arguments, static_cast<std::size_t>(count)).subspan(1));
}

void introduce()
{
    QApplication::setApplicationName(QStringLiteral("tallyfold"));
    QApplication::setApplicationDisplayName(QStringLiteral("Tallyfold"));
    QApplication::setApplicationVersion(QStringLiteral(TALLYFOLD_VERSION));
    QGuiApplication::setDesktopFileName(identity::id);
    QApplication::setWindowIcon(
        QIcon::fromTheme(identity::id, QIcon(QStringLiteral(":/symbols/tallyfold.svg"))));
}

/// Registers on the session bus and runs the event loop.
int run(const CommandLine &line)
{
    const Translations translations(applicationLanguage(Translations::languages(), QLocale().uiLanguages()));
    const ColorScheme scheme;
    InstanceService instance(identity::id);
    const bool isOther = instance.role() == InstanceService::Role::other;
    if (line.task == Task::service && instance.role() != InstanceService::Role::first) {
        std::fputs(isOther ? "" : "tallyfold: there is no session bus to wait on\n", stderr);
        return isOther ? done : unavailable; // The other instance serves the request.
    }
    if (isOther && instance.handOver(line.files)) {
        return done;
    }
    TallyfoldApp app(TallyfoldApp::systemParts());
    app.setReachable(instance.role() == InstanceService::Role::first);
    const RunsOnDesktop runs(app.model(), app.environment().plan, app.environment().desktop,
                             {[] { return QGuiApplication::applicationState() == Qt::ApplicationActive; },
                              [&app](const QString &token) { app.reopen({}, token); }},
                             [&app] { return app.askToStopForSession(); });
    QObject::connect(&instance, &InstanceService::activated, &app,
                     [&app](const QString &token) { app.reopen({}, token); });
    QObject::connect(&instance, &InstanceService::opened, &app, &TallyfoldApp::reopen);
    // Before waiting for anything, so that later starts do not contact this instance.
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &instance, &InstanceService::giveBack);
    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::received, &app, &TallyfoldApp::quit);
    if (line.task == Task::service) {
        app.awaitRequest(longestWait);
    } else {
        app.launch(line.files);
    }
    return QApplication::exec();
}

/// Creates the application, which requires a display, and runs it.
int runOnScreen(int count, char **arguments)
{
    QApplication application(count, arguments); // Removes the arguments of Qt.
    introduce();
    const CommandLine line = lineOf(count, arguments);
    if (line.task == Task::usage) {
        std::fprintf(stderr, "tallyfold: there is no option %s\n%s", line.unknown.c_str(),
                     CommandLine::help());
        return usage;
    }
    return run(line);
}

} // namespace

int main(int count, char **arguments)
{
    // Without a display.
    switch (lineOf(count, arguments).task) {
    case Task::help:
        std::fputs(CommandLine::help(), stdout);
        return done;
    case Task::version:
        std::puts("tallyfold " TALLYFOLD_VERSION);
        return done;
    default:
        break;
    }
    const int code = runOnScreen(count, arguments);
    if (LooseTask::isAnyLeft()) {
        std::_Exit(code); // Does not wait for abandoned work, whose result is dropped.
    }
    return code;
}
