#include "core/OuterSpaces.h"

#include <algorithm>

namespace tallyfold {

QString withoutOuterSpaces(const QString &text)
{
    const auto isSpace = [](QChar ch) { return ch == u'\t' || ch.category() == QChar::Separator_Space; };
    const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isSpace).base();
    return text.sliced(first - text.begin(), last - first);
}

} // namespace tallyfold
