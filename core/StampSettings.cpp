#include "core/StampSettings.h"

#include "core/Graphemes.h"
#include "core/NormalizedSettings.h"

#include <QHashFunctions>

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>

namespace tallyfold {

namespace {

constexpr std::int64_t maxAffixLength = 40;
constexpr std::int64_t maxLegendLength = 200;
constexpr std::int64_t maxPageFormatLength = 80;

QString oneLine(const QString &text, std::int64_t longest)
{
    QString line = text;
    for (QChar &ch : line) {
        if (isNewline(ch)) {
            ch = u' ';
        }
    }
    return firstGraphemes(line, longest);
}

double finiteWithin(double value, const ClosedRange<double> &range, double otherwise)
{
    return std::isfinite(value) ? std::clamp(value, range.lowest, range.highest) : otherwise;
}

} // namespace

NormalizedSettings StampSettings::normalized() const
{
    const StampSettings defaults;
    StampSettings result = *this;
    result.prefix = oneLine(prefix, maxAffixLength);
    result.suffix = oneLine(suffix, maxAffixLength);
    result.legend = oneLine(legend, maxLegendLength);
    result.pageOfTotalFormat = oneLine(pageOfTotalFormat, maxPageFormatLength);
    result.digits = std::clamp(digits, digitRange.lowest, digitRange.highest);
    result.startNumber = std::clamp<std::int64_t>(startNumber, 0, maxStart);
    result.margin = finiteWithin(margin, marginRange, defaults.margin);
    result.fontSize = finiteWithin(fontSize, fontSizeRange, defaults.fontSize);
    if (fontName.trimmed().isEmpty()) {
        result.fontName = defaults.fontName;
    }
    return NormalizedSettings(std::move(result));
}

QString StampSettings::bates(std::int64_t number) const
{
    return BatesFormatter(normalized())(number);
}

QString StampSettings::pageLabel(std::int64_t page, std::int64_t total) const
{
    return tallyfold::pageLabel(normalized(), page, total);
}

StampSettings StampSettings::standard()
{
    return {};
}

StampSettings StampSettings::confidential(const QString &legend)
{
    StampSettings settings;
    settings.legend = legend;
    settings.color = StampColor::confidentialRed();
    return settings;
}

StampSettings StampSettings::exhibits()
{
    StampSettings settings;
    settings.prefix = QStringLiteral("EX-");
    settings.digits = 4;
    settings.batesPosition = StampPosition::topRight;
    settings.pageOfTotal = true;
    settings.naming = OutputNaming::batesAndOriginal;
    return settings;
}

std::size_t hashValue(const StampSettings &settings)
{
    std::size_t hash = 0;
    forEachField([&](const char * /*key*/, auto member) {
        const auto &value = settings.*member;
        using Value = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_enum_v<Value>) {
            hash = qHashMulti(hash, static_cast<int>(value));
        } else if constexpr (std::is_same_v<Value, StampColor>) {
            hash = qHashMulti(hash, hashValue(value));
        } else {
            hash = qHashMulti(hash, value);
        }
    });
    return hash;
}

} // namespace tallyfold
