#pragma once

#include <QString>
#include <QStringView>
#include <QVersionNumber>

#include <compare>
#include <optional>

namespace tallyfold {

/// A version such as "1.10.2" or "v2.0-beta2". In comparisons, missing parts are 0, and a version with a
/// suffix after a hyphen precedes the release.
class AppVersion {
public:
    /// Version 0.
    AppVersion() = default;

    /// The version in `text`, which has at most 100 characters: an optional "v", 31-bit numbers separated by
    /// dots, and optionally a hyphen followed by letters, digits, dots and hyphens. Nothing for any other
    /// text.
    [[nodiscard]] static std::optional<AppVersion> parse(QStringView text);

    /// The original text without the "v" and surrounding spaces.
    [[nodiscard]] const QString &text() const
    {
        return m_text;
    }

    std::strong_ordering operator<=>(const AppVersion &other) const;
    bool operator==(const AppVersion &other) const
    {
        return std::is_eq(*this <=> other);
    }

private:
    QString m_text = QStringLiteral("0");
    QVersionNumber m_numbers; ///< Without trailing zeros.
    QString m_suffix;         ///< Empty for a release.
};

} // namespace tallyfold
