#include "ui/updates/AppVersion.h"

#include <QCollator>
#include <QRegularExpression>

namespace tallyfold {

std::optional<AppVersion> AppVersion::parse(QStringView text)
{
    static const QRegularExpression shape(QRegularExpression::anchoredPattern(QStringLiteral(
                                              R"(v?((\d+(?:\.\d+)*)(?:-([.-]*[a-z\d][a-z\d.-]*))?))")),
                                          QRegularExpression::CaseInsensitiveOption);
    constexpr qsizetype maxLength = 100;
    const QRegularExpressionMatch match = shape.match(text.trimmed().toString());
    const QString numbers = match.captured(2);
    const QVersionNumber read = QVersionNumber::fromString(numbers);
    if (!match.hasMatch() || text.size() > maxLength || read.segmentCount() != numbers.count(u'.') + 1) {
        return std::nullopt;
    }
    AppVersion version;
    version.m_text = match.captured(1);
    version.m_numbers = read.normalized();
    version.m_suffix = match.captured(3);
    return version;
}

std::strong_ordering AppVersion::operator<=>(const AppVersion &other) const
{
    int order = QVersionNumber::compare(m_numbers, other.m_numbers);
    if (order == 0) {
        order = int{m_suffix.isEmpty()} - int{other.m_suffix.isEmpty()};
    }
    if (order == 0) { // Natural order: "beta2" before "beta10", and "beta.2" equals "Beta2".
        QCollator collator{QLocale(QLocale::English)};
        collator.setNumericMode(true);
        collator.setIgnorePunctuation(true);
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        order = collator.compare(m_suffix, other.m_suffix);
    }
    return order <=> 0;
}

} // namespace tallyfold
