#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallyfold::check {

/// Where consecutive decimal digits stand in a text: from `start` to before `end`.
struct DigitRun {
    qsizetype start = 0;
    qsizetype end = 0;
    bool operator==(const DigitRun &) const = default;
};

[[nodiscard]] bool isDigit(QChar ch);

/// The longest runs of ASCII digits in `text`, in order.
[[nodiscard]] std::vector<DigitRun> digitRuns(QStringView text);

/// The value of ASCII digits; nothing for more than 18 of them, and for anything else.
[[nodiscard]] std::optional<std::int64_t> numberIn(QStringView digits);

} // namespace tallyfold::check
