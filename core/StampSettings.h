#pragma once

#include "core/StampColor.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>

namespace tallyfold {

/// The six positions of a stamp line on a page.
enum class StampPosition { topLeft, topCenter, topRight, bottomLeft, bottomCenter, bottomRight };

/// How the first page of every file is treated.
enum class CoverOption {
    stampAll,       ///< Like every other page.
    skipKeepNumber, ///< Counted but not stamped: it uses up a number.
    skipNoNumber,   ///< Neither counted nor stamped: numbering starts on page 2.
};

/// The order in which files are numbered.
enum class FileOrder {
    name,     ///< Natural order of the names.
    modified, ///< Oldest modification first.
    manual,   ///< As the user listed them.
};

/// How a stamped copy is named.
enum class OutputNaming {
    original,         ///< Like its source.
    batesFirst,       ///< By its first number.
    batesRange,       ///< By its first and last number.
    batesAndOriginal, ///< By its first number, then like its source.
};

/// A case of a stored enumeration and its stored text.
template <typename Case> struct StoredCase {
    Case value;
    const char *key;
};

inline constexpr std::array<StoredCase<StampPosition>, 6> stampPositionKeys{
    {{StampPosition::topLeft, "topLeft"},
     {StampPosition::topCenter, "topCenter"},
     {StampPosition::topRight, "topRight"},
     {StampPosition::bottomLeft, "bottomLeft"},
     {StampPosition::bottomCenter, "bottomCenter"},
     {StampPosition::bottomRight, "bottomRight"}}};

inline constexpr std::array<StoredCase<CoverOption>, 3> coverOptionKeys{
    {{CoverOption::stampAll, "stampAll"},
     {CoverOption::skipKeepNumber, "skipKeepNumber"},
     {CoverOption::skipNoNumber, "skipNoNumber"}}};

inline constexpr std::array<StoredCase<FileOrder>, 3> fileOrderKeys{
    {{FileOrder::name, "name"}, {FileOrder::modified, "modified"}, {FileOrder::manual, "manual"}}};

inline constexpr std::array<StoredCase<OutputNaming>, 4> outputNamingKeys{
    {{OutputNaming::original, "original"},
     {OutputNaming::batesFirst, "batesFirst"},
     {OutputNaming::batesRange, "batesRange"},
     {OutputNaming::batesAndOriginal, "batesAndOriginal"}}};

/// The cases of the enumeration; the argument only selects the overload.
constexpr const auto &storedCases(StampPosition /*any*/)
{
    return stampPositionKeys;
}
constexpr const auto &storedCases(CoverOption /*any*/)
{
    return coverOptionKeys;
}
constexpr const auto &storedCases(FileOrder /*any*/)
{
    return fileOrderKeys;
}
constexpr const auto &storedCases(OutputNaming /*any*/)
{
    return outputNamingKeys;
}

/// All positions, the top row first, each row from left to right.
inline constexpr std::array<StampPosition, 6> allStampPositions{
    StampPosition::topLeft,    StampPosition::topCenter,    StampPosition::topRight,
    StampPosition::bottomLeft, StampPosition::bottomCenter, StampPosition::bottomRight};

/// Whether the position is in the top row.
[[nodiscard]] constexpr bool isTop(StampPosition position)
{
    return position == StampPosition::topLeft || position == StampPosition::topCenter ||
           position == StampPosition::topRight;
}

class NormalizedSettings;

/// A closed range of values.
template <typename Value> struct ClosedRange {
    Value lowest;
    Value highest;
};

/// How a production is numbered and stamped. A plain value; code that produces output uses `normalized()`.
/// A new field is listed in `forEachField` as well.
struct StampSettings {
    static constexpr ClosedRange<std::int64_t> digitRange{1, 12};
    static constexpr ClosedRange<double> marginRange{0.0, 144.0};  ///< Points.
    static constexpr ClosedRange<double> fontSizeRange{4.0, 72.0}; ///< Points.
    static constexpr std::int64_t maxStart = 999'999'999;

    QString prefix = QStringLiteral("ABC"); ///< Before the number.
    std::int64_t digits = 6;                ///< Minimum width of the number, padded with zeros.
    std::int64_t startNumber = 1;           ///< Number of the first counted page.
    QString suffix;                         ///< After the number.
    StampPosition batesPosition = StampPosition::bottomRight;
    double margin = 18.0;                           ///< Points from the page edges to the text.
    QString fontName = QStringLiteral("Helvetica"); ///< PostScript name.
    double fontSize = 10.0;                         ///< Points.
    StampColor color = {0, 0, 0, 1};                ///< Of the text of all lines.
    bool background = true;                         ///< A white box behind every line.
    QString legend;                                 ///< For example a confidentiality legend; empty for none.
    StampPosition legendPosition = StampPosition::bottomLeft;
    bool pageOfTotal = false; ///< Adds a "page X of Y" line.
    QString pageOfTotalFormat = QStringLiteral("Page {page} of {total}");
    StampPosition pageOfTotalPosition = StampPosition::bottomCenter;
    CoverOption cover = CoverOption::stampAll;
    FileOrder order = FileOrder::name;
    OutputNaming naming = OutputNaming::original;

    bool operator==(const StampSettings &) const = default;

    /// The same settings with every value within its limits: numbers clamped, line breaks in texts replaced
    /// by spaces, texts truncated to a number of user-perceived characters.
    [[nodiscard]] NormalizedSettings normalized() const;

    /// The Bates number for `number`: prefix, the number with leading zeros (never truncated), suffix.
    /// A negative number counts as 0.
    [[nodiscard]] QString bates(std::int64_t number) const;

    /// The "page X of Y" line: `pageOfTotalFormat` with every "{page}", then every "{total}" replaced.
    [[nodiscard]] QString pageLabel(std::int64_t page, std::int64_t total) const;

    /// The defaults.
    [[nodiscard]] static StampSettings standard();
    /// The defaults with `legend`, in the red of the confidential preset.
    [[nodiscard]] static StampSettings confidential(const QString &legend);
    /// For exhibits: "EX-0001" at the top right, "Page X of Y" below, copies named by number and original
    /// name.
    [[nodiscard]] static StampSettings exhibits();
};

/// Calls `visit` with the stored key of every field and a pointer to the member, in the order in which they
/// are stored. Reading, writing, hashing and the tests of all fields use this list.
template <typename Visit> void forEachField(const Visit &visit)
{
    visit("prefix", &StampSettings::prefix);
    visit("digits", &StampSettings::digits);
    visit("startNumber", &StampSettings::startNumber);
    visit("suffix", &StampSettings::suffix);
    visit("batesPosition", &StampSettings::batesPosition);
    visit("margin", &StampSettings::margin);
    visit("fontName", &StampSettings::fontName);
    visit("fontSize", &StampSettings::fontSize);
    visit("color", &StampSettings::color);
    visit("background", &StampSettings::background);
    visit("legend", &StampSettings::legend);
    visit("legendPosition", &StampSettings::legendPosition);
    visit("pageOfTotal", &StampSettings::pageOfTotal);
    visit("pageOfTotalFormat", &StampSettings::pageOfTotalFormat);
    visit("pageOfTotalPosition", &StampSettings::pageOfTotalPosition);
    visit("cover", &StampSettings::cover);
    visit("order", &StampSettings::order);
    visit("naming", &StampSettings::naming);
}

/// Equal for equal settings.
[[nodiscard]] std::size_t hashValue(const StampSettings &settings);

} // namespace tallyfold
