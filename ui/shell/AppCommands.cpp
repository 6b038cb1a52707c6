#include "ui/shell/AppCommands.h"

#include "app/RunMessages.h"
#include "app/Translations.h"
#include "ui/controls/Mnemonics.h"
#include "ui/text/Words.h"
#include "window_support/LocalizedTitle.h"
#include "window_support/MenuBaseline.h"

#include <QLocale>

#include <utility>

namespace tallyfold {

AppCommands::AppCommands(const Environment &environment, Updater &updater, QUndoStack &undo,
                         Application application, QObject *parent)
    : QObject(parent),
      m_environment(environment),
      m_updater(&updater),
      m_application(std::move(application)),
      m_edit(new EditCommands(
          undo, [this] { m_environment.model.removeSelected(); }, this))
{
    makeCommands();
    const AppModel *model = &environment.model;
    connect(model, &AppModel::runningChanged, this, &AppCommands::update);
    connect(model, &AppModel::summaryChanged, this, &AppCommands::update);
    connect(model, &AppModel::selectionChanged, this, &AppCommands::update);
    connect(&environment.plan, &CurrentPlan::changed, this, &AppCommands::update);
    connect(&updater, &Updater::checkingChanged, this, &AppCommands::update);
    update();
}

QAction *AppCommands::add(const char *name, const QString &title, const QKeySequence &keys,
                          std::function<void()> run)
{
    auto *action = new QAction(title, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
    return action;
}

QAction *AppCommands::addOnModel(const char *name, const QString &title, const QKeySequence &keys,
                                 std::function<void()> run)
{
    return add(name, title, keys, [this, run = std::move(run)] {
        m_environment.openWindow(WindowId::main);
        run();
    });
}

void AppCommands::makeCommands()
{
    AppModel *model = &m_environment.model;
    m_about = add("about", words(QT_TRANSLATE_NOOP("Words", "About %1")).arg(displayedName()), {},
                  m_application.showAbout);
    m_about->setMenuRole(QAction::AboutRole);
    m_checkForUpdates = add("checkForUpdates", words(QT_TRANSLATE_NOOP("Words", "Check for Updates…")), {},
                            [this] { m_updater->checkForUpdates(); });
    m_checkForUpdates->setMenuRole(QAction::ApplicationSpecificRole);
    m_addPdfs = addOnModel("addPdfs", words(QT_TRANSLATE_NOOP("Words", "Add PDFs…")), Qt::CTRL | Qt::Key_O,
                           [model] { model->chooseFiles(); });
    m_addFolder = addOnModel("addFolder", words(QT_TRANSLATE_NOOP("Words", "Add Folder…")), {},
                             [model] { model->chooseFolder(); });
    m_quit = add("quit", words(QT_TRANSLATE_NOOP("Words", "Quit %1")).arg(displayedName()),
                 Qt::CTRL | Qt::Key_Q, m_application.quit);
    m_quit->setMenuRole(QAction::QuitRole);
    m_quit->setShortcutContext(Qt::ApplicationShortcut); // Also from the help and the settings.
    m_settings = add("settings", words(QT_TRANSLATE_NOOP("Words", "Settings…")), Qt::CTRL | Qt::Key_Comma,
                     [this] { m_environment.openWindow(WindowId::settings); });
    m_settings->setMenuRole(QAction::PreferencesRole);
    m_stamp = addOnModel("stamp", words(QT_TRANSLATE_NOOP("Words", "Stamp")), Qt::CTRL | Qt::Key_Return,
                         [model] { model->stamp(); });
    m_stamp->setShortcuts({Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter}); // The number block as well.
    m_chooseFolder =
        addOnModel("chooseOutputFolder", words(QT_TRANSLATE_NOOP("Words", "Choose Output Folder…")),
                   Qt::CTRL | Qt::SHIFT | Qt::Key_O, [model] { model->chooseOutputFolder(); });
    m_startNext =
        addOnModel("startNextProduction", words(QT_TRANSLATE_NOOP("Words", "Start Next Production")), {},
                   [model] { model->startNextProduction(); });
    m_check = add("checkProduction", words(QT_TRANSLATE_NOOP("Words", "Check a Production…")), {},
                  [this] { m_environment.openWindow(WindowId::check); });
    m_removeSelected =
        addOnModel("removeSelected", words(QT_TRANSLATE_NOOP("Words", "Remove Selected Files")), {},
                   [model] { model->removeSelected(); });
    m_removeAll = addOnModel("removeAll", words(QT_TRANSLATE_NOOP("Words", "Remove All Files")), {},
                             [model] { model->removeAll(); });
}

void AppCommands::addTo(QMenuBar &bar, QWidget *window)
{
    MenuBaseline baseline;
    baseline.close.run = [window] { window->close(); };
    baseline.help = MenuHelp{displayedName(), QKeySequence(Qt::CTRL | Qt::Key_Question),
                             [this] { m_environment.openWindow(WindowId::help); }};
    baseline.helpItems = {m_about, m_checkForUpdates};
    baseline.language = applicationLanguage(Translations::languages(), QLocale().uiLanguages());

    QMenu *file = bar.addMenu(words(QT_TRANSLATE_NOOP("Words", "&File")));
    file->addActions({m_addPdfs, m_addFolder});
    file->addSeparator();
    baseline.addCloseTo(*file);
    file->addAction(m_quit);

    QMenu *edit = bar.addMenu(words(QT_TRANSLATE_NOOP("Words", "&Edit")));
    m_edit->addTo(*edit);
    edit->addSeparator();
    edit->addAction(m_settings);

    QMenu *production = bar.addMenu(words(QT_TRANSLATE_NOOP("Words", "&Production")));
    production->addActions({m_stamp, m_chooseFolder, m_startNext});
    production->addSeparator();
    production->addAction(m_check);
    production->addSeparator();
    production->addActions({m_removeSelected, m_removeAll});

    QMenu *help = bar.addMenu(words(QT_TRANSLATE_NOOP("Words", "&Help")));
    baseline.addHelpTo(*help);
    // F1 is what this desktop's users press; the other keys are those that the menu has everywhere.
    QAction *entry = help->actions().constFirst();
    entry->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Question), QKeySequence(Qt::Key_F1)});

    // When it opens, as some titles say what they would do now.
    for (QMenu *menu : {file, edit, production, help}) {
        connect(menu, &QMenu::aboutToShow, menu, [menu] { giveMnemonics(*menu); });
    }
}

void AppCommands::update()
{
    const AppModel &model = m_environment.model;
    const bool hasFiles = !model.sources().empty();
    m_stamp->setEnabled(!model.isRunning() && hasFiles);
    m_startNext->setEnabled(!model.isRunning() && model.summary());
    m_removeSelected->setEnabled(!model.selection().isEmpty());
    m_removeAll->setEnabled(hasFiles);
    m_checkForUpdates->setEnabled(!m_updater->isChecking());
}

} // namespace tallyfold
