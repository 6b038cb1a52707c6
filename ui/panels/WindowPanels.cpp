#include "ui/panels/WindowPanels.h"

#include "core/SourceFile.h"
#include "ui/controls/StyledLabel.h"
#include "ui/panels/FilePanel.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLayout>
#include <QLineEdit>

#include <system_error>

namespace tallyfold {

namespace {

const QString filesKey = QStringLiteral("panel/files");
const QString folderKey = QStringLiteral("panel/folder");

/// The folder that a dialog calls `text`. Dialogs give names as text, in which bytes that are none are lost:
/// such a folder is looked for among its neighbours.
std::filesystem::path folderCalled(const QString &text)
{
    std::filesystem::path named = QFile::encodeName(text).toStdString();
    std::error_code error;
    if (std::filesystem::exists(named, error) || !text.contains(QChar::ReplacementCharacter)) {
        return named;
    }
    std::filesystem::directory_iterator neighbours(named.parent_path(), error);
    for (; !error && neighbours != std::filesystem::directory_iterator(); neighbours.increment(error)) {
        if (displayName(neighbours->path()) == displayName(named)) {
            return neighbours->path();
        }
    }
    return named;
}

/// The folder that an accepted dialog means: the one in its field, typed or put there by a choice. Qt's own
/// dialog also selects in its list what is being typed, keeps what it met on the way, and then gives several.
/// Empty when there is none.
std::filesystem::path chosenFolder(const QFileDialog &dialog)
{
    const auto *field = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QString text = field != nullptr ? field->text() : QString();
    if (text == u"~" || text.startsWith(u"~/")) {
        text.replace(0, 1, QDir::homePath());
    }
    std::error_code error;
    if (!text.isEmpty()) {
        const auto named = folderCalled(QDir::cleanPath(dialog.directory().absoluteFilePath(text)));
        if (std::filesystem::is_directory(named, error)) {
            return named;
        }
    }
    const QStringList selected = dialog.selectedFiles();
    return selected.size() == 1 ? folderCalled(selected.constFirst()) : std::filesystem::path();
}

/// Has `dialog` say `message` above all else, if it is Qt's own. Those of desktops have no place for it.
void tell(const QString &message, QFileDialog &dialog)
{
    if (QLayout *layout = dialog.layout()) {
        auto *label = new StyledLabel(message, TextStyle::body);
        label->setObjectName(QStringLiteral("panelMessage"));
        label->setContentsMargins(spacing::wide, spacing::wide, spacing::wide, 0);
        layout->setMenuBar(label); // It stands above the rest of a layout.
    }
    dialog.setAccessibleDescription(message);
}

} // namespace

WindowPanels::WindowPanels(WindowState &state) : m_state(&state) {}

void WindowPanels::setWindow(QWidget *window)
{
    m_window = window;
}

std::vector<std::filesystem::path> WindowPanels::run(const OpenPanel &panel)
{
    return panel.content == OpenPanel::Content::folder ? chooseFolder(panel) : chooseFiles(panel);
}

std::vector<std::filesystem::path> WindowPanels::chooseFiles(const OpenPanel &panel)
{
    FilePanel dialog(panel, m_state->bytes(filesKey).toStdString(), m_window);
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    m_state->setBytes(filesKey, QByteArray::fromStdString(dialog.folder().native()));
    return dialog.chosen();
}

std::vector<std::filesystem::path> WindowPanels::chooseFolder(const OpenPanel &panel)
{
    QFileDialog dialog(m_window, words(QT_TRANSLATE_NOOP("Words", "Output Folder")),
                       QFile::decodeName(m_state->bytes(folderKey)));
    dialog.setObjectName(QStringLiteral("folderPanel"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setOption(QFileDialog::ReadOnly, !panel.canCreateDirectories);
    dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    tell(panel.message, dialog);
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    const std::filesystem::path folder = isAccepted ? chosenFolder(dialog) : std::filesystem::path();
    if (folder.empty()) {
        return {};
    }
    m_state->setBytes(folderKey, QByteArray::fromStdString(folder.parent_path().native()));
    return {folder};
}

} // namespace tallyfold
