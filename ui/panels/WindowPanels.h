#pragma once

#include "app/Panels.h"
#include "ui/WindowState.h"

#include <QPointer>
#include <QWidget>

namespace tallyfold {

/// Shows the model's panels over the main window, beginning where the last one ended.
class WindowPanels final : public Panels {
public:
    explicit WindowPanels(WindowState &state);

    /// The window the panels belong to.
    void setWindow(QWidget *window);

    [[nodiscard]] std::vector<std::filesystem::path> run(const OpenPanel &panel) override;

private:
    [[nodiscard]] std::vector<std::filesystem::path> chooseFiles(const OpenPanel &panel);
    [[nodiscard]] std::vector<std::filesystem::path> chooseFolder(const OpenPanel &panel);

    WindowState *m_state;
    QPointer<QWidget> m_window;
};

} // namespace tallyfold
