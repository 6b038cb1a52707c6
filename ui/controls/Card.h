#pragma once

#include <QLabel>
#include <QList>
#include <QVBoxLayout>
#include <QWidget>

namespace tallyfold {

/// A group of rows on a ground of its own, with fine lines between them.
class Card final : public QWidget {
    Q_OBJECT
public:
    explicit Card(QWidget *parent = nullptr);

    /// Adds a row of `control` with `label` before it, which names the control to those who cannot see it.
    QWidget *addRow(const QString &label, QWidget *control);
    /// The same with the label above, for a control that needs the width.
    QWidget *addStacked(const QString &label, QWidget *control);
    /// Adds a row of its own.
    QWidget *addWide(QWidget *control);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *add(QLayout *content);

    QVBoxLayout *m_layout;
    QList<QWidget *> m_rows;
};

} // namespace tallyfold
