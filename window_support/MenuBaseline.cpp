#include "window_support/MenuBaseline.h"

#include "window_support/LocalizedTitle.h"

namespace tallyfold {

QAction *MenuBaseline::addCloseTo(QMenu &menu) const
{
    QAction *const entry = menu.addAction(localizedTitle(QStringLiteral("Close Window"), language));
    entry->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    QObject::connect(entry, &QAction::triggered, entry, [run = close.run] { run(); });
    return entry;
}

void MenuBaseline::addHelpTo(QMenu &menu) const
{
    if (help) {
        QAction *const entry =
            menu.addAction(localizedTitle(QStringLiteral("%1 Help"), language).arg(help->appName));
        if (help->shortcut) {
            entry->setShortcut(*help->shortcut);
        }
        QObject::connect(entry, &QAction::triggered, entry, [action = help->action] { action(); });
    }
    menu.addActions(helpItems);
}

} // namespace tallyfold
