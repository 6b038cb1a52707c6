#pragma once

#include "ui/theme/Tones.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace tallyfold {

/// Gives the program its looks where the desktop brings no style of its own, and follows the desktop's wish
/// for a light or a dark scheme, and for more contrast, also while the program runs. On a desktop with a
/// style nothing is done: its controls are the ones its users know, and its palette changes by itself.
class ColorScheme final : public QObject {
    Q_OBJECT
public:
    /// What the desktop prefers, as the settings portal numbers it.
    enum class Preference : unsigned { none = 0, dark = 1, light = 2 };

    /// Follows the portal that is on `bus`. Without one, or where it has no preference, the scheme stays that
    /// of the palette that the application has now.
    explicit ColorScheme(const QDBusConnection &bus = QDBusConnection::sessionBus(),
                         QObject *parent = nullptr);

    /// Takes the palette of `preference`, the light one for none, in `contrast`.
    static void apply(Preference preference, Contrast contrast = Contrast::normal);

    /// Whether the style in use leaves the colours to the application.
    [[nodiscard]] static bool areColoursOurs();

private Q_SLOTS:
    void onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void ask(const QString &key);
    /// Takes what the portal says of `key`; a value that is no number says nothing.
    void take(const QString &key, const QDBusVariant &value);

    QDBusConnection m_bus;
    Preference m_own = Preference::light; ///< Where the desktop has none.
    Preference m_applied = Preference::light;
    Contrast m_contrast = Contrast::normal;
};

} // namespace tallyfold
