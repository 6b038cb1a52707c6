#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace tallyfold {

/// Stands between a window and the user's wish to close it, so that the application can decide. One for the
/// whole program; everything here happens on the main thread.
class CloseGuard final : public QObject {
    Q_OBJECT
public:
    [[nodiscard]] static CloseGuard &shared();

    /// Whether the window may close now. Always, until the application says otherwise.
    std::function<bool()> shouldClose = [] { return true; };

    /// The guarded window; null when there is none, or none any more.
    [[nodiscard]] QWidget *main() const;

    /// Guards `window`. A window that is guarded already stays so.
    void install(QWidget *window);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    QPointer<QWidget> m_main;
};

} // namespace tallyfold
