#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace tallyfold::tests {

/// Asks for all that a category of ours has to say.
inline const QString everything = QStringLiteral("tallyfold.*=true");
/// The logging rules of a program that nobody asks.
inline const QString nothingAsked;

/// The messages that `work` logs where `rules` are those of logging, each as "category: message".
[[nodiscard]] QStringList heard(const QString &rules, const std::function<void()> &work);

} // namespace tallyfold::tests
