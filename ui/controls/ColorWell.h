#pragma once

#include "core/StampColor.h"

#include <QAbstractButton>
#include <QColorDialog>
#include <QPointer>

namespace tallyfold {

/// Shows a colour and opens a colour dialog on a click. Opacity is neither shown nor changed.
class ColorWell final : public QAbstractButton {
    Q_OBJECT
public:
    explicit ColorWell(QWidget *parent = nullptr);

    [[nodiscard]] const StampColor &color() const;
    /// Shows `color` without emitting a signal.
    void setDisplayedValue(const StampColor &color);

    /// The colour dialog while it is open, else null.
    [[nodiscard]] QColorDialog *panel() const;

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// The user chose a colour. Emitted while the dialog is still open, too.
    void picked(const tallyfold::StampColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void openPanel();
    void pick(const QColor &color);

    StampColor m_color;
    QPointer<QColorDialog> m_panel;
};

} // namespace tallyfold
