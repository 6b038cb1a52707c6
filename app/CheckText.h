#pragma once

#include "core/check/ProductionCheck.h"

#include <QString>

#include <vector>

namespace tallyfold {

/// What is said of the whole of a check.
struct Verdict {
    enum class Kind {
        whole,
        wholeAsChecked, ///< Nothing is wrong with what could be looked at; not everything could.
        notWhole,
        stopped, ///< Before everything was looked at.
        nothing, ///< No copy is named anywhere, so that there was nothing to look at.
    };

    Kind kind = Kind::nothing;
    QString text;    ///< One or two sentences.
    QString indexed; ///< What the indexes name; empty when `text` says that, and when they name nothing.

    [[nodiscard]] static Verdict of(const check::Outcome &outcome);

    bool operator==(const Verdict &) const = default;
};

/// First to last number of each series, such as "ABC000001 – ABC000120"; the first few of very many.
[[nodiscard]] QString numbersText(const std::vector<check::NumberSeries::Run> &numbers);

/// "Reading “a.pdf”", or that the indexes are read before any copy is.
[[nodiscard]] QString readingText(const check::Progress &progress);
/// "120 of 40,212 pages"; empty while it is not known of how many.
[[nodiscard]] QString pagesText(const check::Progress &progress);

} // namespace tallyfold
