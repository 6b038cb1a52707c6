#pragma once

#include <QString>
#include <QStringList>

namespace tallyfold::pdf {

/// What the PostScript name of a missing font says about it.
struct FontRequest {
    QStringList families; ///< Possible family names, most likely first.
    int weight = 0;       ///< On fontconfig's scale.
    bool isItalic = false;

    /// "TimesNewRomanPS-BoldItalicMT" asks for a bold italic Times New Roman.
    [[nodiscard]] static FontRequest of(const QString &postScriptName);
};

} // namespace tallyfold::pdf
