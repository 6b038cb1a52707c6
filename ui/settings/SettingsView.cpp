#include "ui/settings/SettingsView.h"

#include "ui/settings/GeneralSettings.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"
#include "ui/theme/Symbols.h"

#include <QScrollArea>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tallyfold {

SettingsView::SettingsView(const Environment &environment, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("settings"));
    setWindowTitle(words(QT_TRANSLATE_NOOP("Words", "Settings")));
    auto *scroll = new QScrollArea; // There may be many presets.
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(new GeneralSettings(environment));
    auto *tabs = new QTabWidget;
    tabs->addTab(scroll, symbolIcon(QStringLiteral("gearshape")),
                 words(QT_TRANSLATE_NOOP("Words", "General")));
    tabs->setAccessibleName(windowTitle());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::wide, spacing::wide, spacing::wide, spacing::wide);
    layout->addWidget(tabs);
    connect(new QShortcut(Qt::CTRL | Qt::Key_W, this), &QShortcut::activated, this, &QWidget::close);
    resize(560, 480);
}

} // namespace tallyfold
