#include "tests/ui/FakeServices.h"

#include <QDBusMessage>

#include <gtest/gtest.h>

namespace tallyfold::tests {

namespace {

const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString notificationsName = QStringLiteral("org.freedesktop.Notifications");
const QString notificationsPath = QStringLiteral("/org/freedesktop/Notifications");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString contrastKey = QStringLiteral("contrast");

} // namespace

bool FakeFileManager::takePlaceOn(QDBusConnection bus)
{
    return bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this,
                              QDBusConnection::ExportAllSlots) &&
           bus.registerService(QStringLiteral("org.freedesktop.FileManager1"));
}

void FakeFileManager::ShowItems(const QStringList &uris, const QString &)
{
    shown += uris;
    if (answer == Answer::error) {
        sendErrorReply(QDBusError::Failed, QStringLiteral("not today"));
    } else if (answer == Answer::none) {
        setDelayedReply(true);
    }
}

bool FakeSettingsPortal::takePlaceOn(QDBusConnection bus)
{
    m_bus = bus;
    return bus.registerObject(portalPath, this, QDBusConnection::ExportAllSlots) &&
           bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

void FakeSettingsPortal::change(const QString &group, const QString &key, const QVariant &value)
{
    if (group == appearance && key == colorSchemeKey) {
        colorScheme = value;
    }
    // Not as a signal of this object, which would make known to the program what it has to know by itself.
    QDBusMessage signal =
        QDBusMessage::createSignal(portalPath, settingsInterface, QStringLiteral("SettingChanged"));
    signal << group << key << QVariant::fromValue(QDBusVariant(value));
    EXPECT_TRUE(m_bus.send(signal));
}

bool FakeInhibitPortal::takePlaceOn(QDBusConnection bus)
{
    m_bus = bus;
    return bus.registerObject(portalPath, this, QDBusConnection::ExportAllSlots) &&
           bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

QDBusObjectPath FakeInhibitPortal::Inhibit(const QString &, uint flags, const QVariantMap &options)
{
    ++askedCount;
    if (refuses) {
        sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotAllowed"),
                       QStringLiteral("not today"));
        return {};
    }
    const QString path = portalPath + QStringLiteral("/request/%1").arg(askedCount);
    m_requests.push_back(std::make_unique<FakePortalRequest>(*this, path));
    EXPECT_TRUE(m_bus.registerObject(path, m_requests.back().get(), QDBusConnection::ExportAllSlots));
    held[path] = {flags, options.value(QStringLiteral("reason")).toString()};
    if (answersLater) {
        setDelayedReply(true);
        m_unanswered = message().createReply(QVariant::fromValue(QDBusObjectPath(path)));
    }
    return QDBusObjectPath(path);
}

void FakeInhibitPortal::answerNow()
{
    EXPECT_TRUE(m_bus.send(m_unanswered));
}

void FakeInhibitPortal::close(const QString &path)
{
    ++closedCount;
    held.remove(path);
}

bool FakeNotifications::takePlaceOn(QDBusConnection bus)
{
    m_bus = bus;
    return bus.registerObject(notificationsPath, this, QDBusConnection::ExportAllSlots) &&
           bus.registerService(notificationsName);
}

uint FakeNotifications::Notify(const QString &, uint, const QString &, const QString &title,
                               const QString &text, const QStringList &actions, const QVariantMap &hints, int)
{
    shown.push_back({title, text, actions, hints});
    return static_cast<uint>(shown.size());
}

void FakeNotifications::choose(uint id, const QString &action)
{
    QDBusMessage token =
        QDBusMessage::createSignal(notificationsPath, notificationsName, QStringLiteral("ActivationToken"));
    token << id << QStringLiteral("token");
    EXPECT_TRUE(m_bus.send(token));
    QDBusMessage chosen =
        QDBusMessage::createSignal(notificationsPath, notificationsName, QStringLiteral("ActionInvoked"));
    chosen << id << action;
    EXPECT_TRUE(m_bus.send(chosen));
}

bool FakeNotificationPortal::takePlaceOn(QDBusConnection bus)
{
    m_bus = bus;
    return bus.registerObject(portalPath, this, QDBusConnection::ExportAllSlots) &&
           bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

void FakeNotificationPortal::AddNotification(const QString &given, const QVariantMap &content)
{
    id = given;
    shown = content;
}

void FakeNotificationPortal::choose(const QString &action)
{
    QDBusMessage chosen = QDBusMessage::createSignal(
        portalPath, QStringLiteral("org.freedesktop.portal.Notification"), QStringLiteral("ActionInvoked"));
    chosen << id << action << QVariantList();
    EXPECT_TRUE(m_bus.send(chosen));
}

SettingsListener::SettingsListener(QDBusConnection bus)
{
    EXPECT_TRUE(bus.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                            SLOT(hear())));
}

void SettingsListener::hear()
{
    ++heardCount;
}

QDBusVariant FakeSettingsPortal::Read(const QString &group, const QString &key)
{
    readCount += key == colorSchemeKey ? 1 : 0;
    const QVariant value = key == colorSchemeKey ? colorScheme : key == contrastKey ? contrast : QVariant();
    if (group != appearance || !value.isValid()) {
        sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), key);
        return {};
    }
    // As portals do: a variant in the variant that the call returns.
    return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
}

} // namespace tallyfold::tests
