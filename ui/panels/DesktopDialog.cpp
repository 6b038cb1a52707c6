#include "ui/panels/DesktopDialog.h"

#include "ui/text/Words.h"

#include <QFile>
#include <QFileDialog>
#include <QLayout>

namespace tallyfold {

std::optional<QList<QUrl>> askDesktop(const OpenPanel &panel, const std::filesystem::path &folder,
                                      QWidget *window)
{
    QFileDialog dialog(window, panel.title, QFile::decodeName(folder.c_str()));
    if (dialog.layout() != nullptr) { // It is Qt's own: one of a desktop has no widgets here.
        return std::nullopt;
    }
    dialog.setAccessibleDescription(panel.message); // There is no place for it in the dialog.
    dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    dialog.setSupportedSchemes({QStringLiteral("file")}); // What is mounted is there as a file.
    if (panel.content == OpenPanel::Content::pdfsAndFolders) {
        dialog.setFileMode(panel.allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                         : QFileDialog::ExistingFile);
        // Desktops tell upper from lower case in patterns.
        dialog.setOption(QFileDialog::HideNameFilterDetails);
        dialog.setNameFilter(words(QT_TRANSLATE_NOOP("Words", "PDF files")) +
                             QStringLiteral(" (*.[pP][dD][fF])"));
    } else {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
        dialog.setOption(QFileDialog::ReadOnly, !panel.canCreateDirectories);
    }
    return dialog.exec() == QDialog::Accepted ? dialog.selectedUrls() : QList<QUrl>();
}

} // namespace tallyfold
