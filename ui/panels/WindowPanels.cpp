#include "ui/panels/WindowPanels.h"

#include "core/SourceFile.h"
#include "ui/panels/FilePanel.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>

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
    QFileDialog dialog(m_window, panel.message, QFile::decodeName(m_state->bytes(folderKey)));
    dialog.setObjectName(QStringLiteral("folderPanel"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setOption(QFileDialog::ReadOnly, !panel.canCreateDirectories);
    dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    const std::filesystem::path folder = folderCalled(dialog.selectedFiles().constFirst());
    m_state->setBytes(folderKey, QByteArray::fromStdString(folder.parent_path().native()));
    return {folder};
}

} // namespace tallyfold
