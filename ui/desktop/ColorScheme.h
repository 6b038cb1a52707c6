#pragma once

#include "ui/theme/Tones.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace tallyfold {

/// Applies the program's own style on desktops without a platform style, and follows the preference of the
/// desktop for a light or dark scheme and for more contrast while the program runs. Has no effect on desktops
/// with a style, whose palette changes by itself.
class ColorScheme final : public QObject {
    Q_OBJECT
public:
    /// The preference of the desktop, with the values of the settings portal.
    enum class Preference : unsigned { none = 0, dark = 1, light = 2 };

    /// Follows the portal on `bus`. Without a portal or a preference the scheme remains that of the current
    /// palette of the application.
    explicit ColorScheme(const QDBusConnection &bus = QDBusConnection::sessionBus(),
                         QObject *parent = nullptr);

    /// Applies the palette for `preference`, light for `none`, and `contrast`.
    static void apply(Preference preference, Contrast contrast = Contrast::normal);

    /// Whether the current style leaves the colours to the application.
    [[nodiscard]] static bool areColoursOurs();

private Q_SLOTS:
    void onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void ask(const QString &key);
    /// Applies the value of `key`; ignored if it is not a number.
    void take(const QString &key, const QDBusVariant &value);

    QDBusConnection m_bus;
    Preference m_own = Preference::light; ///< Used if the desktop has none.
    Preference m_applied = Preference::light;
    Contrast m_contrast = Contrast::normal;
};

} // namespace tallyfold
