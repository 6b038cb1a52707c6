#pragma once

#include "ui/Environment.h"
#include "ui/shell/EditCommands.h"
#include "ui/updates/Updater.h"

#include <QAction>
#include <QMenuBar>
#include <QObject>

#include <functional>

namespace tallyfold {

/// The commands of the menus. Each that acts on the model first brings the main window forward.
class AppCommands final : public QObject {
    Q_OBJECT
public:
    /// What the commands do that is the application's own business.
    struct Application {
        std::function<void()> showAbout;
        std::function<void()> quit;
    };

    AppCommands(const Environment &environment, Updater &updater, QUndoStack &undo, Application application,
                QObject *parent = nullptr);

    /// Fills `bar`, the menu bar of `window`.
    void addTo(QMenuBar &bar, QWidget *window);

private:
    QAction *add(const char *name, const QString &title, const QKeySequence &keys, std::function<void()> run);
    /// The same for a command that acts on the model.
    QAction *addOnModel(const char *name, const QString &title, const QKeySequence &keys,
                        std::function<void()> run);
    void makeCommands();
    void update();

    Environment m_environment;
    Updater *m_updater;
    Application m_application;
    EditCommands *m_edit;
    QAction *m_about = nullptr;
    QAction *m_checkForUpdates = nullptr;
    QAction *m_addPdfs = nullptr;
    QAction *m_addFolder = nullptr;
    QAction *m_quit = nullptr;
    QAction *m_settings = nullptr;
    QAction *m_stamp = nullptr;
    QAction *m_chooseFolder = nullptr;
    QAction *m_startNext = nullptr;
    QAction *m_check = nullptr;
    QAction *m_removeSelected = nullptr;
    QAction *m_removeAll = nullptr;
};

} // namespace tallyfold
