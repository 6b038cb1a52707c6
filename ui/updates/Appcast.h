#pragma once

#include "ui/updates/AppcastFault.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <variant>
#include <vector>

namespace tallyfold {

/// A release as an appcast announces it. What is not told is empty.
struct AppcastItem {
    QString title;
    QString version;      ///< What the feed compares, often the number of a build.
    QString shortVersion; ///< What users call it.
    QUrl link;            ///< Where to read of it or to get it; always https.
    QString notes;        ///< Plain text.
    QString os;           ///< What it runs on, such as "linux".

    bool operator==(const AppcastItem &) const = default;
};

/// The most releases a feed may tell of.
inline constexpr std::size_t mostAppcastItems = 500;
/// How deep its elements may lie in one another.
inline constexpr int deepestAppcastElement = 32;
/// The most UTF-16 units of a short text, such as a title.
inline constexpr qsizetype longestAppcastText = 2'000;
/// The same for a description, which is cut there.
inline constexpr qsizetype longestAppcastNotes = 100'000;

/// The releases in the feed `bytes`, in its order: RSS 2.0 in UTF-8 with what Sparkle adds to it. Text and
/// version of an item are taken from its elements, and from its first enclosure where it has no such element.
/// Releases of a channel that users have to ask for are left out. Any bytes will do, no entities but the five
/// of XML are known, and nothing is ever loaded.
[[nodiscard]] std::variant<std::vector<AppcastItem>, AppcastFault> parseAppcast(const QByteArray &bytes);

} // namespace tallyfold
