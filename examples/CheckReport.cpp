#include "examples/CheckReport.h"

#include "core/SourceFile.h"

#include <QJsonArray>

#include <variant>

namespace tallyfold::CheckReport {

namespace {

using namespace Qt::StringLiterals;

QString messageOf(const std::error_code &error)
{
    return QString::fromStdString(error.message());
}

/// The entries of a finding of each kind.
struct Entries {
    QJsonObject operator()(const check::CopyMissing &) const
    {
        return {{u"kind"_s, u"copyMissing"_s}};
    }
    QJsonObject operator()(const check::CopyUnreadable &) const
    {
        return {{u"kind"_s, u"copyUnreadable"_s}};
    }
    QJsonObject operator()(const check::PageCountDiffers &finding) const
    {
        return {{u"kind"_s, u"pageCountDiffers"_s},
                {u"inIndex"_s, qint64(finding.inIndex)},
                {u"inCopy"_s, qint64(finding.inCopy)}};
    }
    QJsonObject operator()(const check::NumberMissing &finding) const
    {
        return {{u"kind"_s, u"numberMissing"_s}, {u"number"_s, finding.number}};
    }
    QJsonObject operator()(const check::OtherNumber &finding) const
    {
        return {{u"kind"_s, u"otherNumber"_s}, {u"number"_s, finding.number}, {u"found"_s, finding.found}};
    }
    QJsonObject operator()(const check::PageNotChecked &) const
    {
        return {{u"kind"_s, u"pageNotChecked"_s}};
    }
    QJsonObject operator()(const check::NumbersTooShort &) const
    {
        return {{u"kind"_s, u"numbersTooShort"_s}};
    }
    QJsonObject operator()(const check::NumberGap &finding) const
    {
        return {{u"kind"_s, u"numberGap"_s}, {u"first"_s, finding.first}, {u"last"_s, finding.last}};
    }
    QJsonObject operator()(const check::NumberTwice &finding) const
    {
        return {{u"kind"_s, u"numberTwice"_s},
                {u"first"_s, finding.first},
                {u"last"_s, finding.last},
                {u"otherFolder"_s, qint64(finding.otherFolder)},
                {u"otherCopy"_s, finding.otherCopy}};
    }
    QJsonObject operator()(const check::NotInIndex &) const
    {
        return {{u"kind"_s, u"notInIndex"_s}};
    }
    QJsonObject operator()(const check::Leftover &) const
    {
        return {{u"kind"_s, u"leftover"_s}};
    }
    QJsonObject operator()(const check::FolderUnreadable &finding) const
    {
        return {{u"kind"_s, u"folderUnreadable"_s}, {u"error"_s, messageOf(finding.error)}};
    }
    QJsonObject operator()(const check::IndexMissing &) const
    {
        return {{u"kind"_s, u"indexMissing"_s}};
    }
    QJsonObject operator()(const check::IndexUnreadable &finding) const
    {
        return {{u"kind"_s, u"indexUnreadable"_s}, {u"error"_s, messageOf(finding.error)}};
    }
    QJsonObject operator()(const check::RowNotUnderstood &finding) const
    {
        return {{u"kind"_s, u"rowNotUnderstood"_s}, {u"row"_s, qint64(finding.row)}};
    }
    QJsonObject operator()(const check::CoversWithoutNumber &finding) const
    {
        return {{u"kind"_s, u"coversWithoutNumber"_s}, {u"copies"_s, qint64(finding.copies)}};
    }
    QJsonObject operator()(const check::Changed &) const
    {
        return {{u"kind"_s, u"changed"_s}};
    }
    QJsonObject operator()(const check::NotInHashList &) const
    {
        return {{u"kind"_s, u"notInHashList"_s}};
    }
    QJsonObject operator()(const check::HashListNotUnderstood &finding) const
    {
        return {{u"kind"_s, u"hashListNotUnderstood"_s}, {u"line"_s, qint64(finding.line)}};
    }
};

} // namespace

QJsonObject of(const check::Outcome &outcome, std::span<const std::filesystem::path> folders)
{
    QJsonArray findings;
    for (const check::Finding &finding : outcome.findings) {
        QJsonObject entry = std::visit(Entries(), finding.what);
        entry.insert(u"folder"_s, displayPath(folders[finding.folder]));
        entry.insert(u"file"_s, finding.file);
        if (finding.page) {
            entry.insert(u"page"_s, qint64(*finding.page));
        }
        findings.append(entry);
    }
    QJsonArray numbers;
    for (const check::NumberSeries::Run &run : outcome.numbers) {
        numbers.append(
            QJsonObject{{u"first"_s, run.first}, {u"last"_s, run.last}, {u"count"_s, qint64(run.count)}});
    }
    return {{u"isWhole"_s, outcome.isWhole()},
            {u"copies"_s, qint64(outcome.copies)},
            {u"pages"_s, qint64(outcome.pages)},
            {u"numbers"_s, numbers},
            {u"findings"_s, findings}};
}

QJsonObject of(const check::HashesWritten &written)
{
    const auto names = [](const std::vector<QString> &list) {
        return QJsonArray::fromStringList(QStringList(list.begin(), list.end()));
    };
    return {{u"files"_s, qint64(written.files)},
            {u"missingOriginals"_s, names(written.missingOriginals)},
            {u"ambiguousOriginals"_s, names(written.ambiguousOriginals)}};
}

} // namespace tallyfold::CheckReport
