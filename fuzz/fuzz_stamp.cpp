// Any bytes as a source: opened, classified, planned, stamped into memory.

#include "core/ProductionPlan.h"
#include "core/SourceClassifier.h"
#include "core/Stamper.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <sys/mman.h>
#include <unistd.h>

using namespace tallyfold;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const int file = ::memfd_create("source", MFD_CLOEXEC);
    if (file < 0 || ::write(file, data, size) != static_cast<ssize_t>(size)) {
        std::abort();
    }
    const SourceFile source = classify("/proc/self/fd/" + std::to_string(file));
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
    ::close(file);
    return 0;
}
