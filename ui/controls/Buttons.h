#pragma once

#include <QPushButton>

namespace tallyfold {

/// The primary button of a view, filled with the accent colour.
class ProminentButton final : public QPushButton {
    Q_OBJECT
public:
    explicit ProminentButton(const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A small button next to a message, which resolves what the message is about.
class SmallButton final : public QPushButton {
    Q_OBJECT
public:
    explicit SmallButton(const QString &title, QWidget *parent = nullptr);
};

/// A button that looks like a link.
class LinkButton final : public QPushButton {
    Q_OBJECT
public:
    explicit LinkButton(const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tallyfold
