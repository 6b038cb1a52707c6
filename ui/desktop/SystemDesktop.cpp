#include "ui/desktop/SystemDesktop.h"

#include "app/UriList.h"
#include "ui/desktop/BusLog.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>

#include <system_error>
#include <utility>

namespace tallyfold {

namespace {

constexpr int answerTime = 3000; // Milliseconds; the bus may have to start the file manager.

} // namespace

SystemDesktop::SystemDesktop() : SystemDesktop(QDBusConnection::sessionBus(), QDesktopServices::openUrl) {}

SystemDesktop::SystemDesktop(const QDBusConnection &bus, Opener opener)
    : m_bus(bus), m_opener(std::move(opener))
{
}

void SystemDesktop::reveal(const std::filesystem::path &item)
{
    if (!m_bus.isConnected()) {
        openFolderOf(item);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList(QString::fromLatin1(fileUri(item))) << QString();
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, answerTime), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, item] {
        if (watcher->isError()) {
            logBusFailure("showing a file in the file manager", watcher->error());
            openFolderOf(item);
        }
        watcher->deleteLater();
    });
}

void SystemDesktop::openFolderOf(const std::filesystem::path &item)
{
    std::error_code error;
    const bool isFolder = std::filesystem::is_directory(item, error);
    open(QUrl::fromEncoded(fileUri(isFolder ? item : item.parent_path()), QUrl::StrictMode));
}

void SystemDesktop::open(const QUrl &url)
{
    m_opener(url);
}

} // namespace tallyfold
