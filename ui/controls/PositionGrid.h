#pragma once

#include "core/StampSettings.h"

#include <QList>
#include <QWidget>

class QAbstractButton;

namespace tallyfold {

class StyledLabel;

/// A little page with the spots where a stamp line can stand, one of them chosen; its name stands beside it.
/// A click or the arrow keys choose another.
class PositionGrid final : public QWidget {
    Q_OBJECT
public:
    /// `name`: what stands there, such as "Bates number".
    explicit PositionGrid(const QString &name, QWidget *parent = nullptr);

    /// The spots, two rows of three.
    [[nodiscard]] static const QList<QList<StampPosition>> &rows();

    [[nodiscard]] StampPosition selection() const;
    /// Shows `position` as chosen, without telling of it.
    void setSelection(StampPosition position);

    /// The button of `position`.
    [[nodiscard]] QAbstractButton *spot(StampPosition position) const;

Q_SIGNALS:
    /// The user chose a spot.
    void selected(tallyfold::StampPosition position);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void choose(StampPosition position);

    StampPosition m_selection = StampPosition::topLeft;
    QList<QList<QAbstractButton *>> m_spots;
    StyledLabel *m_title;
};

} // namespace tallyfold
