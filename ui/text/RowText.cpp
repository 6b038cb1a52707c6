#include "ui/text/RowText.h"

#include "app/CountText.h"
#include "ui/text/Messages.h"
#include "ui/text/Words.h"

#include <QStringList>

namespace tallyfold {

namespace {

RowText problemRow(RowText row, SourceProblem problem)
{
    const QString description = shortDescriptionOf(problem);
    if (isPasswordProtected(problem)) {
        row.symbol = RowSymbol::locked;
        row.hasPasswordHelp = true;
        row.lines.append({RowLine::Kind::notStamped,
                          words(QT_TRANSLATE_NOOP("Words", "Won’t be stamped: %1")).arg(description),
                          messageOf(problem)});
    } else {
        row.symbol = RowSymbol::problem;
        row.lines.append({RowLine::Kind::skipped,
                          words(QT_TRANSLATE_NOOP("Words", "Skipped: %1")).arg(description),
                          messageOf(problem)});
    }
    return row;
}

/// "ABC000001 – ABC000003", or a single number.
QString rangeOf(const PlannedFile &file, const StampSettings &settings)
{
    const std::int64_t first = *file.firstNumber();
    const std::int64_t last = *file.lastNumber();
    return first == last ? settings.bates(first)
                         : settings.bates(first) + QStringLiteral(" – ") + settings.bates(last);
}

} // namespace

QString RowText::spoken() const
{
    QStringList parts{name};
    for (const RowLine &line : lines) {
        parts.append(line.text);
    }
    return parts.join(QStringLiteral(", "));
}

RowText rowTextOf(const PlannedFile &file, const StampSettings &settings)
{
    RowText row;
    row.name = file.source.name;
    if (file.source.problem) {
        return problemRow(std::move(row), *file.source.problem);
    }
    row.lines.append({RowLine::Kind::pages, countText(file.source.pageCount, Counted::pages), {}});
    if (file.firstNumber()) {
        row.lines.append({RowLine::Kind::range, rangeOf(file, settings), {}});
    }
    if (file.isSkipped()) {
        row.lines.append(
            {RowLine::Kind::coverOnly,
             words(QT_TRANSLATE_NOOP("Words", "Left out: its only page is a cover that isn’t counted")),
             words(QT_TRANSLATE_NOOP(
                 "Words", "With “Leave the first page blank and don’t count it”, a one-page file would "
                          "get no number and no stamp. Choose “Stamp every page” to number it."))});
    } else if (file.isCoverOnly()) {
        row.lines.append({RowLine::Kind::coverOnly,
                          words(QT_TRANSLATE_NOOP("Words", "No visible stamp: its only page is the cover")),
                          {}});
    }
    if (file.source.existingBates) {
        row.lines.append(
            {RowLine::Kind::earlierNumber,
             words(QT_TRANSLATE_NOOP("Words", "Already numbered? “%1” near the edge"))
                 .arg(*file.source.existingBates),
             words(QT_TRANSLATE_NOOP(
                 "Words", "This file seems to carry an earlier Bates number. The white box behind the new "
                          "stamp would cover it: turn the box off or move the stamp in Placement and "
                          "look."))});
    }
    return row;
}

} // namespace tallyfold
