#include "core/NormalizedSettings.h"

#include <algorithm>
#include <utility>

namespace tallyfold {

NormalizedSettings::NormalizedSettings(StampSettings settings) : m_settings(std::move(settings)) {}

BatesFormatter::BatesFormatter(const NormalizedSettings &settings)
    : m_prefix(settings->prefix),
      m_suffix(settings->suffix),
      m_digits(static_cast<qsizetype>(settings->digits))
{
}

QString BatesFormatter::operator()(std::int64_t number) const
{
    const QString plain = QString::number(std::max<std::int64_t>(number, 0));
    QString text;
    text.reserve(m_prefix.size() + std::max(m_digits, plain.size()) + m_suffix.size());
    text.append(m_prefix);
    for (qsizetype width = plain.size(); width < m_digits; ++width) {
        text.append(u'0');
    }
    return text.append(plain).append(m_suffix);
}

QString pageLabel(const NormalizedSettings &settings, std::int64_t page, std::int64_t total)
{
    QString format = settings->pageOfTotalFormat;
    return format.replace(QStringLiteral("{page}"), QString::number(page))
        .replace(QStringLiteral("{total}"), QString::number(total));
}

} // namespace tallyfold
