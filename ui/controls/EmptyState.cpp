#include "ui/controls/EmptyState.h"

#include "ui/controls/SymbolView.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

namespace tallyfold {

EmptyState::EmptyState(const QString &symbol, const QString &title, const QString &description,
                       QWidget *buttons, QWidget *parent)
    : EmptyState(symbol, new StyledLabel(title, TextStyle::title),
                 new StyledLabel(description, TextStyle::callout, Tone::secondary), buttons, parent)
{
}

EmptyState::EmptyState(const QString &symbol, StyledLabel *title, StyledLabel *description, QWidget *buttons,
                       QWidget *parent)
    : QWidget(parent)
{
    for (StyledLabel *label : {title, description}) {
        label->setAlignment(Qt::AlignCenter);
    }
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::sheet, spacing::sheet, spacing::sheet, spacing::sheet);
    layout->setSpacing(spacing::normal);
    layout->addStretch(1);
    layout->addWidget(new SymbolView(symbol, Tone::secondary, 56), 0, Qt::AlignHCenter);
    layout->addSpacing(spacing::tight);
    layout->addWidget(title);
    layout->addWidget(description);
    if (buttons) {
        layout->addSpacing(spacing::normal);
        layout->addWidget(buttons, 0, Qt::AlignHCenter);
    }
    layout->addStretch(1);
}

} // namespace tallyfold
