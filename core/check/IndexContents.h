#pragma once

#include "core/check/NumberedPages.h"

#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <vector>

namespace tallyfold::check {

/// A copy as the production index tells of it.
struct IndexedCopy {
    std::int64_t row = 0; ///< Of the table, from 1.
    QString source;       ///< Name of the original.
    QString name;         ///< Of the copy.
    QString first;        ///< Its first and last number.
    QString last;
    std::int64_t pages = 0;
    NumberedPages numbers;
    /// Whether the index says of it that no page shows its number.
    bool isCoverOnly = false;
};

/// What a production index tells.
struct IndexContents {
    std::vector<IndexedCopy> copies; ///< In production order.
    std::vector<std::int64_t> rowsNotUnderstood;

    /// Reads the bytes of an index, as it was written or as a spreadsheet program saved it. Without the
    /// header that an index has, row 1 is not understood, and no other is looked at.
    [[nodiscard]] static IndexContents of(QByteArrayView bytes);
};

} // namespace tallyfold::check
