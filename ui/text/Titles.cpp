#include "ui/text/Titles.h"

#include "ui/text/Words.h"

#include <QLocale>

#include <cmath>

namespace tallyfold {

namespace {

/// What the user's steppers show of a length.
QString wholePoints(double points)
{
    return QString::number(std::llround(points));
}

} // namespace

QString titleOf(StampPosition position)
{
    switch (position) {
    case StampPosition::topLeft:
        return words(QT_TRANSLATE_NOOP("Words", "Top left"));
    case StampPosition::topCenter:
        return words(QT_TRANSLATE_NOOP("Words", "Top center"));
    case StampPosition::topRight:
        return words(QT_TRANSLATE_NOOP("Words", "Top right"));
    case StampPosition::bottomLeft:
        return words(QT_TRANSLATE_NOOP("Words", "Bottom left"));
    case StampPosition::bottomCenter:
        return words(QT_TRANSLATE_NOOP("Words", "Bottom center"));
    case StampPosition::bottomRight:
        break;
    }
    return words(QT_TRANSLATE_NOOP("Words", "Bottom right"));
}

QString titleOf(CoverOption cover)
{
    switch (cover) {
    case CoverOption::stampAll:
        return words(QT_TRANSLATE_NOOP("Words", "Stamp every page"));
    case CoverOption::skipKeepNumber:
        return words(QT_TRANSLATE_NOOP("Words", "Leave the first page blank, but count it"));
    case CoverOption::skipNoNumber:
        break;
    }
    return words(QT_TRANSLATE_NOOP("Words", "Leave the first page blank and don’t count it"));
}

QString titleOf(FileOrder order)
{
    switch (order) {
    case FileOrder::name:
        return words(QT_TRANSLATE_NOOP("Words", "By name"));
    case FileOrder::modified:
        return words(QT_TRANSLATE_NOOP("Words", "Oldest first"));
    case FileOrder::manual:
        break;
    }
    return words(QT_TRANSLATE_NOOP("Words", "As listed (drag to reorder)"));
}

QString titleOf(OutputNaming naming)
{
    switch (naming) {
    case OutputNaming::original:
        return words(QT_TRANSLATE_NOOP("Words", "Original name"));
    case OutputNaming::batesFirst:
        return words(QT_TRANSLATE_NOOP("Words", "First Bates number"));
    case OutputNaming::batesRange:
        return words(QT_TRANSLATE_NOOP("Words", "Bates range"));
    case OutputNaming::batesAndOriginal:
        break;
    }
    return words(QT_TRANSLATE_NOOP("Words", "First Bates number + original name"));
}

QString marginText(double points)
{
    constexpr double pointsInAnInch = 72;
    return words(QT_TRANSLATE_NOOP("Words", "%1 pt (%2 in)"))
        .arg(wholePoints(points), QLocale().toString(points / pointsInAnInch, 'f', 2));
}

QString fontSizeText(double points)
{
    return words(QT_TRANSLATE_NOOP("Words", "%1 pt")).arg(wholePoints(points));
}

} // namespace tallyfold
