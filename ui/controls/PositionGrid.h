#pragma once

#include "core/StampSettings.h"

#include <QList>
#include <QWidget>

class QAbstractButton;

namespace tallyfold {

class StyledLabel;

/// A miniature page with the positions of a stamp line, one of them selected, and the name of that position.
/// A click or the arrow keys select another.
class PositionGrid final : public QWidget {
    Q_OBJECT
public:
    /// `name` is that of the line, such as "Bates number".
    explicit PositionGrid(const QString &name, QWidget *parent = nullptr);

    /// The positions, two rows of three.
    [[nodiscard]] static const QList<QList<StampPosition>> &rows();

    [[nodiscard]] StampPosition selection() const;
    /// Selects `position` without emitting a signal.
    void setSelection(StampPosition position);

    /// The button of `position`.
    [[nodiscard]] QAbstractButton *spot(StampPosition position) const;

Q_SIGNALS:
    /// The user selected a position.
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
