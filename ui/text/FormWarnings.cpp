#include "ui/text/FormWarnings.h"

#include "ui/text/Words.h"

#include <algorithm>

namespace tallyfold {

std::optional<FormWarning> digitsWarning(const ProductionPlan &plan, const StampSettings &settings)
{
    const std::optional<std::int64_t> last = plan.lastNumber();
    const std::int64_t highest = std::max({settings.startNumber, last.value_or(0), std::int64_t{0}});
    const qsizetype width = QString::number(highest).size();
    if (!last || settings.digits >= width) {
        return std::nullopt;
    }
    return FormWarning{
        words(QT_TRANSLATE_NOOP("Words", "Numbers reach %1, longer than %2 digits, so copies named by Bates "
                                         "number won’t sort in order in Finder."))
            .arg(plan.settings->bates(*last), QString::number(settings.digits)),
        words(QT_TRANSLATE_NOOP("Words", "Use %1 Digits")).arg(width),
        [width](StampSettings &changed) { changed.digits = width; }};
}

std::optional<FormWarning> earlierNumberWarning(const ProductionPlan &plan, const StampSettings &settings)
{
    std::int64_t count = 0;
    QString first;
    for (const PlannedFile &file : plan.files) {
        if (file.source.existingBates && ++count == 1) {
            first = *file.source.existingBates;
        }
    }
    if (!settings.background || count == 0) {
        return std::nullopt;
    }
    const QString text =
        count == 1
            ? words(QT_TRANSLATE_NOOP("Words",
                                      "One file already seems to carry a Bates number (%1). The white box "
                                      "would cover it."))
                  .arg(first)
            : words(QT_TRANSLATE_NOOP("Words",
                                      "%1 files already seem to carry Bates numbers (%2). The white box "
                                      "would cover them."))
                  .arg(QString::number(count), first);
    return FormWarning{text, words(QT_TRANSLATE_NOOP("Words", "Turn Off the White Box")),
                       [](StampSettings &changed) { changed.background = false; }};
}

std::optional<FormWarning> singlePageWarning(const ProductionPlan &plan, const StampSettings &settings)
{
    const auto count = plan.coverOnlyFiles().size();
    if (count == 0) {
        return std::nullopt;
    }
    const bool isLeftOut = settings.cover == CoverOption::skipNoNumber;
    QString text;
    if (count == 1) {
        text = isLeftOut
                   ? words(QT_TRANSLATE_NOOP(
                         "Words", "One file has a single page: as an uncounted cover it would get no "
                                  "number and no stamp, so it’s left out (listed as skipped in the "
                                  "index)."))
                   : words(QT_TRANSLATE_NOOP(
                         "Words", "One file has a single page: it keeps its number but its copy shows no "
                                  "stamp (the index says so)."));
    } else {
        text =
            (isLeftOut ? words(QT_TRANSLATE_NOOP(
                             "Words", "%1 files have a single page: as uncounted covers they’d get no number "
                                      "and no stamp, so they’re left out (listed as skipped in the index)."))
                       : words(QT_TRANSLATE_NOOP(
                             "Words", "%1 files have a single page: they keep their numbers but their copies "
                                      "show no stamp (the index says so).")))
                .arg(count);
    }
    return FormWarning{text, words(QT_TRANSLATE_NOOP("Words", "Stamp Every Page")),
                       [](StampSettings &changed) { changed.cover = CoverOption::stampAll; }};
}

} // namespace tallyfold
