#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace tallyfold::CSV {

/// Reads the rows of a table as `text` writes it, and as spreadsheet programs save it again: with a byte
/// order mark, LF or CR at the ends of rows, every field quoted, a semicolon or tab in the place of the
/// comma, a first line that names it ("sep=;"). Which one separates is told from the first row.
class Reader {
public:
    /// `bytes` are UTF-8; nothing when they are not.
    [[nodiscard]] static std::optional<Reader> of(QByteArrayView bytes);

    /// The fields of the next row, without the apostrophe that guards them against being read as formulas;
    /// nothing behind the last one. An empty line is a row of one empty field.
    [[nodiscard]] std::optional<QStringList> next();

    /// The number of the row that `next` gave last, from 1, as a spreadsheet counts it.
    [[nodiscard]] std::int64_t row() const;

private:
    explicit Reader(QString text);
    [[nodiscard]] QString field();
    [[nodiscard]] bool takeRowEnd();

    QString m_text;
    qsizetype m_place = 0;
    std::int64_t m_row = 0;
    QChar m_separator = u',';
};

/// `field` without the guard that `cell` puts in front of a field that a spreadsheet would take for a
/// formula.
[[nodiscard]] QString withoutGuard(const QString &field);

} // namespace tallyfold::CSV
