#pragma once

#include "core/ProductionPlan.h"
#include "core/StampSettings.h"

#include <QList>
#include <QString>

#include <optional>

namespace tallyfold {

/// The symbol that leads a row of the list.
enum class RowSymbol { none, locked, problem };

/// A line of a row under the file's name.
struct RowLine {
    /// What a line is, and so how it looks.
    enum class Kind {
        pages,         ///< How many pages the file has.
        range,         ///< Its numbers; digits of one width.
        notStamped,    ///< It is password-protected.
        skipped,       ///< It cannot be read, or is empty.
        coverOnly,     ///< There is nothing to be seen of a stamp, or no copy at all.
        earlierNumber, ///< It bears a number already.
    };
    Kind kind = Kind::pages;
    QString text;
    QString help; ///< More about it; may be empty.

    bool operator==(const RowLine &) const = default;
};

/// All that a row of the list says of a file.
struct RowText {
    RowSymbol symbol = RowSymbol::none;
    QString name;
    QList<RowLine> lines;
    bool hasPasswordHelp = false; ///< Whether it has the button "How to Remove a Password".

    /// The row as one sentence, for those who listen to it.
    [[nodiscard]] QString spoken() const;
};

/// What is said of `file` of a plan with `settings` (normalised).
[[nodiscard]] RowText rowTextOf(const PlannedFile &file, const StampSettings &settings);

} // namespace tallyfold
