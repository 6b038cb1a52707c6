#include "core/ProductionIndex.h"

#include "core/CSV.h"

#include <vector>

namespace tallyfold::ProductionIndex {

namespace {

QString numberText(const std::optional<std::int64_t> &number, const BatesFormatter &bates)
{
    return number ? bates(*number) : QString();
}

/// The row of a file without a copy.
QStringList rowWithoutCopy(const SourceFile &source, const QString &status)
{
    return {source.name, {}, {}, {}, QString::number(source.pageCount), status};
}

QStringList indexRow(const PlannedFile &file, const QSet<QString> &failures, const BatesFormatter &bates)
{
    const SourceFile &source = file.source;
    if (const std::optional<QString> status = skippedStatus(file)) {
        return rowWithoutCopy(source, *status);
    }
    if (failures.contains(source.name)) {
        return rowWithoutCopy(source, QStringLiteral("failed"));
    }
    return {source.name,
            file.outputName,
            numberText(file.firstNumber(), bates),
            numberText(file.lastNumber(), bates),
            QString::number(file.pages.size()),
            file.isCoverOnly() ? coverOnlyStatus() : QStringLiteral("stamped")};
}

} // namespace

QString coverOnlyStatus()
{
    return QStringLiteral("copied: cover page only, number not shown");
}

std::optional<QString> skippedStatus(const PlannedFile &file)
{
    if (file.source.problem) {
        return indexStatus(*file.source.problem);
    }
    if (file.source.pageCount < 1 || file.isSkipped()) {
        return QStringLiteral("skipped: cover page only, no number");
    }
    return std::nullopt;
}

QStringList indexHeader()
{
    return {QStringLiteral("File"),       QStringLiteral("Stamped Copy"), QStringLiteral("First Bates"),
            QStringLiteral("Last Bates"), QStringLiteral("Pages"),        QStringLiteral("Status")};
}

QStringList privilegeLogHeader()
{
    return {QStringLiteral("Bates Begin"),        QStringLiteral("Bates End"),   QStringLiteral("Date"),
            QStringLiteral("Document Type"),      QStringLiteral("Author"),      QStringLiteral("Recipients"),
            QStringLiteral("Privilege Asserted"), QStringLiteral("Description"), QStringLiteral("File")};
}

QString csv(const ProductionPlan &plan, const QSet<QString> &failures)
{
    const BatesFormatter bates(plan.settings);
    std::vector<QStringList> rows{indexHeader()};
    for (const PlannedFile &file : plan.files) {
        rows.push_back(indexRow(file, failures, bates));
    }
    return CSV::text(rows);
}

QString privilegeLog(const ProductionPlan &plan, const QSet<QString> &failures)
{
    const BatesFormatter bates(plan.settings);
    std::vector<QStringList> rows{privilegeLogHeader()};
    for (const PlannedFile *file : plan.stampedFiles()) {
        if (!failures.contains(file->source.name)) {
            rows.push_back({numberText(file->firstNumber(), bates),
                            numberText(file->lastNumber(), bates),
                            {},
                            {},
                            {},
                            {},
                            {},
                            {},
                            file->outputName});
        }
    }
    return CSV::text(rows);
}

} // namespace tallyfold::ProductionIndex
