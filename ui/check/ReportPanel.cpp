#include "ui/check/ReportPanel.h"

#include "ui/text/Words.h"

#include <QFile>
#include <QFileDialog>
#include <QStringList>

namespace tallyfold {

namespace {

/// A kind of report: its ending, and the filter that stands for it.
struct Format {
    QString ending;
    QString filter;
};

QList<Format> formats()
{
    return {{QStringLiteral("pdf"), words(QT_TRANSLATE_NOOP("Words", "PDF (*.pdf)"))},
            {QStringLiteral("html"), words(QT_TRANSLATE_NOOP("Words", "Web page (*.html *.htm)"))},
            {QStringLiteral("csv"), words(QT_TRANSLATE_NOOP("Words", "Table (*.csv)"))}};
}

} // namespace

std::optional<std::filesystem::path> askForReport(const std::filesystem::path &folder, const QString &name,
                                                  QWidget *window)
{
    QFileDialog dialog(window, words(QT_TRANSLATE_NOOP("Words", "Save Report")),
                       QFile::decodeName(folder.c_str()));
    dialog.setObjectName(QStringLiteral("reportPanel"));
    dialog.setAcceptMode(QFileDialog::AcceptSave); // Which asks before a file is replaced.
    QStringList filters;
    for (const Format &format : formats()) {
        filters.append(format.filter);
    }
    dialog.setNameFilters(filters);
    const auto endAs = [&dialog](const QString &filter) {
        for (const Format &format : formats()) {
            if (format.filter == filter) {
                dialog.setDefaultSuffix(format.ending);
            }
        }
    };
    endAs(filters.constFirst());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, endAs);
    dialog.selectFile(name);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().size() != 1) {
        return std::nullopt;
    }
    return QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
}

} // namespace tallyfold
