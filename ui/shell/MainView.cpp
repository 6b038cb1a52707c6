#include "ui/shell/MainView.h"

#include "app/RunMessages.h"
#include "ui/form/StampBar.h"
#include "ui/form/StampForm.h"
#include "ui/preview/PreviewPane.h"
#include "ui/preview/SpokenPreview.h"
#include "ui/text/Words.h"
#include "ui/theme/Symbols.h"
#include "window_support/WindowUndoManagerReader.h"

#include <QScreen>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace tallyfold {

namespace {

const QString geometryKey = QStringLiteral("main/geometry");
const QString columnsKey = QStringLiteral("main/columns");

constexpr QSize firstSize(1240, 800);
constexpr QSize leastSize(860, 520);
constexpr int widestForm = 600;
/// What a window manager puts around a window, at most.
constexpr QSize frame(16, 56);

} // namespace

QSize MainView::firstSizeOn(QSize available)
{
    return firstSize.boundedTo(available - frame).expandedTo(leastSize);
}

MainView::MainView(const Environment &environment, QWidget *parent)
    : QMainWindow(parent),
      m_environment(environment),
      m_undo(new QUndoStack(this)),
      m_columns(new QSplitter),
      m_presets(new PresetMenu(environment, this)),
      m_sheets(new Sheets(environment, this))
{
    setObjectName(QStringLiteral("main"));
    setWindowTitle(displayedName());
    setMinimumSize(leastSize);
    addColumns();
    addToolBar();
    // The stack is found through the window that a view is in, as any view would find it.
    new WindowUndoManagerReader([this](QUndoStack *undo) { m_environment.model.setUndoManager(undo); },
                                centralWidget());
    restorePlace();
}

MainView::~MainView()
{
    m_environment.model.setUndoManager(nullptr);
}

void MainView::addColumns()
{
    auto *files = new FileList(m_environment);
    auto *form = new QWidget;
    auto *layout = new QVBoxLayout(form);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *settings = new StampForm(m_environment);
    connect(m_sheets, &Sheets::sectionWanted, settings, &StampForm::showSection);
    layout->addWidget(settings, 1);
    layout->addWidget(new StampBar(m_environment));
    auto *preview = new PreviewPane(m_environment);
    new SpokenPreview(m_environment, *preview);

    files->setMinimumWidth(230);
    preview->setMinimumWidth(230);
    form->setMaximumWidth(widestForm); // Wider, its fields would only be farther from their names.
    m_columns->setObjectName(QStringLiteral("columns"));
    m_columns->setChildrenCollapsible(false);
    m_columns->setHandleWidth(1);
    m_columns->addWidget(files);
    m_columns->addWidget(form);
    m_columns->addWidget(preview);
    m_columns->setStretchFactor(0, 2);
    m_columns->setStretchFactor(1, 1);
    m_columns->setStretchFactor(2, 3);
    m_columns->setSizes({320, 390, 530});
    // Not the splitter itself: a widget that is put in it would be a column.
    auto *center = new QWidget;
    auto *whole = new QVBoxLayout(center);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_columns);
    setCentralWidget(center);
    files->takeDropsOn(*this);
}

void MainView::addToolBar()
{
    auto *bar = QMainWindow::addToolBar(words(QT_TRANSLATE_NOOP("Words", "Toolbar")));
    bar->setObjectName(QStringLiteral("toolbar"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize(QSize(18, 18));
    QAction *add =
        bar->addAction(symbolIcon(QStringLiteral("plus")), words(QT_TRANSLATE_NOOP("Words", "Add PDFs")),
                       this, [this] { m_environment.model.chooseFiles(); });
    add->setToolTip(words(QT_TRANSLATE_NOOP("Words", "Add PDFs or folders (⌘O)")));
    QAction *addFolder =
        bar->addAction(symbolIcon(QStringLiteral("folder")), words(QT_TRANSLATE_NOOP("Words", "Add Folder")),
                       this, [this] { m_environment.model.chooseFolder(); });
    addFolder->setToolTip(words(QT_TRANSLATE_NOOP("Words", "Add the PDFs of a folder and its subfolders")));
    auto *space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    auto *presets = new QToolButton;
    presets->setObjectName(QStringLiteral("presets"));
    presets->setText(m_presets->title());
    presets->setIcon(symbolIcon(QStringLiteral("slider.horizontal.3")));
    presets->setToolTip(words(QT_TRANSLATE_NOOP("Words", "Apply or save stamp settings")));
    presets->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    presets->setPopupMode(QToolButton::InstantPopup);
    presets->setFocusPolicy(Qt::TabFocus);
    presets->setMenu(m_presets);
    bar->addWidget(presets);
    bar->widgetForAction(add)->setObjectName(QStringLiteral("toolbarAdd"));
    bar->widgetForAction(addFolder)->setObjectName(QStringLiteral("toolbarAddFolder"));
    for (QAction *action : {add, addFolder}) {
        bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    }
}

QUndoStack &MainView::undoStack()
{
    return *m_undo;
}

const Sheets &MainView::sheets() const
{
    return *m_sheets;
}

PresetMenu &MainView::presetMenu()
{
    return *m_presets;
}

void MainView::restorePlace()
{
    if (!restoreGeometry(m_environment.windowState.bytes(geometryKey))) {
        resize(firstSizeOn(screen()->availableSize()));
    }
    m_columns->restoreState(m_environment.windowState.bytes(columnsKey));
    m_columns->setHandleWidth(1); // The state remembers this as well, and must not.
}

void MainView::rememberPlace()
{
    m_environment.windowState.setBytes(geometryKey, saveGeometry());
    m_environment.windowState.setBytes(columnsKey, m_columns->saveState());
}

void MainView::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    // What the model wanted to have shown while there was no window.
    QMetaObject::invokeMethod(m_sheets, &Sheets::showAll, Qt::QueuedConnection);
}

void MainView::closeEvent(QCloseEvent *event)
{
    rememberPlace();
    QMainWindow::closeEvent(event);
}

} // namespace tallyfold
