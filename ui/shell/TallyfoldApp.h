#pragma once

#include "app/AppModel.h"
#include "app/CurrentPlan.h"
#include "app/OutputCheck.h"
#include "ui/Environment.h"
#include "ui/help/HelpRouter.h"
#include "ui/help/HelpView.h"
#include "ui/panels/WindowPanels.h"
#include "ui/panels/WindowReadingPanel.h"
#include "ui/settings/SettingsView.h"
#include "ui/shell/AboutPanel.h"
#include "ui/shell/AppCommands.h"
#include "ui/shell/AppDelegate.h"
#include "ui/shell/MainView.h"
#include "ui/updates/Updater.h"

#include <QObject>
#include <QPointer>

#include <chrono>
#include <filesystem>
#include <memory>
#include <vector>

namespace tallyfold {

class Alert;

/// The application: its one model, and the windows on it. Closing the main window leaves the model as it is;
/// the next start brings both back.
class TallyfoldApp final : public QObject {
    Q_OBJECT
public:
    /// What the application stands on. Tests bring their own.
    struct Parts {
        std::unique_ptr<SettingsStore> settings;
        std::unique_ptr<WindowState> windowState;
        std::unique_ptr<Desktop> desktop;
        std::unique_ptr<Updater> updater;
        /// Null for panels over the main window.
        std::unique_ptr<Panels> panels;
        AppModel::Writer writer = AppModel::systemWriter();
        SourceReading::Read reader = KnownSources::read;
        /// How long files are read before that is shown.
        std::chrono::milliseconds patience = WindowReadingPanel::usualPatience;
    };
    /// Those of a real session.
    [[nodiscard]] static Parts systemParts();

    explicit TallyfoldApp(Parts parts, QObject *parent = nullptr);
    ~TallyfoldApp() override;

    /// Opens the main window with `files`, if there are any.
    void launch(const std::vector<std::filesystem::path> &files);
    /// Opens nothing yet: the first `reopen` is the launch. Ends the program when none comes within
    /// `longest`.
    void awaitRequest(std::chrono::milliseconds longest);
    /// Another start asks for the windows, perhaps with files. `token` lets a window come to the front (XDG
    /// activation).
    void reopen(const std::vector<std::filesystem::path> &files, const QString &token = {});
    /// Ends the program; a running production stops after its page.
    void quit();

    /// Whether another start can bring a closed window back. Where none can, closing it quits.
    void setReachable(bool isReachable);

    /// Asks, and waits for the answer, whether the production that is written may be stopped for the session
    /// to end.
    [[nodiscard]] bool askToStopForSession();

    void openWindow(WindowId window);

    [[nodiscard]] AppModel &model();
    [[nodiscard]] const Environment &environment() const;
    [[nodiscard]] MainView &mainView();
    /// The window, once it was opened; null before.
    [[nodiscard]] HelpView *help() const;
    [[nodiscard]] SettingsView *settings() const;

private:
    void makeMainView();
    void showAbout();
    void guardMainView();
    void tellOfUpdate(const UpdateOutcome &outcome);
    [[nodiscard]] bool mayClose();
    [[nodiscard]] Alert *askToStop();
    [[nodiscard]] Alert *askToLoseList();

    std::unique_ptr<WindowState> m_windowState;
    std::unique_ptr<Desktop> m_desktop;
    std::unique_ptr<Updater> m_updater;
    WindowPanels m_windowPanels;
    std::unique_ptr<Panels> m_otherPanels;
    WindowReadingPanel m_readingPanel;
    AppModel m_model;
    CurrentPlan m_plan;
    OutputCheck m_output;
    HelpRouter m_helpRouter;
    Environment m_environment;
    AppDelegate m_delegate;
    std::unique_ptr<MainView> m_mainView;
    std::unique_ptr<HelpView> m_help;
    std::unique_ptr<SettingsView> m_settings;
    QPointer<AboutPanel> m_about;
    std::unique_ptr<AppCommands> m_commands; ///< Before the window whose stack they use.
    bool m_isReachable = true;
    bool m_isLaunched = false;
};

} // namespace tallyfold
