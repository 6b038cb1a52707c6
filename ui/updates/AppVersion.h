#pragma once

#include <QString>
#include <QStringView>

#include <compare>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tallyfold {

/// A version such as "1.10.2" or "v2.0-beta2". Compared by what it means: missing parts are 0, and what comes
/// after a hyphen is before the release.
class AppVersion {
public:
    /// Version 0.
    AppVersion() = default;

    /// The version that `text` writes: numbers of any length with dots between them, perhaps a "v" before
    /// them, perhaps a hyphen with letters, digits, dots and hyphens after them. Nothing when it is no such
    /// text.
    [[nodiscard]] static std::optional<AppVersion> parse(QStringView text);

    /// As it was written, without the "v" and space around it.
    [[nodiscard]] const QString &text() const;

    std::strong_ordering operator<=>(const AppVersion &other) const;
    bool operator==(const AppVersion &other) const;

private:
    /// How many digits a number has without leading zeros, and which: the longer one is the larger one.
    using Number = std::pair<std::size_t, std::string>;
    /// A piece of what comes after the hyphen. Numbers are before words.
    using Piece = std::variant<Number, std::string>;

    [[nodiscard]] static Number number(const std::string &digits);
    [[nodiscard]] static std::optional<std::vector<Number>> numbers(const std::string &text);
    [[nodiscard]] static std::optional<std::vector<Piece>> pieces(const std::string &text);

    QString m_text = QStringLiteral("0");
    std::vector<Number> m_numbers; ///< The last one is not 0.
    bool m_isRelease = true;
    std::vector<Piece> m_pieces;
};

} // namespace tallyfold
