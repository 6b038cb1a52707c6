#include "core/check/IndexContents.h"

#include "core/ProductionIndex.h"
#include "core/check/CsvReader.h"
#include "core/check/DigitRuns.h"

#include <optional>

namespace tallyfold::check {

namespace {

enum Column : qsizetype { source, copy, firstBates, lastBates, pages, status, columns };

/// More pages than a file can have.
constexpr std::int64_t maxPages = 1'000'000'000;

bool isBlank(const QString &field)
{
    return field.trimmed().isEmpty();
}

/// Programs save as many columns as any row has, or leave out those at the end that are empty.
void fit(QStringList &row)
{
    while (row.size() > columns && isBlank(row.last())) {
        row.removeLast();
    }
    while (row.size() < columns) {
        row.append(QString());
    }
}

bool isHeader(const QStringList &row)
{
    const QStringList header = ProductionIndex::indexHeader();
    if (row.size() != header.size()) {
        return false;
    }
    for (qsizetype column = 0; column < columns; ++column) {
        if (row[column].trimmed().compare(header[column], Qt::CaseInsensitive) != 0) {
            return false;
        }
    }
    return true;
}

/// A name in the folder itself: an index may come from anybody, and is to lead nowhere else.
bool isPlainName(const QString &name)
{
    return !name.contains(u'/') && !name.contains(QChar::Null) && name != QStringLiteral(".") &&
           name != QStringLiteral("..");
}

std::optional<IndexedCopy> copyIn(const QStringList &row)
{
    const auto pageCount = numberIn(row[pages].trimmed());
    if (!isPlainName(row[copy]) || !pageCount || *pageCount > maxPages) {
        return std::nullopt;
    }
    auto numbers = NumberedPages::of(row[firstBates], row[lastBates], *pageCount);
    if (!numbers) {
        return std::nullopt;
    }
    return IndexedCopy{0,
                       row[source],
                       row[copy],
                       row[firstBates],
                       row[lastBates],
                       *pageCount,
                       std::move(*numbers),
                       row[status].trimmed() == ProductionIndex::coverOnlyStatus()};
}

} // namespace

IndexContents IndexContents::of(QByteArrayView bytes)
{
    IndexContents contents;
    std::optional<CSV::Reader> table = CSV::Reader::of(bytes);
    std::optional<QStringList> row = table ? table->next() : std::nullopt;
    if (row) {
        fit(*row);
    }
    if (!row || !isHeader(*row)) {
        contents.rowsNotUnderstood.push_back(1);
        return contents;
    }
    while ((row = table->next())) {
        fit(*row);
        const bool isLonger = row->size() > columns;
        if (!isLonger && isBlank((*row)[copy])) {
            continue; // A source without a copy, or nothing at all.
        }
        if (auto indexed = isLonger ? std::nullopt : copyIn(*row)) {
            indexed->row = table->row();
            contents.copies.push_back(std::move(*indexed));
        } else {
            contents.rowsNotUnderstood.push_back(table->row());
        }
    }
    return contents;
}

} // namespace tallyfold::check
