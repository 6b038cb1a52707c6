#include "app/Panels.h"

#include <QCoreApplication>

namespace tallyfold {

OpenPanel OpenPanel::forFiles()
{
    return {QCoreApplication::translate("Panels", "Add PDFs"),
            QCoreApplication::translate(
                "Panels", "Choose PDFs or folders of PDFs to number. They’re only read, never changed."),
            QCoreApplication::translate("Panels", "Add"),
            Content::pdfsAndFolders,
            true,
            false};
}

OpenPanel OpenPanel::forFolder()
{
    return {QCoreApplication::translate("Panels", "Add Folder"),
            QCoreApplication::translate("Panels",
                                        "Choose a folder of PDFs to number. PDFs in its subfolders are added "
                                        "too; they’re only read, never changed."),
            QCoreApplication::translate("Panels", "Add"),
            Content::folderOfPdfs,
            false,
            false};
}

OpenPanel OpenPanel::forOutputFolder()
{
    return {QCoreApplication::translate("Panels", "Output Folder"),
            QCoreApplication::translate("Panels",
                                        "Choose an empty folder for the stamped copies and the index. "
                                        "Nothing in it is ever replaced."),
            QCoreApplication::translate("Panels", "Choose"),
            Content::folder,
            false,
            true};
}

OpenPanel OpenPanel::forProduction()
{
    return {QCoreApplication::translate("Panels", "Production Folder"),
            QCoreApplication::translate(
                "Panels", "Choose the folder of a finished production. It’s only read, never changed."),
            QCoreApplication::translate("Panels", "Choose"),
            Content::folder,
            false,
            false};
}

} // namespace tallyfold
