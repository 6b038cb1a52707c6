#pragma once

#include <QLabel>
#include <QList>
#include <QVBoxLayout>
#include <QWidget>

namespace tallyfold {

/// A group of rows on a background of its own, with separators between them.
class Card final : public QWidget {
    Q_OBJECT
public:
    explicit Card(QWidget *parent = nullptr);

    /// Adds a row with `label` before `control`; the label is also the accessible name of the control.
    QWidget *addRow(const QString &label, QWidget *control);
    /// As above with the label above the control, for controls that need the full width.
    QWidget *addStacked(const QString &label, QWidget *control);
    /// Adds a row without a label.
    QWidget *addWide(QWidget *control);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *add(QLayout *content);

    QVBoxLayout *m_layout;
    QList<QWidget *> m_rows;
};

} // namespace tallyfold
