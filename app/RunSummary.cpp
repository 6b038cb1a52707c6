#include "app/RunSummary.h"

#include <set>

namespace tallyfold {

namespace {

/// The part of the summary that depends on the plan alone.
RunSummary planned(const ProductionPlan &plan, const std::filesystem::path &folder)
{
    RunSummary summary;
    summary.range = plan.rangeText();
    summary.nextNumber = plan.nextNumber();
    summary.nextBates = plan.settings->bates(summary.nextNumber);
    summary.folder = folder;
    return summary;
}

std::int64_t count(std::size_t size)
{
    return static_cast<std::int64_t>(size);
}

} // namespace

bool RunSummary::isSeriesFull() const
{
    return nextNumber > StampSettings::maxStart;
}

RunSummary RunSummary::of(const ProductionResult &result, const ProductionPlan &plan,
                          const std::filesystem::path &folder)
{
    RunSummary summary = planned(plan, folder);
    summary.files = count(result.written.size());
    summary.pages = result.pages;
    summary.index = result.index;
    summary.privilegeLog = result.privilegeLog;
    std::vector<StampError> errors;
    for (const PlannedFile *file : plan.stampedFiles()) {
        if (result.failures.contains(file->source.name) && !summary.failures.contains(file->source.name)) {
            summary.failures.append(file->source.name);
            errors.push_back(result.failures.value(file->source.name));
        }
    }
    summary.reasons = failureReasons(errors);
    return summary;
}

RunSummary RunSummary::ofStopped(const std::vector<std::filesystem::path> &written,
                                 const ProductionPlan &plan, const std::filesystem::path &folder)
{
    RunSummary summary = planned(plan, folder);
    summary.files = count(written.size());
    summary.cancelled = true;
    std::set<QString> names;
    for (const std::filesystem::path &path : written) {
        names.insert(displayName(path));
    }
    std::optional<std::int64_t> first;
    std::optional<std::int64_t> last;
    for (const PlannedFile *file : plan.stampedFiles()) {
        if (names.contains(file->outputName)) {
            summary.pages += count(file->pages.size());
            first = first ? first : file->firstNumber();
            last = file->lastNumber() ? file->lastNumber() : last;
        }
    }
    summary.range = first && last ? std::optional(plan.rangeText(*first, *last)) : std::nullopt;
    return summary;
}

} // namespace tallyfold
