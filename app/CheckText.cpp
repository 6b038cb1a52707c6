#include "app/CheckText.h"

#include "app/CountText.h"
#include "app/FindingText.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <set>
#include <utility>

namespace tallyfold {

namespace {

using namespace check;

/// The way to the catalogues.
class Text {
    Q_DECLARE_TR_FUNCTIONS(CheckText)
};

QString localeNumber(std::int64_t number)
{
    return QLocale().toString(static_cast<qlonglong>(number));
}

std::int64_t sizeOf(const auto &values)
{
    return static_cast<std::int64_t>(values.size());
}

/// What was found, by weight.
struct Counts {
    std::int64_t faults = 0;
    std::set<std::pair<std::size_t, QString>> faultyFiles;
    bool areAllOfCopies = true;
    std::int64_t pagesNotChecked = 0;
    std::int64_t copiesNotChecked = 0;

    explicit Counts(const Outcome &outcome)
    {
        for (const Finding &finding : outcome.findings) {
            switch (weightOf(finding)) {
            case Weight::fault:
                ++faults;
                faultyFiles.emplace(finding.folder, finding.file);
                areAllOfCopies = areAllOfCopies && isOfCopy(finding);
                break;
            case Weight::notChecked:
                ++(finding.page ? pagesNotChecked : copiesNotChecked);
                break;
            case Weight::remark:
                break;
            }
        }
    }

    [[nodiscard]] QString faultsText() const
    {
        const QString findings = countText(faults, Counted::findings);
        return areAllOfCopies
                   ? Text::tr("%1 in %2").arg(findings, countText(sizeOf(faultyFiles), Counted::copies))
                   : findings;
    }

    /// Empty when all was checked.
    [[nodiscard]] QString notCheckedText() const
    {
        if (pagesNotChecked > 0 && copiesNotChecked > 0) {
            return Text::tr("%1 and %2 could not be checked")
                .arg(countText(pagesNotChecked, Counted::pages),
                     countText(copiesNotChecked, Counted::copies));
        }
        if (pagesNotChecked > 0 || copiesNotChecked > 0) {
            return Text::tr("%1 could not be checked")
                .arg(pagesNotChecked > 0 ? countText(pagesNotChecked, Counted::pages)
                                         : countText(copiesNotChecked, Counted::copies));
        }
        return {};
    }
};

/// Copies, pages and numbers that the indexes name.
QString indexedText(const Outcome &outcome)
{
    QStringList parts{countText(outcome.copies, Counted::copies), countText(outcome.pages, Counted::pages)};
    if (!outcome.numbers.empty()) {
        parts.append(numbersText(outcome.numbers));
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace

Verdict Verdict::of(const Outcome &outcome)
{
    const Counts counts(outcome);
    const QString notChecked = counts.notCheckedText();
    const QString indexed =
        outcome.copies == 0 ? QString() : Text::tr("The index names %1.").arg(indexedText(outcome));
    if (outcome.isStopped) {
        const QString text =
            counts.faults == 0
                ? Text::tr("Stopped: not everything was checked. Nothing wrong was found until then.")
                : Text::tr("Stopped: not everything was checked. %1 until then.").arg(counts.faultsText());
        return {Kind::stopped, text, indexed};
    }
    if (counts.faults > 0) {
        const QString text = Text::tr("Not whole: %1.").arg(counts.faultsText());
        return {Kind::notWhole,
                notChecked.isEmpty() ? text : text + QLatin1Char(' ') + notChecked + QLatin1Char('.'),
                indexed};
    }
    if (outcome.copies == 0) {
        return {Kind::nothing, Text::tr("The index names no copy: there was nothing to check."), {}};
    }
    if (!notChecked.isEmpty()) {
        return {Kind::wholeAsChecked, Text::tr("Whole as far as it was checked: %1.").arg(notChecked),
                indexed};
    }
    return {Kind::whole,
            Text::tr("Everything is there: %1, no gap, no number twice.").arg(indexedText(outcome)),
            {}};
}

QString numbersText(const std::vector<NumberSeries::Run> &numbers)
{
    constexpr std::size_t mostRuns = 4;
    QStringList runs;
    for (std::size_t index = 0; index < std::min(numbers.size(), mostRuns); ++index) {
        runs.append(numberRange(numbers[index].first, numbers[index].last));
    }
    QString text = runs.join(QStringLiteral(", "));
    if (numbers.size() > mostRuns) {
        text +=
            Text::tr(" and %1 more").arg(localeNumber(sizeOf(numbers) - static_cast<std::int64_t>(mostRuns)));
    }
    return text;
}

QString readingText(const Progress &progress)
{
    return progress.reading.isEmpty() ? Text::tr("Reading the index…")
                                      : Text::tr("Reading “%1”").arg(progress.reading);
}

QString pagesText(const Progress &progress)
{
    if (progress.plannedPages == 0) {
        return {};
    }
    return Text::tr("%1 of %2")
        .arg(localeNumber(progress.pages), countText(progress.plannedPages, Counted::pages));
}

} // namespace tallyfold
