#include "ui/controls/Picker.h"

#include <QWheelEvent>

namespace tallyfold {

Picker::Picker(QWidget *parent) : QComboBox(parent)
{
    // As wide as its place allows, not as its longest title would like.
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
    event->ignore(); // The wheel scrolls the form, and must not change what it passes over.
}

} // namespace tallyfold
