#include "ui/controls/LengthLimit.h"

#include "core/Graphemes.h"

#include <vector>

namespace tallyfold {

LengthLimit::LengthLimit(std::int64_t longest, QObject *parent) : QValidator(parent), m_longest(longest) {}

QValidator::State LengthLimit::validate(QString &text, int &cursor) const
{
    QString head = text.left(cursor);
    const QString tail = text.mid(cursor);
    const auto isTooLong = [this](const QString &whole) {
        return firstGraphemes(whole, m_longest).size() < whole.size();
    };
    while (!head.isEmpty() && isTooLong(head + tail)) {
        const std::vector<qsizetype> boundaries = graphemeBoundaries(head);
        head.truncate(boundaries[boundaries.size() - 2]);
    }
    if (head.size() < cursor) {
        cursor = static_cast<int>(head.size());
        text = firstGraphemes(head + tail, m_longest);
    }
    return Acceptable;
}

} // namespace tallyfold
