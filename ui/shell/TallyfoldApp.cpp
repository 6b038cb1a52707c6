#include "ui/shell/TallyfoldApp.h"

#include "app/RunMessages.h"
#include "ui/controls/Buttons.h"
#include "ui/desktop/SystemDesktop.h"
#include "ui/sheets/Alert.h"
#include "ui/shell/FirstPaint.h"
#include "ui/text/UpdateText.h"
#include "ui/text/Words.h"
#include "window_support/CloseGuard.h"
#include "window_support/FocusInView.h"
#include "window_support/WindowReader.h"

#include <QApplication>
#include <QTimer>

#include <utility>

namespace tallyfold {

namespace {

bool isOver(const QWidget &window, const QWidget *above)
{
    while (above && above != &window) {
        above = above->parentWidget();
    }
    return above;
}

void bringForward(QWidget &window)
{
    if (window.isMinimized()) {
        window.showNormal();
    } else {
        window.show();
    }
    window.raise();
    // A window blocked by a modal dialog gets no keys; the dialog does.
    QWidget *const asking = QApplication::activeModalWidget();
    QWidget &front = isOver(window, asking) ? *asking : window;
    front.raise();
    front.activateWindow();
}

/// Sets the activation token for the next window that is raised: Qt reads it from the environment. Replaces
/// an earlier token.
void passOn(const QString &token)
{
    if (token.isEmpty()) {
        qunsetenv("XDG_ACTIVATION_TOKEN");
    } else {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    }
}

} // namespace

TallyfoldApp::Parts TallyfoldApp::systemParts()
{
    return {std::make_unique<SettingsStore>(),
            std::make_unique<WindowState>(),
            std::make_unique<SystemDesktop>(),
            std::make_unique<Updater>(FeedSettings::ours()),
            nullptr,
            AppModel::systemWriter(),
            KnownSources::read};
}

TallyfoldApp::TallyfoldApp(Parts parts, QObject *parent)
    : QObject(parent),
      m_windowState(std::move(parts.windowState)),
      m_desktop(std::move(parts.desktop)),
      m_updater(std::move(parts.updater)),
      m_windowPanels(*m_windowState),
      m_checkPanels(*m_windowState),
      m_otherPanels(std::move(parts.panels)),
      m_readingPanel(parts.patience),
      m_checker(std::move(parts.checker)),
      m_askForReport(std::move(parts.askForReport)),
      m_model(std::move(parts.settings),
              m_otherPanels ? *m_otherPanels : static_cast<Panels &>(m_windowPanels), std::move(parts.writer),
              std::move(parts.reader)),
      m_plan(m_model),
      m_output(m_model, m_plan),
      m_environment{m_model,
                    m_plan,
                    m_output,
                    m_helpRouter,
                    *m_windowState,
                    *m_desktop,
                    [this](WindowId window) { openWindow(window); }},
      m_delegate(m_environment)
{
    m_model.setReadingPanel(&m_readingPanel);
    m_readingPanel.follow(m_model);
    new FocusInView(this);
    CloseGuard::shared().shouldClose = [this] { return mayClose(); };
    connect(m_updater.get(), &Updater::finished, this, &TallyfoldApp::tellOfUpdate);
    connect(m_updater.get(), &Updater::newerFound, this,
            [this](const NewerVersion &version) { tellOfUpdate(version); });
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { m_delegate.shouldTerminate(); });
}

TallyfoldApp::~TallyfoldApp()
{
    CloseGuard::shared().shouldClose = [] { return true; };
}

void TallyfoldApp::launch(const std::vector<std::filesystem::path> &files)
{
    m_isLaunched = true;
    openWindow(WindowId::main);
    m_delegate.didFinishLaunching();
    if (!files.empty()) { // Reading many files takes a while; the window is shown first.
        new FirstPaint(*m_mainView, [this, files] { m_delegate.open(files); });
    }
    m_updater->checkQuietlyIfDue();
}

void TallyfoldApp::awaitRequest(std::chrono::milliseconds longest)
{
    QTimer::singleShot(longest, this, [this] {
        if (!m_isLaunched) { // Without a window the user could not see or quit the program.
            QCoreApplication::quit();
        }
    });
}

void TallyfoldApp::reopen(const std::vector<std::filesystem::path> &files, const QString &token)
{
    passOn(token);
    if (!m_isLaunched) {
        launch(files);
    } else if (files.empty()) {
        m_delegate.shouldHandleReopen(false);
    } else {
        m_delegate.open(files);
    }
}

void TallyfoldApp::quit()
{
    m_delegate.shouldTerminate();
    CloseGuard::shared().shouldClose = [] { return true; };
    if (m_mainView) {
        m_mainView->close(); // Saves its geometry.
    }
    QCoreApplication::quit();
}

void TallyfoldApp::setReachable(bool isReachable)
{
    m_isReachable = isReachable;
    QGuiApplication::setQuitOnLastWindowClosed(!isReachable);
}

void TallyfoldApp::openWindow(WindowId window)
{
    switch (window) {
    case WindowId::main:
        if (!m_mainView) {
            makeMainView();
        }
        bringForward(*m_mainView);
        break;
    case WindowId::help:
        if (!m_help) {
            m_help = std::make_unique<HelpView>(m_helpRouter, *m_desktop);
        }
        bringForward(*m_help);
        break;
    case WindowId::settings:
        if (!m_settings) {
            m_settings = std::make_unique<SettingsView>(m_environment);
        }
        bringForward(*m_settings);
        break;
    case WindowId::check:
        if (!m_check) {
            makeCheckWindow();
        }
        bringForward(*m_check);
        break;
    }
}

void TallyfoldApp::makeMainView()
{
    m_mainView = std::make_unique<MainView>(m_environment);
    m_windowPanels.setWindow(m_mainView.get());
    m_readingPanel.setWindow(m_mainView.get());
    m_commands =
        std::make_unique<AppCommands>(m_environment, *m_updater, m_mainView->undoStack(),
                                      AppCommands::Application{[this] { showAbout(); }, [this] { quit(); }});
    m_commands->addTo(*m_mainView->menuBar(), m_mainView.get());
    new WindowReader([](QWidget *found) { CloseGuard::shared().install(found); },
                     m_mainView->centralWidget());
}

void TallyfoldApp::makeCheckWindow()
{
    Panels &panels = m_otherPanels ? *m_otherPanels : static_cast<Panels &>(m_checkPanels);
    m_check = std::make_unique<CheckWindow>(
        CheckWindow::Parts{panels, *m_windowState, *m_desktop, m_askForReport, m_checker});
    m_checkPanels.setWindow(m_check.get());
}

void TallyfoldApp::showAbout()
{
    if (!m_about || !m_about->isVisible()) { // A closed panel is about to be deleted.
        m_about = new AboutPanel(m_mainView.get());
    }
    bringForward(*m_about);
}

void TallyfoldApp::tellOfUpdate(const UpdateOutcome &outcome)
{
    const UpdateMessage message = updateMessageOf(outcome);
    QList<Alert::Button> buttons;
    if (!message.link.isEmpty()) {
        buttons.append(
            {message.linkTitle, Alert::Role::normal, [this, link = message.link] { m_desktop->open(link); }});
    }
    buttons.append({words("OK"), Alert::Role::prominent});
    openWindow(WindowId::main);
    auto *alert = new Alert(message.title, message.text, buttons, m_mainView.get());
    alert->setObjectName(QStringLiteral("updateAlert"));
    alert->open();
}

bool TallyfoldApp::mayClose()
{
    if (m_isReachable || (!m_model.isRunning() && m_model.sources().empty())) {
        return true;
    }
    Alert *alert = m_model.isRunning() ? askToStop() : askToLoseList();
    alert->setObjectName(QStringLiteral("closeAlert"));
    alert->open();
    return false;
}

Alert *TallyfoldApp::askToStop()
{
    return new Alert(
        words(QT_TRANSLATE_NOOP("Words", "A production is being written")),
        words(QT_TRANSLATE_NOOP(
            "Words", "Closing this window ends the program. The copies that are finished stay; the "
                     "one in progress is removed, and no index is written.")),
        {{words(QT_TRANSLATE_NOOP("Words", "Keep Writing")), Alert::Role::prominent},
         {words(QT_TRANSLATE_NOOP("Words", "Stop and Quit")), Alert::Role::normal, [this] { quit(); }}},
        m_mainView.get());
}

bool TallyfoldApp::askToStopForSession()
{
    openWindow(WindowId::main);
    bool isToStop = false;
    auto *alert =
        new Alert(words("A production is being written"),
                  words(QT_TRANSLATE_NOOP(
                      "Words", "Logging out ends the program. The copies that are finished stay; the "
                               "one in progress is removed, and no index is written.")),
                  {{words("Keep Writing"), Alert::Role::cancel},
                   {words(QT_TRANSLATE_NOOP("Words", "Stop and Log Out")), Alert::Role::normal,
                    [&isToStop] { isToStop = true; }}},
                  m_mainView.get());
    alert->setObjectName(QStringLiteral("sessionAlert"));
    alert->exec();
    return isToStop;
}

Alert *TallyfoldApp::askToLoseList()
{
    return new Alert(
        words(QT_TRANSLATE_NOOP("Words", "The list of files is not kept")),
        words(QT_TRANSLATE_NOOP("Words", "Closing this window ends the program, and the list with its order "
                                         "has to be made again. Your files and settings stay as they are.")),
        {{words(QT_TRANSLATE_NOOP("Words", "Cancel")), Alert::Role::cancel},
         {words(QT_TRANSLATE_NOOP("Words", "Quit %1")).arg(displayedName()), Alert::Role::prominent,
          [this] { quit(); }}},
        m_mainView.get());
}

AppModel &TallyfoldApp::model()
{
    return m_model;
}

const Environment &TallyfoldApp::environment() const
{
    return m_environment;
}

MainView &TallyfoldApp::mainView()
{
    if (!m_mainView) {
        makeMainView();
    }
    return *m_mainView;
}

HelpView *TallyfoldApp::help() const
{
    return m_help.get();
}

SettingsView *TallyfoldApp::settings() const
{
    return m_settings.get();
}

CheckWindow *TallyfoldApp::check() const
{
    return m_check.get();
}

} // namespace tallyfold
