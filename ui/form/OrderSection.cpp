#include "ui/form/Sections.h"
#include "ui/text/Titles.h"
#include "ui/text/Words.h"

namespace tallyfold {

OrderSection::OrderSection(const Environment &environment)
    : FormSection(environment, 4, words(QT_TRANSLATE_NOOP("Words", "Cover pages and order")), {},
                  QStringLiteral("order"))
{
    addPicker(words(QT_TRANSLATE_NOOP("Words", "First page of each file")), "cover", &StampSettings::cover,
              coverOptionKeys);
    addWarning("singlePageWarning", singlePageWarning);
    addPicker(words(QT_TRANSLATE_NOOP("Words", "File order")), "fileOrder", &StampSettings::order,
              fileOrderKeys);
}

} // namespace tallyfold
