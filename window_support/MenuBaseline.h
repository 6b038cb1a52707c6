#pragma once

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <QMenu>
#include <QString>

#include <functional>
#include <optional>

namespace tallyfold {

/// What closes the window.
struct CloseWindowAction {
    std::function<void()> run;
};

/// The application's own help.
struct MenuHelp {
    QString appName;
    std::optional<QKeySequence> shortcut;
    std::function<void()> action;
};

/// The menu entries that every application has.
struct MenuBaseline {
    CloseWindowAction close;
    std::optional<MenuHelp> help;
    QList<QAction *> helpItems; ///< Further entries of the Help menu.
    QString language;           ///< That the titles are in.

    /// Appends "Close Window" (Ctrl+W) to `menu`, which owns it.
    QAction *addCloseTo(QMenu &menu) const;
    /// Appends the help entry, if there is one, and the further ones to `menu`.
    void addHelpTo(QMenu &menu) const;
};

} // namespace tallyfold
