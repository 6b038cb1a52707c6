#include "app/RunMessages.h"

#include "app/FailureText.h"
#include "core/SourceCollector.h"
#include "core/SourceFile.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <algorithm>

namespace tallyfold {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("AppModel", text);
}

} // namespace

QString displayedName()
{
    const QString name = QGuiApplication::applicationDisplayName();
    return name.isEmpty() ? QStringLiteral("Tallyfold") : name;
}

std::optional<QString> existingFilesMessage(const std::vector<ProductionConflict> &conflicts)
{
    const auto existing =
        std::count_if(conflicts.begin(), conflicts.end(), [](const ProductionConflict &conflict) {
            return conflict.kind == ProductionConflict::Kind::exists;
        });
    if (existing == 0) {
        return std::nullopt;
    }
    if (existing == 1) {
        return translated(QT_TRANSLATE_NOOP(
                              "AppModel",
                              "The output folder already has one of these files. %1 never replaces files: "
                              "choose another folder, or Start Next Production for new numbers."))
            .arg(displayedName());
    }
    return translated(
               QT_TRANSLATE_NOOP("AppModel",
                                 "The output folder already has %1 of these files. %2 never replaces files: "
                                 "choose another folder, or Start Next Production for new numbers."))
        .arg(QString::number(existing), displayedName());
}

QString nothingWrittenMessage()
{
    return translated(
        QT_TRANSLATE_NOOP("AppModel", "Nothing was written: fix the items under Output first."));
}

QString conflictsDuringRunMessage(const std::vector<ProductionConflict> &conflicts)
{
    return existingFilesMessage(conflicts).value_or(translated(
        QT_TRANSLATE_NOOP("AppModel", "Some files in the output folder have the same names. Nothing was "
                                      "written; choose another folder or another naming style.")));
}

QString failedRunMessage(const FileError &error)
{
    // A failure of the folder or its disk is not reported as that of one file.
    if (const std::optional<QString> text = writingFailureText(error.code)) {
        return failedRunMessage(*text);
    }
    const QString reason = QString::fromLocal8Bit(error.code.message().c_str());
    if (error.name == QStringLiteral(".")) {
        return failedRunMessage(reason);
    }
    //: The name of a file, and why it could not be written.
    return failedRunMessage(translated(QT_TRANSLATE_NOOP("AppModel", "“%1”: %2")).arg(error.name, reason));
}

QString failedRunMessage(const QString &description)
{
    return translated(QT_TRANSLATE_NOOP("AppModel", "The production couldn’t be written: ")) + description;
}

QString noPdfsMessage()
{
    return translated(QT_TRANSLATE_NOOP("AppModel",
                                        "No PDFs there. %1 stamps PDF files; add a folder of PDFs or the "
                                        "PDFs themselves."))
        .arg(displayedName());
}

QString unreadableFoldersMessage(const std::vector<std::filesystem::path> &folders)
{
    if (folders.size() == 1) {
        return translated(QT_TRANSLATE_NOOP("AppModel",
                                            "The folder “%1” couldn’t be read to its end. PDFs in it may be "
                                            "missing from the list."))
            .arg(displayName(standardized(folders.front())));
    }
    return translated(QT_TRANSLATE_NOOP("AppModel", "%1 folders couldn’t be read to their end. PDFs in them "
                                                    "may be missing from the list."))
        .arg(folders.size());
}

} // namespace tallyfold
