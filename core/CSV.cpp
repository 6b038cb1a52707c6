#include "core/CSV.h"

namespace tallyfold::CSV {

namespace {

const QString rowEnd = QStringLiteral("\r\n");

/// Whether a CR LF pair, which counts as one character, begins at `index`.
bool isPair(const QString &field, qsizetype index)
{
    return field[index] == u'\r' && index + 1 < field.size() && field[index + 1] == u'\n';
}

bool needsQuotes(const QString &field)
{
    static const QString special = QStringLiteral(",\"\n\r");
    for (qsizetype index = 0; index < field.size(); ++index) {
        if (isPair(field, index)) {
            ++index;
        } else if (special.contains(field[index])) {
            return true;
        }
    }
    return false;
}

} // namespace

bool needsGuard(const QString &field)
{
    static const QString formulaStarts = QStringLiteral("=+-@\t\r");
    return !field.isEmpty() && formulaStarts.contains(field.front()) && !isPair(field, 0);
}

QString cell(const QString &field)
{
    QString guarded = needsGuard(field) ? u'\'' + field : field;
    if (!needsQuotes(guarded)) {
        return guarded;
    }
    return u'"' + guarded.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString text(std::span<const QStringList> rows)
{
    QString out;
    for (const QStringList &row : rows) {
        for (qsizetype index = 0; index < row.size(); ++index) {
            if (index > 0) {
                out.append(u',');
            }
            out.append(cell(row[index]));
        }
        out.append(rowEnd);
    }
    return rows.empty() ? rowEnd : out;
}

} // namespace tallyfold::CSV
