#include "ui/WindowState.h"

namespace tallyfold {

namespace {

const QString group = QStringLiteral("window/");

} // namespace

WindowState::WindowState(const QString &path) : m_settings(path) {}

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
