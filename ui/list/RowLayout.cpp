#include "ui/list/RowLayout.h"

namespace tallyfold {

RowLayout RowLayout::of(const PlannedFile &file)
{
    if (file.source.problem) {
        return {file.source.problem, false, false, false, std::nullopt};
    }
    return {std::nullopt, file.firstNumber().has_value(), file.isSkipped(), file.isCoverOnly(),
            file.source.existingBates};
}

} // namespace tallyfold
