#include "ui/panels/WindowPanels.h"

#include "ui/controls/StyledLabel.h"
#include "ui/panels/DialogAnswer.h"
#include "ui/panels/FilePanel.h"
#include "ui/theme/Spacing.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLayout>
#include <QLineEdit>
#include <QSplitter>
#include <QTreeView>

#include <optional>
#include <system_error>
#include <utility>

namespace tallyfold {

namespace fs = std::filesystem;

namespace {

constexpr QSize folderDialogSize(760, 520);
constexpr int placesWidth = 160;
const QString filesKey = QStringLiteral("panel/files");
const QString folderKey = QStringLiteral("panel/folder");

std::optional<fs::path> itemOf(const QString &path)
{
    return itemCalled(QFile::encodeName(path).toStdString());
}

/// The folder that an accepted dialog means: the one in its field, typed or put there by a choice. Qt's own
/// dialog also selects in its list what is being typed, keeps what it met on the way, and then gives several.
std::optional<fs::path> chosenFolder(const QFileDialog &dialog)
{
    const auto *field = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QString text = field != nullptr ? field->text() : QString();
    if (text == u"~" || text.startsWith(u"~/")) {
        text.replace(0, 1, QDir::homePath());
    }
    std::error_code error;
    if (!text.isEmpty()) {
        const auto named = itemOf(QDir::cleanPath(dialog.directory().absoluteFilePath(text)));
        if (named && fs::is_directory(*named, error)) {
            return named;
        }
    }
    const QStringList selected = dialog.selectedFiles();
    return selected.size() == 1 ? itemOf(selected.constFirst()) : std::nullopt;
}

/// Has `dialog` say `message` above all else.
void tell(const QString &message, QFileDialog &dialog)
{
    auto *label = new StyledLabel(message, TextStyle::body);
    label->setObjectName(QStringLiteral("panelMessage"));
    label->setContentsMargins(spacing::wide, spacing::wide, spacing::wide, 0);
    dialog.layout()->setMenuBar(label); // It stands above the rest of a layout.
    dialog.setAccessibleDescription(message);
}

/// Gives the columns of `dialog`, Qt's own for folders, the room that they need.
void arrangeColumns(const QFileDialog &dialog)
{
    if (auto *list = dialog.findChild<QTreeView *>(QStringLiteral("treeView"))) {
        constexpr int sizeColumn = 1;
        constexpr int typeColumn = 2;
        constexpr int modifiedColumn = 3;
        list->hideColumn(sizeColumn); // Folders are all of none and of one.
        list->hideColumn(typeColumn);
        list->header()->setStretchLastSection(false);
        list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
        list->header()->setSectionResizeMode(modifiedColumn, QHeaderView::ResizeToContents);
    }
    if (auto *splitter = dialog.findChild<QSplitter *>(QStringLiteral("splitter"))) {
        splitter->setSizes({placesWidth, dialog.width() - placesWidth});
    }
}

} // namespace

WindowPanels::WindowPanels(WindowState &state, AskDesktop askDesktop)
    : m_state(&state), m_askDesktop(std::move(askDesktop))
{
}

void WindowPanels::setWindow(QWidget *window)
{
    m_window = window;
}

PanelAnswer WindowPanels::run(const OpenPanel &panel)
{
    const bool isForFiles = panel.content != OpenPanel::Content::folder;
    const QString &key = isForFiles ? filesKey : folderKey;
    const fs::path begin = m_state->bytes(key).toStdString();
    if (const std::optional<QList<QUrl>> urls = m_askDesktop(panel, begin, m_window)) {
        const PanelAnswer answer = answerOf(*urls);
        if (!answer.chosen.empty()) {
            remember(key, answer.chosen.front().parent_path());
        }
        return answer;
    }
    return isForFiles ? chooseFiles(panel, begin) : chooseFolder(panel, begin);
}

void WindowPanels::remember(const QString &key, const fs::path &folder)
{
    m_state->setBytes(key, QByteArray::fromStdString(folder.native()));
}

PanelAnswer WindowPanels::chooseFiles(const OpenPanel &panel, const fs::path &begin)
{
    FilePanel dialog(panel, begin, m_window);
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    remember(filesKey, dialog.folder());
    return {dialog.chosen(), {}};
}

PanelAnswer WindowPanels::chooseFolder(const OpenPanel &panel, const fs::path &begin)
{
    QFileDialog dialog(m_window, panel.title, QFile::decodeName(begin.c_str()));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setObjectName(QStringLiteral("folderPanel"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setOption(QFileDialog::ReadOnly, !panel.canCreateDirectories);
    dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    tell(panel.message, dialog);
    dialog.resize(folderDialogSize);
    arrangeColumns(dialog);
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    const std::optional<fs::path> folder = isAccepted ? chosenFolder(dialog) : std::nullopt;
    if (!folder) {
        return {};
    }
    remember(folderKey, folder->parent_path());
    return {{*folder}, {}};
}

} // namespace tallyfold
