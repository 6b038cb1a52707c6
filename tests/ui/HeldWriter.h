#pragma once

#include "app/AppModel.h"
#include "tests/app/Gate.h"

namespace tallyfold::tests {

/// Writes productions as the system does, and waits at `gate` after the fifth page, when progress was told.
inline AppModel::Writer writerHeldAt(Gate &gate)
{
    return [&gate](const ProductionPlan &plan, const std::filesystem::path &into,
                   const ProductionOptions &options, const Production::OnPage &onPage) {
        return Production::write(plan, into, options, [&](std::int64_t page) {
            const bool goesOn = onPage(page);
            if (page == 5) {
                gate.pass();
            }
            return goesOn;
        });
    };
}

} // namespace tallyfold::tests
