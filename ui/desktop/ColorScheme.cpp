#include "ui/desktop/ColorScheme.h"

#include "ui/desktop/BusLog.h"
#include "ui/desktop/Portal.h"
#include "ui/theme/ModernStyle.h"
#include "ui/theme/Tones.h"

#include <QApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QStyle>

#include <memory>
#include <optional>

namespace tallyfold {

namespace {

const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString contrastKey = QStringLiteral("contrast");

/// The number in `value`, which portals wrap in one or two variants; nothing if it is not a number.
std::optional<unsigned> numberIn(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value.userType() == QMetaType::UInt ? std::optional(value.toUInt()) : std::nullopt;
}

/// Unknown numbers mean no preference, according to the documentation of the portal.
ColorScheme::Preference preferenceOf(unsigned number)
{
    switch (number) {
    case 1:
        return ColorScheme::Preference::dark;
    case 2:
        return ColorScheme::Preference::light;
    default:
        return ColorScheme::Preference::none;
    }
}

} // namespace

ColorScheme::ColorScheme(const QDBusConnection &bus, QObject *parent) : QObject(parent), m_bus(bus)
{
    if (!areColoursOurs()) {
        return;
    }
    m_own = isDark(QApplication::palette()) ? Preference::dark : Preference::light;
    QApplication::setStyle(std::make_unique<ModernStyle>().release()); // The application takes ownership.
    m_applied = m_own;
    apply(m_own);
    if (!m_bus.isConnected()) {
        return;
    }
    qRegisterMetaType<QDBusVariant>(); // The bus finds the types of slot parameters by name.
    // Subscribed before reading, so that no change is missed. Reading may work even if this fails.
    if (!m_bus.connect(portal::service, portal::path, settingsInterface, QStringLiteral("SettingChanged"),
                       this, SLOT(onSettingChanged(QString, QString, QDBusVariant)))) {
        logBusFailure("following the desktop's colour scheme", m_bus.lastError());
    }
    ask(colorScheme);
    ask(contrastKey);
}

void ColorScheme::ask(const QString &key)
{
    QDBusMessage call = QDBusMessage::createMethodCall(portal::service, portal::path, settingsInterface,
                                                       QStringLiteral("Read"));
    call << appearance << key;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid()) {
            take(key, reply.value());
        } else {
            logBusFailure("asking for the desktop's colours", reply.error());
        }
        watcher->deleteLater();
    });
}

void ColorScheme::onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearance) {
        take(key, value);
    }
}

void ColorScheme::take(const QString &key, const QDBusVariant &value)
{
    const std::optional<unsigned> number = numberIn(value.variant());
    if (!number) {
        return;
    }
    Preference preference = m_applied;
    Contrast contrast = m_contrast;
    if (key == colorScheme) {
        preference = preferenceOf(*number) == Preference::none ? m_own : preferenceOf(*number);
    } else if (key == contrastKey) {
        contrast = *number == 1 ? Contrast::high : Contrast::normal;
    }
    if (preference != m_applied || contrast != m_contrast) {
        m_applied = preference;
        m_contrast = contrast;
        apply(preference, contrast);
    }
}

bool ColorScheme::areColoursOurs()
{
    return QApplication::style()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
}

void ColorScheme::apply(Preference preference, Contrast contrast)
{
    QApplication::setPalette(preference == Preference::dark ? darkPalette(contrast) : lightPalette(contrast));
}

} // namespace tallyfold
