#include "ui/check/CheckFolders.h"

#include "app/FindingText.h"
#include "core/SourceFile.h"
#include "ui/controls/StyledLabel.h"
#include "ui/controls/WrappedText.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"
#include "ui/theme/Symbols.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

#include <set>

namespace tallyfold {

namespace {

constexpr int mostRowsShown = 3;

} // namespace

CheckFolders::CheckFolders(CheckModel &model, QWidget *parent)
    : QWidget(parent),
      m_model(&model),
      m_list(new QListWidget),
      m_add(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Add Folder…")))),
      m_remove(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Remove")))),
      m_check(new ProminentButton(words(QT_TRANSLATE_NOOP("Words", "Check"))))
{
    const QString title = words(QT_TRANSLATE_NOOP("Words", "Production folders"));
    m_list->setObjectName(QStringLiteral("checkFolders"));
    m_list->setAccessibleName(title);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_add->setObjectName(QStringLiteral("addCheckFolder"));
    m_remove->setObjectName(QStringLiteral("removeCheckFolder"));
    m_check->setObjectName(QStringLiteral("startCheck"));
    m_add->setAutoDefault(false);
    m_remove->setAutoDefault(false);
    m_check->setDefault(true);

    auto *header = new StyledLabel(title, TextStyle::captionStrong, Tone::secondary);
    header->setBuddy(m_list);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(spacing::normal);
    buttons->addWidget(m_add);
    buttons->addWidget(m_remove);
    buttons->addStretch(1);
    buttons->addWidget(m_check);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::normal);
    layout->addWidget(header);
    layout->addWidget(m_list);
    layout->addLayout(buttons);

    connect(m_add, &QPushButton::clicked, this, &CheckFolders::moreWanted);
    connect(m_remove, &QPushButton::clicked, this, &CheckFolders::removeChosen);
    connect(m_check, &QPushButton::clicked, this, [this] { m_model->start(); });
    auto *removeKey = new QShortcut(Qt::Key_Delete, m_list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(removeKey, &QShortcut::activated, this, &CheckFolders::removeChosen);
    connect(m_list, &QListWidget::itemSelectionChanged, this, &CheckFolders::update);
    connect(m_model, &CheckModel::foldersChanged, this, &CheckFolders::showFolders);
    connect(m_model, &CheckModel::runningChanged, this, &CheckFolders::update);
    showFolders();
}

QPushButton *CheckFolders::checkButton() const
{
    return m_check;
}

void CheckFolders::showFolders()
{
    m_list->clear();
    for (const std::filesystem::path &folder : m_model->folders()) {
        const QString path = displayPath(folder);
        auto *item = new QListWidgetItem(symbolIcon(QStringLiteral("folder"), Tone::secondary), path, m_list);
        item->setToolTip(helpTextOf(path));
    }
    const int rowHeight = m_list->count() > 0 ? m_list->sizeHintForRow(0) : m_list->fontMetrics().height();
    m_list->setFixedHeight(qBound(1, m_list->count(), mostRowsShown) * rowHeight + 2 * m_list->frameWidth());
    update();
}

void CheckFolders::update()
{
    const bool isIdle = !m_model->isRunning();
    m_list->setEnabled(isIdle);
    m_add->setEnabled(isIdle);
    m_remove->setEnabled(isIdle && !m_list->selectedItems().isEmpty());
    m_check->setEnabled(isIdle && m_list->count() > 0);
}

void CheckFolders::removeChosen()
{
    std::set<std::size_t> rows;
    for (const QModelIndex &index : m_list->selectionModel()->selectedIndexes()) {
        rows.insert(static_cast<std::size_t>(index.row()));
    }
    m_model->remove(rows);
}

} // namespace tallyfold
