#include "ui/controls/StyledLabel.h"
#include "ui/form/Sections.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

namespace tallyfold {

LinesSection::LinesSection(const Environment &environment)
    : FormSection(environment, 3, words(QT_TRANSLATE_NOOP("Words", "Legend and page numbers")),
                  words(QT_TRANSLATE_NOOP(
                      "Words", "Lines in the same spot stack: legend, Bates number, then page number.")),
                  QStringLiteral("lines"))
{
    addText(words(QT_TRANSLATE_NOOP("Words", "Legend")), "legend", &StampSettings::legend,
            QStringLiteral("CONFIDENTIAL"));
    const QString legendTitle = words(QT_TRANSLATE_NOOP("Words", "Legend position"));
    QWidget *legendRow = card().addStacked(
        legendTitle, makeGrid(legendTitle, "legendPosition", &StampSettings::legendPosition));
    follow([this, legendRow] { legendRow->setVisible(!stamp().legend.trimmed().isEmpty()); });

    addToggle(words(QT_TRANSLATE_NOOP("Words", "Page X of Y on each page")), "pageOfTotal",
              &StampSettings::pageOfTotal);
    addWording();
    const QString pageTitle = words(QT_TRANSLATE_NOOP("Words", "Page number position"));
    QWidget *pageRow = card().addStacked(
        pageTitle, makeGrid(pageTitle, "pageOfTotalPosition", &StampSettings::pageOfTotalPosition));
    follow([this, pageRow] { pageRow->setVisible(stamp().pageOfTotal); });
}

void LinesSection::addWording()
{
    auto *field = new TextField;
    field->setObjectName(QStringLiteral("pageOfTotalFormat"));
    bind(field, &StampSettings::pageOfTotalFormat);
    const QString explanation =
        words(QT_TRANSLATE_NOOP("Words", "{page} and {total} are filled in for each file"));
    field->setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Wording")));
    field->setAccessibleDescription(explanation);

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::tight);
    layout->addWidget(field);
    layout->addWidget(new StyledLabel(explanation, TextStyle::caption, Tone::secondary));
    content->setFocusProxy(field);
    QWidget *row = card().addStacked(words("Wording"), content);
    follow([this, row] { row->setVisible(stamp().pageOfTotal); });
}

} // namespace tallyfold
