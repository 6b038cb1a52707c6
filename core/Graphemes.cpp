#include "core/Graphemes.h"

#include "pdf/text/Graphemes.h"

#include <algorithm>

namespace tallyfold {

std::vector<qsizetype> graphemeBoundaries(const QString &text)
{
    return pdf::graphemeBoundaries(text, 0, text.size());
}

QString firstGraphemes(const QString &text, std::int64_t count)
{
    if (text.size() <= count) { // It has at most as many characters as code units.
        return text;
    }
    const std::vector<qsizetype> boundaries = graphemeBoundaries(text);
    const auto last = static_cast<std::size_t>(std::max<std::int64_t>(count, 0));
    return last < boundaries.size() ? text.first(boundaries[last]) : text;
}

bool isNewline(QChar ch)
{
    return (ch >= u'\n' && ch <= u'\r') || ch == u'\x85' || ch == QChar(0x2028) || ch == QChar(0x2029);
}

} // namespace tallyfold
