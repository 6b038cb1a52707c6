// Any bytes as a source: opened, classified, planned, stamped into memory.

#include "core/ProductionPlan.h"
#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "fuzz/FileInMemory.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>

using namespace tallyfold;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const fuzz::FileInMemory file(data, size);
    if (!file.isSound()) {
        std::abort();
    }
    const SourceFile source = classify(file.path());
    StampSettings settings;
    settings.legend = QStringLiteral("CONFIDENTIAL");
    settings.pageOfTotal = true;
    const ProductionPlan plan({source}, settings);
    for (const PlannedFile *planned : plan.stampedFiles()) {
        try {
            (void)Stamper::data(*planned, plan.settings, std::numeric_limits<std::int64_t>::max());
        } catch (const StampError &) {
            // A clear outcome, and all that may come out.
        }
    }
    return 0;
}
