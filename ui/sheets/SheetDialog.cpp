#include "ui/sheets/SheetDialog.h"

#include <QScreen>

namespace tallyfold {

SheetDialog::SheetDialog(int leastWidth, const QMargins &margins, QWidget *parent)
    : QDialog(parent), m_layout(new QVBoxLayout(this))
{
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_layout->setContentsMargins(margins);
    // Not the dialog's own least width: lines are counted at the width that the layout wishes.
    m_layout->addStrut(leastWidth - margins.left() - margins.right());
}

QVBoxLayout &SheetDialog::content()
{
    return *m_layout;
}

void SheetDialog::showEvent(QShowEvent *event)
{
    // Qt gives a new window two thirds of a screen at most, and would cut the texts.
    const int wanted = m_layout->hasHeightForWidth() ? m_layout->totalHeightForWidth(width())
                                                     : m_layout->totalSizeHint().height();
    resize(width(), qMin(wanted, screen()->availableGeometry().height()));
    QDialog::showEvent(event); // Puts it over the middle of its window.
}

} // namespace tallyfold
