#include "core/check/NumberedPages.h"

#include "core/check/DigitRuns.h"

#include <vector>

namespace tallyfold::check {

namespace {

/// Prefix, digits and suffix have at most 92 characters, each of a few units.
constexpr qsizetype maxTextLength = 512;

QString numberText(std::int64_t number, qsizetype digits)
{
    return QString::number(number).rightJustified(digits, u'0');
}

/// Looks for the numbers that begin with one text and end with another.
class Search {
public:
    Search(const QString &first, const QString &last, std::int64_t pages)
        : m_first(first), m_last(last), m_pages(pages)
    {
    }

    /// Where page `firstPage` is the first that is numbered.
    [[nodiscard]] std::optional<NumberedPages> from(std::int64_t firstPage) const
    {
        const std::vector<DigitRun> runs = digitRuns(m_first);
        // The last run is mostly the number, and a digit of the prefix mostly no part of it.
        for (auto run = runs.rbegin(); m_pages >= firstPage && run != runs.rend(); ++run) {
            for (qsizetype start = run->start; start < run->end; ++start) {
                if (!m_last.startsWith(m_first.first(start))) {
                    break; // Nor with what is longer.
                }
                for (qsizetype end = run->end; end > start && m_last.endsWith(m_first.sliced(end)); --end) {
                    if (auto numbers = cut(start, end, firstPage)) {
                        return numbers;
                    }
                }
            }
        }
        return std::nullopt;
    }

private:
    /// With the digits from `start` to before `end` as the number.
    [[nodiscard]] std::optional<NumberedPages> cut(qsizetype start, qsizetype end,
                                                   std::int64_t firstPage) const
    {
        const auto number = numberIn(m_first.sliced(start, end - start));
        const qsizetype behind = m_first.size() - end;
        const std::int64_t count = m_pages - firstPage + 1;
        if (!number || m_last.size() <= start + behind ||
            m_last.sliced(start, m_last.size() - start - behind) !=
                numberText(*number + count - 1, end - start)) {
            return std::nullopt;
        }
        return NumberedPages{m_first.first(start).toString(),
                             m_first.sliced(end).toString(),
                             end - start,
                             *number,
                             count,
                             firstPage};
    }

    QStringView m_first;
    QStringView m_last;
    std::int64_t m_pages;
};

} // namespace

std::optional<NumberedPages> NumberedPages::of(const QString &firstText, const QString &lastText,
                                               std::int64_t pages)
{
    if (firstText.size() > maxTextLength || lastText.size() > maxTextLength) {
        return std::nullopt;
    }
    const Search search(firstText, lastText, pages);
    const std::optional<NumberedPages> all = search.from(1);
    return all ? all : search.from(2);
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
