#include "tests/ui/FakeServices.h"

#include <QDBusMessage>

#include <gtest/gtest.h>

namespace tallyfold::tests {

namespace {

const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");

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
    ++readCount;
    if (group != appearance || key != colorSchemeKey || !colorScheme.isValid()) {
        sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), key);
        return {};
    }
    // As portals do: a variant in the variant that the call returns.
    return QDBusVariant(QVariant::fromValue(QDBusVariant(colorScheme)));
}

} // namespace tallyfold::tests
