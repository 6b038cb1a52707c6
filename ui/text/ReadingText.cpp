#include "ui/text/ReadingText.h"

#include "ui/text/Words.h"

#include <QLocale>

#include <algorithm>

namespace tallyfold {

QString readingText(const SourceReading::Progress &progress)
{
    if (!progress.files) {
        return words(QT_TRANSLATE_NOOP("Words", "Looking for PDFs…"));
    }
    const QLocale locale;
    const std::int64_t turn = std::min(progress.read + 1, *progress.files);
    return words(QT_TRANSLATE_NOOP("Words", "Reading %1 of %2…"))
        .arg(locale.toString(static_cast<qlonglong>(turn)),
             locale.toString(static_cast<qlonglong>(*progress.files)));
}

} // namespace tallyfold
