#pragma once

#include "core/ProductionPlan.h"
#include "core/StampSettings.h"

#include <QList>
#include <QString>

#include <optional>

namespace tallyfold {

/// The symbol at the start of a row of the list.
enum class RowSymbol { none, locked, problem };

/// A line of a row below the file name.
struct RowLine {
    /// The kind of line, which determines its look.
    enum class Kind {
        pages,         ///< The number of pages.
        range,         ///< Its numbers, in digits of equal width.
        notStamped,    ///< It is password-protected.
        skipped,       ///< It cannot be read, or is empty.
        coverOnly,     ///< No page is stamped, or there is no copy.
        earlierNumber, ///< It already has a number.
    };
    Kind kind = Kind::pages;
    QString text;
    QString help; ///< Details; may be empty.

    bool operator==(const RowLine &) const = default;
};

/// All texts of a row of the list.
struct RowText {
    RowSymbol symbol = RowSymbol::none;
    QString name;
    QList<RowLine> lines;
    bool hasPasswordHelp = false; ///< Whether it has the button "How to Remove a Password".

    /// The row as one sentence, for screen readers.
    [[nodiscard]] QString spoken() const;
};

/// The row of `file` in a plan with `settings`, which must be normalized.
[[nodiscard]] RowText rowTextOf(const PlannedFile &file, const StampSettings &settings);

} // namespace tallyfold
