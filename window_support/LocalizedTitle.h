#pragma once

#include <QString>
#include <QStringList>

namespace tallyfold {

/// The language the application runs in: the first of `preferred` (the user's languages, BCP 47, best first)
/// that is among `available` (the application's), by its language alone where it has no better match; the
/// first of `available` when none is. Where that is "Base", or nothing is available, the user's first, and
/// "Base" when there is none either.
[[nodiscard]] QString applicationLanguage(const QStringList &available, const QStringList &preferred);

/// `title` in `language` from this module's own tables; as it is where they have no such language or title.
[[nodiscard]] QString localizedTitle(const QString &title, const QString &language);

} // namespace tallyfold
