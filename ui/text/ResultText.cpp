#include "ui/text/ResultText.h"

#include "app/CountText.h"
#include "ui/text/Words.h"

namespace tallyfold {

QString writtenText(const RunSummary &summary)
{
    const QString text = summary.cancelled
                             ? words(QT_TRANSLATE_NOOP("Words", "Stopped: %1 (%2) were finished."))
                             : words(QT_TRANSLATE_NOOP("Words", "Production written: %1 (%2)."));
    return text.arg(countText(summary.files, Counted::stampedCopies),
                    countText(summary.pages, Counted::pages));
}

QString nextProductionHelp(const RunSummary &summary)
{
    if (summary.isSeriesFull()) {
        return words(QT_TRANSLATE_NOOP("Words", "Clears the list and leaves the start number as it is."));
    }
    return words(QT_TRANSLATE_NOOP("Words", "Clears the list and sets the start number to %1."))
        .arg(summary.nextBates);
}

} // namespace tallyfold
