#pragma once

#include <QPushButton>

namespace tallyfold {

/// The one button of a view that matters most: filled with the accent.
class ProminentButton final : public QPushButton {
    Q_OBJECT
public:
    explicit ProminentButton(const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A small button beside a text, for what mends the thing it tells of.
class SmallButton final : public QPushButton {
    Q_OBJECT
public:
    explicit SmallButton(const QString &title, QWidget *parent = nullptr);
};

/// A button that looks like a link in a text.
class LinkButton final : public QPushButton {
    Q_OBJECT
public:
    explicit LinkButton(const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tallyfold
