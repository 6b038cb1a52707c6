#include "ui/controls/Picker.h"

#include <QWheelEvent>

namespace tallyfold {

Picker::Picker(QWidget *parent) : QComboBox(parent)
{
    // The layout determines the width, not the longest title.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QComboBox::activated, this, [this](int row) { Q_EMIT picked(itemData(row)); });
}

void Picker::add(const QString &title, const QVariant &value)
{
    addItem(title, value);
    setItemData(count() - 1, title, Qt::ToolTipRole);
}

void Picker::setDisplayedValue(const QVariant &value)
{
    setCurrentIndex(findData(value));
}

void Picker::wheelEvent(QWheelEvent *event)
{
    event->ignore(); // The wheel scrolls the form and must not change controls under the pointer.
}

} // namespace tallyfold
