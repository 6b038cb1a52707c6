#include "ui/WindowState.h"

namespace tallyfold {

namespace {

const QString group = QStringLiteral("window/");

} // namespace

WindowState::WindowState()
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Tallyfold"),
                 QStringLiteral("Tallyfold"))
{
    m_settings.setFallbacksEnabled(false);
}

WindowState::WindowState(const QString &path) : m_settings(path, QSettings::IniFormat) {}

QByteArray WindowState::bytes(const QString &key) const
{
    return m_settings.value(group + key).toByteArray();
}

void WindowState::setBytes(const QString &key, const QByteArray &bytes)
{
    m_settings.setValue(group + key, bytes);
}

bool WindowState::flag(const QString &key, bool otherwise) const
{
    return m_settings.value(group + key, otherwise).toBool();
}

void WindowState::setFlag(const QString &key, bool value)
{
    m_settings.setValue(group + key, value);
}

} // namespace tallyfold
