#include "examples/ProductionReport.h"

#include <QDateTime>

#include <array>
#include <variant>

namespace tallyfold::ProductionReport {

namespace {

template <typename List, typename ToValue> QJsonArray arrayOf(const List &list, ToValue toValue)
{
    QJsonArray array;
    for (const auto &item : list) {
        array.append(toValue(item));
    }
    return array;
}

template <typename Value> QJsonValue orNull(const std::optional<Value> &value)
{
    return value ? QJsonValue(*value) : QJsonValue();
}

QJsonValue numberOrNull(const std::optional<std::int64_t> &number)
{
    return number ? QJsonValue(static_cast<qint64>(*number)) : QJsonValue();
}

QJsonValue nameOf(const std::optional<std::filesystem::path> &file)
{
    return file ? QJsonValue(displayName(*file)) : QJsonValue();
}

QJsonObject tagged(const char *tag, const QString &name)
{
    return {{QLatin1StringView(tag), name.isEmpty() ? QJsonValue(true) : QJsonValue(name)}};
}

QJsonObject of(const StampError &error)
{
    constexpr std::array tags{"unreadable", "locked", "encrypted", "cannotWrite", "cancelled"};
    static_assert(tags.size() == std::variant_size_v<StampError::Case>);
    return tagged(tags[error.value.index()], error.name());
}

QJsonObject of(const ProductionConflict &conflict)
{
    switch (conflict.kind) {
    case ProductionConflict::Kind::exists:
        return tagged("exists", conflict.name);
    case ProductionConflict::Kind::duplicate:
        return tagged("duplicate", conflict.name);
    case ProductionConflict::Kind::wouldReplaceOriginal:
        return tagged("wouldReplaceOriginal", conflict.name);
    case ProductionConflict::Kind::nothingToStamp:
        return tagged("nothingToStamp", {});
    case ProductionConflict::Kind::folderMissing:
        break;
    }
    return tagged("folderMissing", {});
}

/// In the form of ISO 8601; null for the distant past and what else no calendar has.
QJsonValue dateOf(const FileDate &date)
{
    const QDateTime second =
        date == distantPast() ? QDateTime() : QDateTime::fromSecsSinceEpoch(date.seconds, Qt::UTC);
    if (!second.isValid()) {
        return {};
    }
    return second.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.")) +
           QString::number(date.nanoseconds).rightJustified(9, u'0') + u'Z';
}

QJsonArray namesOf(const std::vector<std::filesystem::path> &files)
{
    return arrayOf(files, [](const std::filesystem::path &file) { return QJsonValue(displayName(file)); });
}

QJsonArray namesOf(const std::vector<const PlannedFile *> &files)
{
    return arrayOf(files, [](const PlannedFile *file) { return QJsonValue(file->outputName); });
}

QJsonObject of(const PlannedFile &file, const BatesFormatter &bates)
{
    const auto formatted = [&bates](const std::optional<std::int64_t> &number) {
        return number ? QJsonValue(bates(*number)) : QJsonValue();
    };
    return {{QStringLiteral("source"), file.source.name},
            {QStringLiteral("outputName"), file.outputName},
            {QStringLiteral("first"), formatted(file.firstNumber())},
            {QStringLiteral("last"), formatted(file.lastNumber())},
            {QStringLiteral("pages"), arrayOf(file.pages, [](const PlannedPage &page) {
                 return QJsonObject{{QStringLiteral("number"), numberOrNull(page.number)},
                                    {QStringLiteral("stamped"), page.stamped}};
             })}};
}

} // namespace

QJsonObject of(const ProductionResult &result)
{
    QJsonObject failures;
    for (const auto &[name, error] : result.failures.asKeyValueRange()) {
        failures.insert(name, of(error));
    }
    return {{QStringLiteral("written"), namesOf(result.written)},
            {QStringLiteral("index"), nameOf(result.index)},
            {QStringLiteral("privilegeLog"), nameOf(result.privilegeLog)},
            {QStringLiteral("pages"), static_cast<qint64>(result.pages)},
            {QStringLiteral("failures"), failures}};
}

QJsonObject of(const ProductionError &error)
{
    if (const auto *found = std::get_if<ProductionError::Conflicts>(&error.value)) {
        return {{QStringLiteral("conflicts"),
                 arrayOf(found->conflicts, [](const ProductionConflict &conflict) { return of(conflict); })}};
    }
    const auto &stopped = std::get<ProductionError::Cancelled>(error.value);
    return {
        {QStringLiteral("cancelled"), QJsonObject{{QStringLiteral("written"), namesOf(stopped.written)}}}};
}

QJsonObject of(const ProductionPlan &plan)
{
    const BatesFormatter bates(plan.settings);
    const std::optional<PasswordNotice> notice = plan.passwordNotice();
    QJsonValue noticeValue;
    if (notice) {
        noticeValue = QJsonObject{{QStringLiteral("names"), QJsonArray::fromStringList(notice->names)},
                                  {QStringLiteral("nothingElseToStamp"), notice->nothingElseToStamp}};
    }
    return {{QStringLiteral("files"),
             arrayOf(plan.files, [&](const PlannedFile &file) { return of(file, bates); })},
            {QStringLiteral("stampedFiles"), namesOf(plan.stampedFiles())},
            {QStringLiteral("coverOnlyFiles"), namesOf(plan.coverOnlyFiles())},
            {QStringLiteral("skippedFiles"), namesOf(plan.skippedFiles())},
            {QStringLiteral("passwordProtectedFiles"), namesOf(plan.passwordProtectedFiles())},
            {QStringLiteral("firstNumber"), numberOrNull(plan.firstNumber())},
            {QStringLiteral("lastNumber"), numberOrNull(plan.lastNumber())},
            {QStringLiteral("nextNumber"), static_cast<qint64>(plan.nextNumber())},
            {QStringLiteral("rangeText"), orNull(plan.rangeText())},
            {QStringLiteral("digitsNeeded"), static_cast<qint64>(plan.digitsNeeded())},
            {QStringLiteral("outgrowsDigits"), plan.outgrowsDigits()},
            {QStringLiteral("duplicateOutputNames"), QJsonArray::fromStringList(plan.duplicateOutputNames())},
            {QStringLiteral("passwordNotice"), noticeValue}};
}

QJsonArray of(const std::vector<SourceFile> &sources)
{
    return arrayOf(sources, [](const SourceFile &source) {
        const std::string &url = source.url.native();
        return QJsonObject{
            {QStringLiteral("id"), source.id.toString(QUuid::WithoutBraces)},
            {QStringLiteral("url"), QString::fromUtf8(url.data(), static_cast<qsizetype>(url.size()))},
            {QStringLiteral("name"), source.name},
            {QStringLiteral("pageCount"), static_cast<qint64>(source.pageCount)},
            {QStringLiteral("modified"), dateOf(source.modified)},
            {QStringLiteral("problem"), source.problem ? QJsonValue(keyOf(*source.problem)) : QJsonValue()},
            {QStringLiteral("existingBates"), orNull(source.existingBates)}};
    });
}

} // namespace tallyfold::ProductionReport
