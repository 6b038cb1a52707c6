#include "ui/theme/ColorScheme.h"

#include "ui/theme/ModernStyle.h"
#include "ui/theme/Tones.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QStyle>

#include <memory>

namespace tallyfold {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// The preference in `value`, which portals wrap in one or two variants.
ColorScheme::Preference preferenceIn(QVariant value)
{
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    switch (value.toUInt()) {
    case 1:
        return ColorScheme::Preference::dark;
    case 2:
        return ColorScheme::Preference::light;
    default:
        return ColorScheme::Preference::none;
    }
}

} // namespace

ColorScheme::ColorScheme(QObject *parent) : QObject(parent)
{
    if (!areColoursOurs()) {
        return;
    }
    QApplication::setStyle(std::make_unique<ModernStyle>().release()); // The application takes it over.
    apply(isDark(QApplication::palette()) ? Preference::dark : Preference::light);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        bus.connect(portal, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                    SLOT(onSettingChanged(QString, QString, QDBusVariant)));
        ask();
    }
}

void ColorScheme::ask()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(portal, portalPath, settingsInterface, QStringLiteral("Read"));
    call << appearance << colorScheme;
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid()) {
            apply(preferenceIn(QVariant::fromValue(reply.value())));
        }
        watcher->deleteLater();
    });
}

void ColorScheme::onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearance && key == colorScheme) {
        apply(preferenceIn(QVariant::fromValue(value)));
    }
}

bool ColorScheme::areColoursOurs()
{
    return QApplication::style()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
}

void ColorScheme::apply(Preference preference)
{
    QApplication::setPalette(preference == Preference::dark ? darkPalette() : lightPalette());
}

} // namespace tallyfold
