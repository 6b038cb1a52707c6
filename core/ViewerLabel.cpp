#include "core/ViewerLabel.h"

#include <cstdint>

namespace tallyfold {

pdf::PageLabel viewerLabel(const PlannedPage &page, const NormalizedSettings &settings)
{
    if (!page.number) {
        return {};
    }
    const std::int64_t number = *page.number;
    std::u16string text = BatesFormatter(settings)(number).toStdU16String();
    // A label ends with its number, begins its numbers at 1, and has no zeros before them.
    if (!settings->suffix.isEmpty() || number < 1) {
        return {std::move(text), std::nullopt};
    }
    const std::size_t digits = std::to_string(number).size();
    text.resize(text.size() - digits);
    return {std::move(text), number};
}

} // namespace tallyfold
