#pragma once

#include <QString>
#include <QStringView>
#include <QVersionNumber>

#include <compare>
#include <optional>

namespace tallyfold {

/// A version such as "1.10.2" or "v2.0-beta2". Compared by what it means: missing parts are 0, and what has a
/// suffix after a hyphen comes before the release.
class AppVersion {
public:
    /// Version 0.
    AppVersion() = default;

    /// The version that `text` writes in at most 100 characters: numbers of 31 bits with dots between them,
    /// perhaps a "v" before them, perhaps a hyphen with letters, digits, dots and hyphens after them. Nothing
    /// when it is no such text.
    [[nodiscard]] static std::optional<AppVersion> parse(QStringView text);

    /// As it was written, without the "v" and space around it.
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
    QVersionNumber m_numbers; ///< The last one is not 0.
    QString m_suffix;         ///< Empty for a release.
};

} // namespace tallyfold
