#include "core/PasswordNotice.h"

#include "core/ProductionPlan.h"

#include <algorithm>

namespace tallyfold {

std::optional<PasswordNotice> PasswordNotice::of(const ProductionPlan &plan)
{
    PasswordNotice notice;
    for (const PlannedFile *file : plan.passwordProtectedFiles()) {
        notice.names.append(file->source.name);
    }
    if (notice.names.isEmpty()) {
        return std::nullopt;
    }
    notice.nothingElseToStamp = plan.stampedFiles().empty();
    return notice;
}

std::int64_t PasswordNotice::count() const
{
    return names.size();
}

PasswordNotice::ShortList PasswordNotice::shortList(std::int64_t limit) const
{
    const qsizetype shown = std::min<qsizetype>(std::max<std::int64_t>(limit, 1), names.size());
    return {names.first(shown), names.size() - shown};
}

} // namespace tallyfold
