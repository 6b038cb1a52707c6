#include "ui/text/PlanText.h"

#include "app/CountText.h"
#include "ui/text/Words.h"

#include <QLocale>

#include <algorithm>

namespace tallyfold {

namespace {

std::int64_t numberedPages(const ProductionPlan &plan)
{
    std::int64_t pages = 0;
    for (const PlannedFile &file : plan.files) {
        pages += std::count_if(file.pages.begin(), file.pages.end(),
                               [](const PlannedPage &page) { return page.number.has_value(); });
    }
    return pages;
}

QString totalsOf(const ProductionPlan &plan)
{
    return countText(static_cast<std::int64_t>(plan.files.size()), Counted::files) + QStringLiteral(", ") +
           countText(numberedPages(plan), Counted::pages);
}

std::int64_t skippedFiles(const ProductionPlan &plan)
{
    const auto problems = std::count_if(plan.files.begin(), plan.files.end(), [](const PlannedFile &file) {
        return file.source.problem.has_value();
    });
    return problems + static_cast<std::int64_t>(plan.skippedFiles().size());
}

} // namespace

PlanSummary summaryOf(const ProductionPlan &plan)
{
    PlanSummary summary{totalsOf(plan), plan.rangeText(), std::nullopt};
    if (const std::int64_t skipped = skippedFiles(plan); skipped > 0) {
        summary.skipped = words(QT_TRANSLATE_NOOP("Words", "%1 skipped (listed in the index)")).arg(skipped);
    }
    return summary;
}

QString statusOf(const ProductionPlan &plan)
{
    const bool areAllProtected =
        !plan.files.empty() && plan.passwordProtectedFiles().size() == plan.files.size();
    if (areAllProtected) {
        return words(QT_TRANSLATE_NOOP("Words", "Nothing to stamp: the PDFs are password-protected"));
    }
    if (plan.files.empty()) {
        return words(QT_TRANSLATE_NOOP("Words", "No PDFs yet"));
    }
    //: Counts of files and pages.
    return words(QT_TRANSLATE_NOOP("Words", "%1 ready")).arg(totalsOf(plan));
}

QString progressText(std::int64_t done, std::int64_t total)
{
    const QLocale locale;
    return words(QT_TRANSLATE_NOOP("Words", "Stamping… %1 of %2 pages"))
        .arg(locale.toString(static_cast<qlonglong>(done)), locale.toString(static_cast<qlonglong>(total)));
}

std::int64_t pagesToWrite(const ProductionPlan &plan)
{
    std::int64_t pages = 0;
    for (const PlannedFile *file : plan.stampedFiles()) {
        pages += static_cast<std::int64_t>(file->pages.size());
    }
    return pages;
}

} // namespace tallyfold
