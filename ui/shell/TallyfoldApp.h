#pragma once

#include "app/AppModel.h"
#include "app/CurrentPlan.h"
#include "app/OutputCheck.h"
#include "ui/Environment.h"
#include "ui/check/CheckWindow.h"
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

/// The application: the model and its windows. Closing the main window keeps the model; starting the program
/// again shows the window again.
class TallyfoldApp final : public QObject {
    Q_OBJECT
public:
    /// The dependencies of the application, which tests replace.
    struct Parts {
        std::unique_ptr<SettingsStore> settings;
        std::unique_ptr<WindowState> windowState;
        std::unique_ptr<Desktop> desktop;
        std::unique_ptr<Updater> updater;
        /// Null for the panels of the main window.
        std::unique_ptr<Panels> panels;
        AppModel::Writer writer = AppModel::systemWriter();
        SourceReading::Read reader = KnownSources::read;
        /// How long files are read before that is shown.
        std::chrono::milliseconds patience = WindowReadingPanel::usualPatience;
        CheckModel::Checker checker = check::checkProductions;
        AskForReport askForReport = tallyfold::askForReport;
    };
    /// The dependencies in a real session.
    [[nodiscard]] static Parts systemParts();

    explicit TallyfoldApp(Parts parts, QObject *parent = nullptr);
    ~TallyfoldApp() override;

    /// Opens the main window and adds `files`.
    void launch(const std::vector<std::filesystem::path> &files);
    /// Starts without a window: the first `reopen` is the launch. Quits if there is none within `longest`.
    void awaitRequest(std::chrono::milliseconds longest);
    /// Handles another start of the program, with or without files. `token` permits raising a window (XDG
    /// activation).
    void reopen(const std::vector<std::filesystem::path> &files, const QString &token = {});
    /// Quits; a running production stops after its page.
    void quit();

    /// Whether another start can reopen a closed window. If not, closing the window quits.
    void setReachable(bool isReachable);

    /// Asks the user whether to stop the production so that the session can end. Blocks until answered.
    [[nodiscard]] bool askToStopForSession();

    void openWindow(WindowId window);

    [[nodiscard]] AppModel &model();
    [[nodiscard]] const Environment &environment() const;
    [[nodiscard]] MainView &mainView();
    /// The main window; null before it is opened.
    [[nodiscard]] HelpView *help() const;
    [[nodiscard]] SettingsView *settings() const;
    [[nodiscard]] CheckWindow *check() const;

private:
    void makeMainView();
    void showAbout();
    void guardMainView();
    void makeCheckWindow();
    void tellOfUpdate(const UpdateOutcome &outcome);
    [[nodiscard]] bool mayClose();
    [[nodiscard]] Alert *askToStop();
    [[nodiscard]] Alert *askToLoseList();

    std::unique_ptr<WindowState> m_windowState;
    std::unique_ptr<Desktop> m_desktop;
    std::unique_ptr<Updater> m_updater;
    WindowPanels m_windowPanels;
    WindowPanels m_checkPanels;
    std::unique_ptr<Panels> m_otherPanels;
    WindowReadingPanel m_readingPanel;
    CheckModel::Checker m_checker;
    AskForReport m_askForReport;
    AppModel m_model;
    CurrentPlan m_plan;
    OutputCheck m_output;
    HelpRouter m_helpRouter;
    Environment m_environment;
    AppDelegate m_delegate;
    std::unique_ptr<MainView> m_mainView;
    std::unique_ptr<HelpView> m_help;
    std::unique_ptr<SettingsView> m_settings;
    std::unique_ptr<CheckWindow> m_check;
    QPointer<AboutPanel> m_about;
    std::unique_ptr<AppCommands> m_commands; ///< Declared before the window whose undo stack they use.
    bool m_isReachable = true;
    bool m_isLaunched = false;
};

} // namespace tallyfold
