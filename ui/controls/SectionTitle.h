#pragma once

#include <QAbstractButton>

namespace tallyfold {

/// The header of a numbered section: its number in a disc, its title, and whether the section is open, which
/// a click or the space bar changes.
class SectionTitle final : public QAbstractButton {
    Q_OBJECT
public:
    SectionTitle(std::int64_t number, const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] std::int64_t number() const;
    [[nodiscard]] QString title() const;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    std::int64_t m_number;
    QString m_title;
};

} // namespace tallyfold
