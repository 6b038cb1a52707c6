#include "core/check/NumberSeries.h"

#include "core/StampSettings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace tallyfold::check {

using namespace Qt::StringLiterals;

namespace {

StampSettings settingsOf(const QString &prefix, const QString &suffix, std::int64_t digits)
{
    StampSettings settings;
    settings.prefix = prefix;
    settings.suffix = suffix;
    settings.digits = digits;
    return settings;
}

/// "A1 to A9, 9" and so on.
std::vector<std::string> textsOf(const std::vector<NumberSeries::Run> &runs)
{
    std::vector<std::string> texts;
    for (const NumberSeries::Run &run : runs) {
        texts.push_back(run.first.toStdString() + " to " + run.last.toStdString() + ", " +
                        std::to_string(run.count));
    }
    return texts;
}

NumberRange rangeOf(const StampSettings &settings, std::int64_t first, std::int64_t last)
{
    return {settings.bates(first), settings.bates(last), last - first + 1};
}

} // namespace

TEST(NumberSeries, IsOneRunInWhateverOrder)
{
    const StampSettings settings = settingsOf(u"ABC"_s, {}, 6);
    const NumberSeries series = NumberSeries::of(
        std::vector{rangeOf(settings, 4, 9), rangeOf(settings, 1, 3), rangeOf(settings, 10, 10)});
    EXPECT_EQ(textsOf(series.runs), std::vector<std::string>{"ABC000001 to ABC000010, 10"});
    EXPECT_TRUE(series.gaps.empty());
    EXPECT_TRUE(series.overlaps.empty());
}

TEST(NumberSeries, TellsOfGapsAndOfNumbersThatAreThereTwice)
{
    const StampSettings settings = settingsOf(u"ABC"_s, {}, 6);
    const NumberSeries series = NumberSeries::of(
        std::vector{rangeOf(settings, 1, 5), rangeOf(settings, 4, 9), rangeOf(settings, 12, 12)});
    EXPECT_EQ(textsOf(series.runs),
              (std::vector<std::string>{"ABC000001 to ABC000009, 9", "ABC000012 to ABC000012, 1"}));
    EXPECT_EQ(series.gaps, (std::vector{NumberSeries::Gap{u"ABC000010"_s, u"ABC000011"_s, 2}}));
    EXPECT_EQ(series.overlaps, (std::vector{NumberSeries::Overlap{u"ABC000004"_s, u"ABC000005"_s, 1, 0}}));
}

TEST(NumberSeries, KeepsPrefixesApart)
{
    const NumberSeries series = NumberSeries::of(
        std::vector{rangeOf(settingsOf(u"A"_s, {}, 4), 1, 5), rangeOf(settingsOf(u"B"_s, {}, 4), 3, 9)});
    EXPECT_EQ(series.runs.size(), 2);
    EXPECT_TRUE(series.gaps.empty());
    EXPECT_TRUE(series.overlaps.empty());
}

TEST(NumberSeries, FindsTheNumberAmongOtherDigits)
{
    // Numbers that outgrow their width are where it matters what of a run of digits is the prefix.
    for (const QString &prefix : {u""_s, u"ABC"_s, u"A1-"_s, u"2024-"_s, u"A1"_s, u"20"_s}) {
        for (const QString &suffix : {u""_s, u"-X"_s, u"-2"_s, u"7"_s}) {
            for (const std::int64_t start : {1, 95, 980}) {
                const StampSettings settings = settingsOf(prefix, suffix, 3);
                std::vector<NumberRange> ranges;
                for (std::int64_t file = 0; file < 40; ++file) {
                    ranges.push_back(rangeOf(settings, start + file, start + file));
                }
                const NumberSeries series = NumberSeries::of(ranges);
                EXPECT_TRUE(series.gaps.empty()) << settings.bates(start).toStdString();
                EXPECT_TRUE(series.overlaps.empty()) << settings.bates(start).toStdString();
                EXPECT_EQ(textsOf(series.runs),
                          std::vector{settings.bates(start).toStdString() + " to " +
                                      settings.bates(start + 39).toStdString() + ", 40"});
            }
        }
    }
}

TEST(NumberSeries, TellsWhatCountingEveryNumberTells)
{
    std::mt19937 random(7);
    for (int attempt = 0; attempt < 500; ++attempt) {
        const StampSettings settings = settingsOf(u"ABC"_s, {}, 2);
        std::vector<NumberRange> ranges;
        std::map<std::int64_t, int> counts;
        for (auto files = 1 + random() % 8; files > 0; --files) {
            const std::int64_t first = static_cast<std::int64_t>(random() % 120);
            const std::int64_t last = first + static_cast<std::int64_t>(random() % 12);
            ranges.push_back(rangeOf(settings, first, last));
            for (std::int64_t number = first; number <= last; ++number) {
                ++counts[number];
            }
        }
        std::set<QString> missing;
        std::set<QString> twice;
        for (std::int64_t number = counts.begin()->first; number < counts.rbegin()->first; ++number) {
            if (!counts.contains(number)) {
                missing.insert(settings.bates(number));
            }
        }
        for (const auto &[number, count] : counts) {
            if (count > 1) {
                twice.insert(settings.bates(number));
            }
        }

        const NumberSeries series = NumberSeries::of(ranges);
        const auto numbers = [&](const auto &stretches) {
            std::set<QString> all;
            for (const auto &stretch : stretches) {
                for (std::int64_t number = 0; number < 200; ++number) {
                    const QString text = settings.bates(number);
                    const auto key = [](const QString &value) { return value.mid(3).toLongLong(); };
                    if (key(text) >= key(stretch.first) && key(text) <= key(stretch.last)) {
                        all.insert(text);
                    }
                }
            }
            return all;
        };
        ASSERT_EQ(numbers(series.gaps), missing) << attempt;
        ASSERT_EQ(numbers(series.overlaps), twice) << attempt;
        std::int64_t inRuns = 0;
        for (const NumberSeries::Run &run : series.runs) {
            inRuns += run.count;
        }
        ASSERT_EQ(inRuns, static_cast<std::int64_t>(counts.size()));
    }
}

TEST(NumberSeries, IsEmptyOfNothing)
{
    EXPECT_TRUE(NumberSeries::of({}).runs.empty());
}

} // namespace tallyfold::check
