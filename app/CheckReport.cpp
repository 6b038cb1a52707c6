#include "app/CheckReport.h"

#include "app/CheckText.h"
#include "app/FindingText.h"
#include "core/CSV.h"
#include "core/SourceFile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QFont>
#include <QLocale>
#include <QPageLayout>
#include <QPdfWriter>
#include <QSaveFile>
#include <QStringList>
#include <QTextDocument>

#include <algorithm>
#include <system_error>
#include <vector>

namespace tallyfold {

namespace fs = std::filesystem;

namespace {

/// The least that counts, in pixels: spaced out, letters stand for themselves and are not joined, so that a
/// name is found and copied as it is spelt.
constexpr double leastSpacing = 1.0 / 64;

/// The way to the catalogues.
class Text {
    Q_DECLARE_TR_FUNCTIONS(CheckReport)
};

/// What a report begins with: each row is what it is, and what it reads.
std::vector<QStringList> head(const CheckReport &report)
{
    const Verdict verdict = Verdict::of(report.result.outcome);
    std::vector<QStringList> rows{{Text::tr("Verdict"), verdict.text}};
    if (!verdict.indexed.isEmpty()) {
        rows.push_back({Text::tr("Index"), verdict.indexed});
    }
    for (const fs::path &folder : report.result.folders) {
        rows.push_back({Text::tr("Folder"), displayPath(folder)});
    }
    rows.push_back({Text::tr("Checked"), QLocale().toString(report.result.ended, QLocale::LongFormat)});
    rows.push_back({Text::tr("Program"), report.program});
    return rows;
}

QStringList header()
{
    return {Text::tr("Folder"), Text::tr("File"), Text::tr("Page"), Text::tr("Finding")};
}

QStringList rowOf(const check::Finding &finding, const std::vector<fs::path> &folders)
{
    return {finding.folder < folders.size() ? folderName(folders[finding.folder]) : QString(), finding.file,
            finding.page ? QString::number(*finding.page) : QString(), findingText(finding, folders)};
}

QString htmlRow(const QStringList &cells, const char *tag)
{
    const QLatin1String name(tag);
    QString row = QStringLiteral("<tr>");
    for (const QString &cell : cells) {
        row += QStringLiteral("<%1>%2</%1>").arg(name, cell.toHtmlEscaped());
    }
    return row + QStringLiteral("</tr>\n");
}

QString title()
{
    return Text::tr("Check of a production");
}

/// Whether `path` would lie in one of `folders` itself.
bool liesIn(const std::vector<fs::path> &folders, const fs::path &path)
{
    return std::any_of(folders.begin(), folders.end(), [&path](const fs::path &folder) {
        std::error_code unknown; // Of a folder that is gone: nothing lies in it.
        return fs::equivalent(folder, path.parent_path(), unknown);
    });
}

QByteArray bytesFor(const CheckReport &report, const fs::path &path)
{
    const QString ending = QFile::decodeName(path.extension().c_str()).toLower();
    if (ending == u".csv") {
        return report.csv();
    }
    return ending == u".html" || ending == u".htm" ? report.html().toUtf8() : report.pdf();
}

/// Goes on after a part that was written, so that the reason for the rest not to be is told.
bool writeAll(QSaveFile &file, const QByteArray &bytes)
{
    qint64 written = 0;
    while (written < bytes.size()) {
        const qint64 more = file.write(bytes.constData() + written, bytes.size() - written);
        if (more <= 0) {
            return false;
        }
        written += more;
    }
    return true;
}

} // namespace

QByteArray CheckReport::csv() const
{
    std::vector<QStringList> rows = head(*this);
    rows.push_back({QString()});
    rows.push_back(header());
    for (const check::Finding &finding : result.outcome.findings) {
        rows.push_back(rowOf(finding, result.folders));
    }
    return CSV::text(rows).toUtf8();
}

QString CheckReport::html() const
{
    QString page =
        QStringLiteral("<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>%1</title>\n"
                       "<style>\n"
                       "body { font-family: sans-serif; font-size: 10pt; }\n"
                       "h1 { font-size: 15pt; }\n"
                       "td, th { text-align: left; vertical-align: top; padding: 2pt 8pt 2pt 0; }\n"
                       "</style>\n</head>\n<body>\n<h1>%1</h1>\n<table>\n")
            .arg(title().toHtmlEscaped());
    for (const QStringList &row : head(*this)) {
        page += htmlRow(row, "td");
    }
    page += QStringLiteral("</table>\n");
    if (!result.outcome.findings.empty()) {
        page += QStringLiteral("<p></p>\n<table>\n<thead>") + htmlRow(header(), "th") +
                QStringLiteral("</thead>\n");
        for (const check::Finding &finding : result.outcome.findings) {
            page += htmlRow(rowOf(finding, result.folders), "td");
        }
        page += QStringLiteral("</table>\n");
    }
    return page + QStringLiteral("</body>\n</html>\n");
}

QByteArray CheckReport::pdf() const
{
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QPdfWriter writer(&bytes);
    writer.setTitle(title());
    writer.setCreator(program);
    const bool isLetter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    writer.setPageSize(QPageSize(isLetter ? QPageSize::Letter : QPageSize::A4));
    QTextDocument document;
    QFont font = document.defaultFont();
    font.setLetterSpacing(QFont::AbsoluteSpacing, leastSpacing);
    document.setDefaultFont(font);
    document.setHtml(html());
    document.print(&writer); // Page numbers are its own.
    bytes.close();
    return bytes.data();
}

std::optional<ReportFailure> saveReport(const CheckReport &report, const fs::path &path)
{
    if (liesIn(report.result.folders, path)) {
        return ReportFailure{ReportFailure::Kind::inProduction, {}};
    }
    const QByteArray bytes = bytesFor(report, path);
    QSaveFile file(QFile::decodeName(path.c_str()));
    // Without a buffer: Qt 6.4 takes no notice of what goes wrong when it writes out the last of one.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeAll(file, bytes) ||
        !file.commit()) {
        return ReportFailure{ReportFailure::Kind::notWritten, file.errorString()};
    }
    return std::nullopt;
}

QString reportName(const CheckResult &result)
{
    return Text::tr("Production Check %1").arg(result.ended.date().toString(Qt::ISODate));
}

} // namespace tallyfold
