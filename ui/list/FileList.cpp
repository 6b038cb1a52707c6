#include "ui/list/FileList.h"

#include "app/UriList.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/EmptyState.h"
#include "ui/controls/Mnemonics.h"
#include "ui/controls/Separator.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"
#include "ui/theme/Symbols.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tallyfold {

namespace {

const QString uriList = QStringLiteral("text/uri-list");

/// The dashed line round the list that says: drop it here. It takes no clicks, and nobody needs to hear of
/// it.
class DropOutline final : public QWidget {
public:
    explicit DropOutline(QWidget *parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        hide();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor accent = colorOf(Tone::accent, palette());
        QColor veil = accent;
        veil.setAlphaF(0.06F);
        painter.setPen(QPen(accent, 2, Qt::DashLine));
        painter.setBrush(veil);
        painter.drawRoundedRect(QRectF(rect()).adjusted(6, 6, -6, -6), 10, 10);
    }
};

} // namespace

FileList::FileList(const Environment &environment, QWidget *parent)
    : QWidget(parent),
      m_environment(environment),
      m_files([model = &environment.model](const std::set<std::int64_t> &from, std::int64_t to) {
          model->move(from, to);
      }),
      m_view(new FileListView(m_files)),
      m_summary(new ProductionSummary),
      m_pages(new QStackedWidget),
      m_outline(new DropOutline(this))
{
    setObjectName(QStringLiteral("fileList"));
    setAcceptDrops(true);
    m_pages->addWidget(makeEmptyState());
    m_pages->addWidget(makeList());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    m_outline->raise();

    connect(&environment.plan, &CurrentPlan::changed, this, &FileList::showPlan);
    connect(&environment.model, &AppModel::selectionChanged, this,
            [this] { m_view->showSelected(m_environment.model.selection()); });
    showPlan();
}

QWidget *FileList::makeEmptyState()
{
    auto *button = new ProminentButton(words(QT_TRANSLATE_NOOP("Words", "Add PDFs…")));
    button->setObjectName(QStringLiteral("addPdfs"));
    connect(button, &QPushButton::clicked, this, [this] { m_environment.model.chooseFiles(); });
    auto *folder = new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Add Folder…")));
    folder->setObjectName(QStringLiteral("addFolder"));
    connect(folder, &QPushButton::clicked, this, [this] { m_environment.model.chooseFolder(); });
    auto *buttons = new QWidget;
    auto *row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing::normal);
    row->addWidget(button);
    row->addWidget(folder);
    auto *state =
        new EmptyState(QStringLiteral("doc.on.doc"), words(QT_TRANSLATE_NOOP("Words", "Drop PDFs Here")),
                       words(QT_TRANSLATE_NOOP("Words", "Drop a folder of PDFs, or the PDFs themselves. The "
                                                        "originals are only read, never changed.")),
                       buttons);
    state->setAutoFillBackground(true);
    state->setBackgroundRole(QPalette::Base);
    return state;
}

QWidget *FileList::makeList()
{
    const QString title = words(QT_TRANSLATE_NOOP("Words", "Production order"));
    auto *header = new StyledLabel(title, TextStyle::captionStrong, Tone::secondary);
    header->setObjectName(QStringLiteral("productionOrder"));
    header->setContentsMargins(spacing::wide, spacing::wide, spacing::wide, spacing::tight);
    header->setBuddy(m_view);
    m_view->setObjectName(QStringLiteral("files"));
    m_view->setAccessibleName(title);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    m_view->installEventFilter(this);
    connect(m_view, &QWidget::customContextMenuRequested, this, &FileList::showMenu);
    connect(m_view, &FileListView::chosen, this,
            [this] { m_environment.model.setSelection(m_view->selectedIds()); });
    connect(m_view, &FileListView::passwordHelpWanted, this,
            [this] { m_environment.openHelp(QStringLiteral("password")); });
    connect(m_view, &FileListView::pasted, this,
            [this](const std::vector<std::filesystem::path> &files) { m_environment.model.add(files); });

    auto *page = new QWidget;
    page->setAutoFillBackground(true);
    page->setBackgroundRole(QPalette::Base);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(header);
    layout->addWidget(m_view, 1);
    layout->addWidget(new Separator);
    m_summary->setAutoFillBackground(true);
    layout->addWidget(m_summary);
    return page;
}

bool FileList::isDropping() const
{
    return m_outline->isVisibleTo(this);
}

FileListView *FileList::view() const
{
    return m_view;
}

void FileList::showPlan()
{
    const int scrolled = m_view->verticalScrollBar()->value();
    const QModelIndex current = m_view->currentIndex();
    const QUuid currentId = current.isValid() ? m_files.file(current).source.id : QUuid();

    const bool areRowsKept = m_files.setPlan(m_environment.plan.snapshot());
    m_view->showSelected(m_environment.model.selection());
    if (!areRowsKept) { // The reader's place is kept all the same.
        m_view->selectionModel()->setCurrentIndex(m_files.indexOf(currentId), QItemSelectionModel::NoUpdate);
        m_view->doItemsLayout();
        m_view->verticalScrollBar()->setValue(scrolled);
    }
    m_summary->setPlan(*m_environment.plan);
    const bool isEmpty = m_files.rowCount() == 0;
    const bool hadFocus = m_pages->currentWidget()->isAncestorOf(QApplication::focusWidget());
    m_pages->setCurrentIndex(isEmpty ? 0 : 1);
    if (hadFocus && !isEmpty) {
        m_view->setFocus();
    }
}

std::unique_ptr<QMenu> FileList::menuOf(const QModelIndex &index)
{
    const SourceFile source = m_files.file(index).source; // A copy: the list may change under the menu.
    auto menu = std::make_unique<QMenu>(this);
    menu->addAction(words(QT_TRANSLATE_NOOP("Words", "Show Original in Finder")), this,
                    [this, url = source.url] { m_environment.desktop.reveal(url); });
    menu->addSeparator();
    menu->addAction(words(QT_TRANSLATE_NOOP("Words", "Remove from List")), this,
                    [this, id = source.id] { m_environment.model.remove({id}); });
    giveMnemonics(*menu);
    return menu;
}

void FileList::showMenu(const QPoint &point)
{
    const QModelIndex index = m_view->indexAt(point);
    if (index.isValid()) {
        menuOf(index)->exec(m_view->viewport()->mapToGlobal(point));
    }
}

void FileList::moveCurrent(int step)
{
    const QModelIndex current = m_view->currentIndex();
    QItemSelectionModel &selection = *m_view->selectionModel();
    if (!m_files.canMoveRows()) {
        if (current.isValid() || selection.hasSelection()) {
            m_view->tellHowToMove(current.isValid() ? current : selection.selectedIndexes().constFirst());
        }
        return;
    }
    // The current row is meant. Where it is not chosen it is chosen first, alone, as by a drag of it.
    if (current.isValid() && !selection.isSelected(current)) {
        selection.select(current, QItemSelectionModel::ClearAndSelect);
    }
    std::set<std::int64_t> rows;
    for (const QModelIndex &index : selection.selectedIndexes()) {
        rows.insert(index.row());
    }
    if (rows.empty()) {
        return;
    }
    // Up goes before the row above the first, down behind the row below the last; the chosen rows come
    // together.
    const std::int64_t target = step < 0 ? *rows.begin() - 1 : *rows.rbegin() + 2;
    if (target >= 0 && target <= m_files.rowCount()) {
        m_environment.model.move(rows, target);
    }
}

void FileList::takeDropsOn(QWidget &window)
{
    m_dropWindow = &window;
    window.setAcceptDrops(true);
    window.installEventFilter(this);
    for (QLineEdit *field : window.findChildren<QLineEdit *>()) {
        field->installEventFilter(this);
    }
}

bool FileList::passDrag(QEvent &event)
{
    switch (event.type()) {
    case QEvent::DragEnter:
        dragEnterEvent(static_cast<QDragEnterEvent *>(&event));
        return true;
    case QEvent::DragMove:
        dragMoveEvent(static_cast<QDragMoveEvent *>(&event));
        return true;
    case QEvent::DragLeave:
        dragLeaveEvent(static_cast<QDragLeaveEvent *>(&event));
        return true;
    case QEvent::Drop:
        dropEvent(static_cast<QDropEvent *>(&event));
        return true;
    default:
        return false;
    }
}

bool FileList::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_dropWindow && passDrag(*event)) {
        return true;
    }
    // A field takes text, and files come with text that names them: they are not for it.
    if (event->type() == QEvent::DragEnter && qobject_cast<QLineEdit *>(object) &&
        static_cast<QDragEnterEvent *>(event)->mimeData()->hasFormat(uriList)) {
        event->ignore();
        return true;
    }
    if (object == m_view && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool isUp = key->key() == Qt::Key_Up;
        if (key->modifiers() == Qt::AltModifier && (isUp || key->key() == Qt::Key_Down)) {
            moveCurrent(isUp ? -1 : 1);
            return true;
        }
    }
    return QWidget::eventFilter(object, event);
}

void FileList::setDropping(bool isDropping)
{
    m_outline->setGeometry(rect());
    m_outline->setVisible(isDropping);
}

void FileList::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasFormat(uriList)) {
        event->setDropAction(Qt::CopyAction); // A file manager must not take the originals away.
        event->accept();
        setDropping(true);
    } else {
        event->ignore();
    }
}

void FileList::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->mimeData()->hasFormat(uriList)) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

void FileList::dragLeaveEvent(QDragLeaveEvent *)
{
    setDropping(false);
}

void FileList::dropEvent(QDropEvent *event)
{
    setDropping(false);
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const std::vector<std::filesystem::path> paths = localPathsIn(event->mimeData()->data(uriList));
    // Reading many files takes a while, and the program that they come from waits for this event to end.
    QMetaObject::invokeMethod(
        this, [this, paths] { m_environment.model.add(paths); }, Qt::QueuedConnection);
}

void FileList::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_outline->setGeometry(rect());
}

} // namespace tallyfold
