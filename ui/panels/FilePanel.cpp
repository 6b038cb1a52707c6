#include "ui/panels/FilePanel.h"

#include "ui/controls/Buttons.h"
#include "ui/controls/StyledLabel.h"
#include "ui/panels/Places.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <system_error>
#include <utility>

namespace tallyfold {

namespace {

std::filesystem::path pathOf(const QString &text)
{
    return QFile::encodeName(text).toStdString();
}

QString shown(const std::filesystem::path &path)
{
    return QString::fromUtf8(path.native().c_str());
}

} // namespace

FilePanel::FilePanel(const OpenPanel &panel, const std::filesystem::path &folder, QWidget *parent)
    : QDialog(parent),
      m_places(new QListWidget),
      m_list(new QTreeView),
      m_path(new QLineEdit),
      m_up(new QPushButton),
      m_add(new ProminentButton(panel.prompt))
{
    setObjectName(QStringLiteral("filePanel"));
    setWindowTitle(panel.title);
    setAccessibleDescription(panel.message);
    m_path->setObjectName(QStringLiteral("path"));
    m_path->installEventFilter(this);
    m_path->setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Path")));
    m_up->setIcon(style()->standardIcon(QStyle::SP_FileDialogToParent));
    m_up->setToolTip(words(QT_TRANSLATE_NOOP("Words", "Enclosing Folder")));
    m_up->setAccessibleName(m_up->toolTip());
    m_up->setAutoDefault(false);
    m_up->setShortcut(Qt::ALT | Qt::Key_Up);
    m_add->setObjectName(QStringLiteral("add"));
    m_places->setObjectName(QStringLiteral("places"));
    m_places->setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Places")));
    m_list->setObjectName(QStringLiteral("contents"));
    m_list->setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Files")));
    m_list->setModel(&m_contents);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setTextElideMode(Qt::ElideMiddle); // Names of documents differ at their ends.
    m_list->setSortingEnabled(true);
    m_list->sortByColumn(FolderContents::nameColumn, Qt::AscendingOrder);
    m_list->setSelectionMode(panel.allowsMultipleSelection ? QAbstractItemView::ExtendedSelection
                                                           : QAbstractItemView::SingleSelection);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(FolderContents::nameColumn, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(FolderContents::sizeColumn, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(FolderContents::modifiedColumn, QHeaderView::ResizeToContents);
    addPlaces();

    auto *buttons = new QDialogButtonBox; // In the order of the desktop.
    buttons->addButton(m_add, QDialogButtonBox::AcceptRole);
    QPushButton *cancel = buttons->addButton(words("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setAutoDefault(false);
    m_add->setDefault(true);
    auto *pathRow = new QHBoxLayout;
    pathRow->addWidget(m_up);
    pathRow->addWidget(m_path, 1);
    auto *splitter = new QSplitter;
    splitter->addWidget(m_places);
    splitter->addWidget(m_list);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({160, 560});
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::section, spacing::section, spacing::section, spacing::section);
    layout->setSpacing(spacing::wide);
    layout->addWidget(new StyledLabel(panel.message, TextStyle::body));
    layout->addLayout(pathRow);
    layout->addWidget(splitter, 1);
    layout->addWidget(buttons);
    resize(760, 520);

    // The keys by which desktops' own file panels take a path.
    auto *typePath = new QShortcut(Qt::CTRL | Qt::Key_L, this);
    connect(typePath, &QShortcut::activated, m_path, [this] {
        m_path->setFocus();
        m_path->selectAll();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_add, &QPushButton::clicked, this, &FilePanel::takePath);
    connect(m_path, &QLineEdit::textChanged, this, &FilePanel::offerToAdd);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &FilePanel::offerToAdd);
    connect(&m_contents, &QAbstractItemModel::modelReset, this, &FilePanel::offerToAdd);
    connect(m_list, &QTreeView::activated, this, &FilePanel::openItem);
    connect(m_up, &QPushButton::clicked, this, [this] { enter(m_contents.folder().parent_path()); });
    connect(m_places, &QListWidget::itemClicked, this, [this](const QListWidgetItem *item) {
        enter(item->data(Qt::UserRole).toByteArray().toStdString());
    });
    if (!m_contents.open(folder)) {
        m_contents.open(pathOf(QDir::homePath()));
    }
    m_path->setText(shown(m_contents.folder()));
    m_list->setFocus();
    offerToAdd();
}

void FilePanel::offerToAdd()
{
    const bool isTyped = m_path->text() != shown(m_contents.folder());
    m_add->setEnabled(isTyped || m_list->selectionModel()->hasSelection());
}

void FilePanel::addPlaces()
{
    for (const Place &place : usersPlaces()) {
        auto *item = new QListWidgetItem(style()->standardIcon(QStyle::SP_DirIcon), place.title, m_places);
        item->setData(Qt::UserRole, QByteArray::fromStdString(place.folder.native()));
        item->setToolTip(shown(place.folder));
    }
}

void FilePanel::enter(const std::filesystem::path &folder)
{
    if (!folder.empty() && m_contents.open(folder)) {
        m_path->setText(shown(m_contents.folder()));
    }
}

void FilePanel::openItem(const QModelIndex &index)
{
    if (m_contents.isFolder(index)) {
        enter(m_contents.pathOf(index));
    } else {
        take({m_contents.pathOf(index)});
    }
}

std::filesystem::path FilePanel::typedPath() const
{
    const QString text = m_path->text().trimmed();
    const bool isOfHome = text == QStringLiteral("~") || text.startsWith(QStringLiteral("~/"));
    return isOfHome ? pathOf(QDir::homePath() + text.mid(1)) : m_contents.folder() / pathOf(text);
}

bool FilePanel::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_path && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) { // Goes there first, and does not take it yet.
            goToPath();
            return true;
        }
    }
    return QDialog::eventFilter(object, event);
}

void FilePanel::goToPath()
{
    const std::filesystem::path typed = typedPath();
    std::error_code error;
    if (m_path->text() != shown(m_contents.folder()) && std::filesystem::is_directory(typed, error)) {
        enter(typed);
    } else {
        takePath();
    }
}

void FilePanel::takePath()
{
    if (m_path->text() == shown(m_contents.folder())) {
        take({});
        return;
    }
    const std::filesystem::path typed = typedPath();
    std::error_code error;
    if (std::filesystem::exists(typed, error)) {
        take({typed});
    } else {
        m_path->selectAll(); // There is no such file: the words are there to be mended.
        m_path->setFocus();
    }
}

void FilePanel::take(std::vector<std::filesystem::path> chosen)
{
    m_typed = std::move(chosen);
    accept();
}

std::vector<std::filesystem::path> FilePanel::chosen() const
{
    if (!m_typed.empty()) {
        return m_typed;
    }
    std::vector<std::filesystem::path> paths;
    QModelIndexList rows = m_list->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    for (const QModelIndex &row : rows) {
        paths.push_back(m_contents.pathOf(row));
    }
    if (paths.empty()) {
        paths.push_back(m_contents.folder());
    }
    return paths;
}

const std::filesystem::path &FilePanel::folder() const
{
    return m_contents.folder();
}

} // namespace tallyfold
