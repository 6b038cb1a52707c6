#include "core/check/NumberedPages.h"

#include "core/check/DigitRuns.h"

namespace tallyfold::check {

namespace {

QString numberText(std::int64_t number, qsizetype digits)
{
    return QString::number(number).rightJustified(digits, u'0');
}

} // namespace

std::optional<NumberedPages> NumberedPages::of(const QString &firstText, const QString &lastText,
                                               std::int64_t pages)
{
    const std::vector<DigitRun> runs = digitRuns(firstText);
    for (const std::int64_t firstPage : {1, 2}) {
        const std::int64_t count = pages - firstPage + 1;
        // The last run is mostly the number, and a digit of the prefix mostly no part of it.
        for (auto run = runs.rbegin(); count > 0 && run != runs.rend(); ++run) {
            for (qsizetype start = run->start; start < run->end; ++start) {
                for (qsizetype end = run->end; end > start; --end) {
                    const auto number = numberIn(QStringView(firstText).mid(start, end - start));
                    if (!number) {
                        continue;
                    }
                    NumberedPages numbered{
                        firstText.left(start), firstText.mid(end), end - start, *number, count, firstPage};
                    if (numbered.text(count - 1) == lastText) {
                        return numbered;
                    }
                }
            }
        }
    }
    return std::nullopt;
}

QString NumberedPages::text(std::int64_t index) const
{
    return prefix + numberText(first + index, digits) + suffix;
}

std::int64_t NumberedPages::last() const
{
    return first + count - 1;
}

} // namespace tallyfold::check
