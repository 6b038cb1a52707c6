#pragma once

#include "app/Panels.h"
#include "ui/WindowState.h"
#include "ui/panels/DesktopDialog.h"

#include <QPointer>
#include <QWidget>

namespace tallyfold {

/// Shows the model's panels over the main window, beginning where the last one ended: the desktop's own, and
/// ours where it brings none.
class WindowPanels final : public Panels {
public:
    explicit WindowPanels(WindowState &state, AskDesktop askDesktop = tallyfold::askDesktop);

    /// The window the panels belong to.
    void setWindow(QWidget *window);

    [[nodiscard]] PanelAnswer run(const OpenPanel &panel) override;

private:
    void remember(const QString &key, const std::filesystem::path &folder);
    [[nodiscard]] PanelAnswer chooseFiles(const OpenPanel &panel, const std::filesystem::path &begin);
    [[nodiscard]] PanelAnswer chooseFolder(const OpenPanel &panel, const std::filesystem::path &begin);

    WindowState *m_state;
    AskDesktop m_askDesktop;
    QPointer<QWidget> m_window;
};

} // namespace tallyfold
