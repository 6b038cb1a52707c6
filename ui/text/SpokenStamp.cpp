#include "ui/text/SpokenStamp.h"

#include "core/Stamper.h"
#include "ui/text/Titles.h"
#include "ui/text/Words.h"

#include <QStringList>

namespace tallyfold {

QString spokenStamp(const PlannedFile &file, const NormalizedSettings &settings, std::size_t page)
{
    if (page >= file.pages.size()) {
        return {};
    }
    QStringList lines;
    for (const Stamper::Line &line :
         Stamper::lines(file.pages[page], settings, static_cast<std::int64_t>(page),
                        static_cast<std::int64_t>(file.pages.size()))) {
        //: A line of the stamp, and its position on the page.
        lines.append(words(QT_TRANSLATE_NOOP("Words", "%1 (%2)")).arg(line.text, titleOf(line.position)));
    }
    return lines.isEmpty()
               ? words(QT_TRANSLATE_NOOP("Words", "No stamp on this page"))
               : words(QT_TRANSLATE_NOOP("Words", "Stamp: %1")).arg(lines.join(QLatin1String(", ")));
}

} // namespace tallyfold
