#include "ui/controls/EmptyState.h"

#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolView.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

namespace tallyfold {

EmptyState::EmptyState(const QString &symbol, const QString &title, const QString &description,
                       QWidget *button, QWidget *parent)
    : QWidget(parent)
{
    auto *heading = new StyledLabel(title, TextStyle::title);
    auto *explanation = new StyledLabel(description, TextStyle::callout, Tone::secondary);
    for (QLabel *label : {static_cast<QLabel *>(heading), static_cast<QLabel *>(explanation)}) {
        label->setAlignment(Qt::AlignCenter);
    }
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::sheet, spacing::sheet, spacing::sheet, spacing::sheet);
    layout->setSpacing(spacing::normal);
    layout->addStretch(1);
    layout->addWidget(new SymbolView(symbol, Tone::secondary, 56), 0, Qt::AlignHCenter);
    layout->addSpacing(spacing::tight);
    layout->addWidget(heading);
    layout->addWidget(explanation);
    if (button) {
        layout->addSpacing(spacing::normal);
        layout->addWidget(button, 0, Qt::AlignHCenter);
    }
    layout->addStretch(1);
}

} // namespace tallyfold
