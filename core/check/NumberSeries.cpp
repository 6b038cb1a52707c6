#include "core/check/NumberSeries.h"

#include "core/check/DigitRuns.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

namespace tallyfold::check {

namespace {

/// Ranges by which a way to cut texts is chosen: as many tell as much as all.
constexpr std::size_t maxTried = 2000;
/// Digits of prefix or suffix right beside the number that are thought of.
constexpr qsizetype maxFixedDigits = 8;
/// Runs of digits that are thought of, from the last.
constexpr std::size_t maxRuns = 8;

/// A range with its texts cut.
struct CutRange {
    QString prefix;
    QString suffix;
    std::int64_t first = 0;
    std::int64_t last = 0;
    qsizetype digits = 0; ///< Of the first number.
    std::size_t index = 0;

    [[nodiscard]] auto key() const
    {
        return std::tie(prefix, suffix, first, last, index);
    }
    [[nodiscard]] bool isOfSeries(const CutRange &other) const
    {
        return prefix == other.prefix && suffix == other.suffix;
    }
    /// Whether the first number is printed as the one that comes after `before`.
    [[nodiscard]] bool follows(const CutRange &before) const
    {
        return isOfSeries(before) && first == before.last + 1 &&
               digits == std::max(before.digits, QString::number(first).size());
    }
};

/// A way to cut texts that are alike but for their digits: which run of digits has the number, and how many
/// of its digits belong to what stands before and behind it.
struct Cut {
    std::size_t run = 0;
    qsizetype before = 0;
    qsizetype behind = 0;

    [[nodiscard]] std::optional<CutRange> operator()(const NumberRange &range, std::size_t index) const
    {
        const DigitRun first = inside(digitRuns(range.first)[run]);
        const DigitRun last = inside(digitRuns(range.last)[run]);
        const auto number = numberIn(QStringView(range.first).sliced(first.start, first.end - first.start));
        if (!number || range.first.left(first.start) != range.last.left(last.start) ||
            range.first.mid(first.end) != range.last.mid(last.end) ||
            numberIn(QStringView(range.last).sliced(last.start, last.end - last.start)) !=
                *number + range.count - 1) {
            return std::nullopt;
        }
        return CutRange{range.first.left(first.start), range.first.mid(first.end), *number,
                        *number + range.count - 1,     first.end - first.start,    index};
    }

private:
    /// Empty, at its start, where there are too few digits.
    [[nodiscard]] DigitRun inside(const DigitRun &whole) const
    {
        const qsizetype start = std::min(whole.start + before, whole.end);
        return {start, std::max(start, whole.end - behind)};
    }
};

using Members = std::vector<std::size_t>;

/// The ranges of `members`, cut and in order of their numbers; those that `cut` does not fit are left out.
std::vector<CutRange> ordered(std::span<const NumberRange> ranges, std::span<const std::size_t> members,
                              const Cut &cut)
{
    std::vector<CutRange> found;
    found.reserve(members.size());
    for (const std::size_t member : members) {
        if (auto range = cut(ranges[member], member)) {
            found.push_back(std::move(*range));
        }
    }
    std::sort(found.begin(), found.end(), [](const auto &a, const auto &b) { return a.key() < b.key(); });
    return found;
}

/// How much speaks against a cut.
std::size_t breaks(std::span<const NumberRange> ranges, std::span<const std::size_t> members, const Cut &cut)
{
    const std::vector<CutRange> found = ordered(ranges, members, cut);
    std::size_t count = 2 * (members.size() - found.size());
    for (std::size_t next = 1; next < found.size(); ++next) {
        const CutRange &before = found[next - 1];
        count += found[next].follows(before) ? 0U : 1U;
    }
    return count;
}

Cut bestCut(std::span<const NumberRange> ranges, const Members &members)
{
    const auto tried = std::span(members).first(std::min(members.size(), maxTried));
    const std::size_t runs = digitRuns(ranges[members.front()].first).size();
    Cut best{runs - 1};
    std::size_t fewest = breaks(ranges, tried, best);
    const auto attempt = [&](const Cut &cut) {
        const std::size_t count = fewest > 0 ? breaks(ranges, tried, cut) : 0;
        if (count < fewest) {
            fewest = count;
            best = cut;
        }
    };
    const std::size_t firstRun = runs - std::min(runs, maxRuns);
    for (std::size_t run = runs; run-- > firstRun;) {
        attempt({run, 0, 0});
    }
    for (std::size_t run = runs; run-- > firstRun;) {
        for (qsizetype before = 0; before <= maxFixedDigits; ++before) {
            for (qsizetype behind = 0; behind <= maxFixedDigits; ++behind) {
                attempt({run, before, behind});
            }
        }
    }
    return best;
}

/// `text` with one mark in the place of each run of digits.
QString shapeOf(const QString &text)
{
    QString shape;
    for (const QChar ch : text) {
        if (!isDigit(ch)) {
            shape.append(ch);
        } else if (!shape.endsWith(QChar::Null)) {
            shape.append(QChar::Null);
        }
    }
    return shape;
}

/// Walks over ordered ranges, series by series.
class Walk {
public:
    explicit Walk(NumberSeries &series) : m_series(&series) {}

    void take(std::span<const CutRange> ranges)
    {
        for (const CutRange &range : ranges) {
            if (m_run && m_run->isOfSeries(range)) {
                join(range);
            } else {
                begin(range);
            }
        }
        end();
    }

private:
    void begin(const CutRange &range)
    {
        end();
        m_run = range;
    }

    void join(const CutRange &range)
    {
        if (range.first > m_run->last + 1) {
            m_series->gaps.push_back({text(m_run->last + 1), text(range.first - 1), range.index});
            const qsizetype digits = m_run->digits;
            begin(range);
            m_run->digits = std::min(digits, range.digits);
            return;
        }
        if (range.first <= m_run->last) {
            m_series->overlaps.push_back(
                {text(range.first), text(std::min(range.last, m_run->last)), range.index, m_run->index});
        }
        if (range.last > m_run->last) {
            m_run->last = range.last;
            m_run->index = range.index; // The one that reaches farthest.
        }
    }

    void end()
    {
        if (m_run) {
            m_series->runs.push_back({text(m_run->first), text(m_run->last), m_run->last - m_run->first + 1});
        }
        m_run.reset();
    }

    [[nodiscard]] QString text(std::int64_t number) const
    {
        return m_run->prefix + QString::number(number).rightJustified(m_run->digits, u'0') + m_run->suffix;
    }

    NumberSeries *m_series;
    std::optional<CutRange> m_run;
};

} // namespace

NumberSeries NumberSeries::of(std::span<const NumberRange> ranges)
{
    std::map<QString, Members> byShape;
    for (std::size_t index = 0; index < ranges.size(); ++index) {
        const QString shape = shapeOf(ranges[index].first);
        if (shape.contains(QChar::Null) && shape == shapeOf(ranges[index].last)) {
            byShape[shape].push_back(index);
        }
    }
    NumberSeries series;
    for (const auto &[shape, members] : byShape) {
        Walk(series).take(ordered(ranges, members, bestCut(ranges, members)));
    }
    return series;
}

} // namespace tallyfold::check
