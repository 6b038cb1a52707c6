#include "core/check/DigitRuns.h"

namespace tallyfold::check {

bool isDigit(QChar ch)
{
    return ch >= u'0' && ch <= u'9';
}

std::vector<DigitRun> digitRuns(QStringView text)
{
    std::vector<DigitRun> runs;
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (!isDigit(text[place])) {
            continue;
        }
        if (!runs.empty() && runs.back().end == place) {
            ++runs.back().end;
        } else {
            runs.push_back({place, place + 1});
        }
    }
    return runs;
}

std::optional<std::int64_t> numberIn(QStringView digits)
{
    constexpr qsizetype maxDigits = 18;
    if (digits.isEmpty() || digits.size() > maxDigits) {
        return std::nullopt;
    }
    std::int64_t value = 0;
    for (const QChar ch : digits) {
        if (!isDigit(ch)) {
            return std::nullopt;
        }
        value = 10 * value + (ch.unicode() - u'0');
    }
    return value;
}

} // namespace tallyfold::check
