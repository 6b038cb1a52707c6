#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

namespace tallyfold {

/// A widget that shows nothing and tells which window it is in.
class WindowReader final : public QWidget {
    Q_OBJECT
public:
    /// `found` is called with the window whenever the reader has come into another one. It is not called when
    /// the reader leaves one.
    explicit WindowReader(std::function<void(QWidget *)> found, QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void look();

    std::function<void(QWidget *)> m_found;
    QPointer<QWidget> m_window;
};

} // namespace tallyfold
