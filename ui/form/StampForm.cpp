#include "ui/form/StampForm.h"

#include "ui/controls/CollapsibleSection.h"
#include "ui/form/PasswordNoticeView.h"
#include "ui/form/Sections.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tallyfold {

namespace {

constexpr int leastWidth = 340;

} // namespace

StampForm::StampForm(const Environment &environment, QWidget *parent) : QScrollArea(parent)
{
    setObjectName(QStringLiteral("stampForm"));
    setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Stamp settings")));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(spacing::section, spacing::section, spacing::section, spacing::section);
    layout->setSpacing(spacing::section);
    layout->addWidget(new PasswordNoticeView(environment));
    layout->addWidget(new NumberingSection(environment));
    layout->addWidget(new PlacementSection(environment));
    layout->addWidget(new LinesSection(environment));
    layout->addWidget(new OrderSection(environment));
    layout->addWidget(new OutputSection(environment));
    layout->addStretch(1);
    setWidget(content);
    fitWidth();
}

bool StampForm::eventFilter(QObject *object, QEvent *event)
{
    const bool isHandled = QScrollArea::eventFilter(object, event);
    if (object == widget() && event->type() == QEvent::LayoutRequest) {
        fitWidth();
    }
    return isHandled;
}

void StampForm::showSection(const QString &name)
{
    auto *section = widget()->findChild<CollapsibleSection *>(name);
    if (!section) {
        return;
    }
    section->setExpanded(true);
    // Deferred: Qt lays out widgets that were hidden from the event loop.
    QMetaObject::invokeMethod(
        this,
        [this, section] {
            ensureWidgetVisible(section);
            section->setFocus(Qt::OtherFocusReason);
        },
        Qt::QueuedConnection);
}

void StampForm::fitWidth()
{
    // Scrolls only vertically: the content must fit the width.
    setMinimumWidth(
        qMax(leastWidth, widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width()));
}

} // namespace tallyfold
