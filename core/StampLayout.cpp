#include "core/StampLayout.h"

#include <algorithm>

namespace tallyfold {

namespace {

/// Padding between the text and the edge of its white box.
constexpr double boxPadding = 2;

double leftEnd(const MeasuredLine &line, const pdf::Size &page, double margin)
{
    switch (line.position) {
    case StampPosition::topLeft:
    case StampPosition::bottomLeft:
        return margin;
    case StampPosition::topCenter:
    case StampPosition::bottomCenter:
        return (page.width - line.width) * 0.5;
    case StampPosition::topRight:
    case StampPosition::bottomRight:
        break;
    }
    return page.width - margin - line.width;
}

} // namespace

std::vector<PlacedLine> layOut(std::span<const MeasuredLine> lines, const pdf::Size &page, double margin,
                               double gap)
{
    std::vector<PlacedLine> placed;
    placed.reserve(lines.size());
    for (const StampPosition spot : allStampPositions) {
        double height = 0;
        std::size_t count = 0;
        for (const MeasuredLine &line : lines) {
            if (line.position == spot) {
                height += line.ascent + line.descent;
                ++count;
            }
        }
        if (count == 0) {
            continue;
        }
        height += gap * static_cast<double>(count - 1);
        const double wanted = isTop(spot) ? page.height - margin : margin + height;
        double y = std::min(page.height, std::max(wanted, height));
        for (std::size_t index = 0; index < lines.size(); ++index) {
            const MeasuredLine &line = lines[index];
            if (line.position != spot) {
                continue;
            }
            const double x = leftEnd(line, page, margin);
            const double baseline = y - line.ascent;
            placed.push_back({index,
                              x,
                              baseline,
                              {x - boxPadding, baseline - line.descent - boxPadding,
                               x + line.width + boxPadding, baseline + line.ascent + boxPadding}});
            y -= gap + line.ascent + line.descent;
        }
    }
    return placed;
}

} // namespace tallyfold
