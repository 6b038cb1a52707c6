#include "app/Translations.h"
#include "ui/shell/AppIdentity.h"
#include "ui/shell/InstanceService.h"
#include "ui/shell/TallyfoldApp.h"
#include "ui/shell/TerminationSignals.h"
#include "ui/theme/ColorScheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QIcon>

#include <system_error>

namespace {

using namespace tallyfold;

/// The files that the program was started with, absolute. Names are bytes, so they are taken as they come.
std::vector<std::filesystem::path> filesIn(int count, char **arguments)
{
    std::vector<std::filesystem::path> files;
    for (int place = 1; place < count; ++place) {
        std::error_code error;
        const std::filesystem::path file = std::filesystem::absolute(arguments[place], error);
        files.push_back(error ? std::filesystem::path(arguments[place]) : file);
    }
    return files;
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

} // namespace

int main(int count, char **arguments)
{
    QApplication application(count, arguments); // Takes out the arguments that are Qt's.
    introduce();
    const Translations translations;
    const ColorScheme scheme;
    const std::vector<std::filesystem::path> files = filesIn(count, arguments);

    InstanceService instance(QDBusConnection::sessionBus(), identity::id);
    if (instance.role() == InstanceService::Role::other && instance.handOver(files)) {
        return 0;
    }
    TallyfoldApp app(TallyfoldApp::systemParts());
    app.setReachable(instance.role() == InstanceService::Role::first);
    QObject::connect(&instance, &InstanceService::activated, &app, [&app](const QString &token) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
        app.reopen({});
    });
    QObject::connect(&instance, &InstanceService::opened, &app,
                     [&app](const std::vector<std::filesystem::path> &opened, const QString &token) {
                         qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
                         app.reopen(opened);
                     });
    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::received, &app, &TallyfoldApp::quit);
    app.launch(files);
    return QApplication::exec();
}
