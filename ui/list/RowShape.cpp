#include "ui/list/RowShape.h"

namespace tallyfold {

RowShape RowShape::of(const PlannedFile &file)
{
    if (file.source.problem) {
        return {file.source.problem, false, false, false, std::nullopt};
    }
    return {std::nullopt, file.firstNumber().has_value(), file.isSkipped(), file.isCoverOnly(),
            file.source.existingBates};
}

} // namespace tallyfold
