#pragma once

#include <QString>
#include <QStringList>

namespace tallyfold::pdf {

/// What a PostScript name says of a font that is not installed.
struct FontRequest {
    QStringList families; ///< What its family may be called, most likely first.
    int weight = 0;       ///< On fontconfig's scale.
    bool isItalic = false;

    /// "TimesNewRomanPS-BoldItalicMT" asks for a bold italic Times New Roman.
    [[nodiscard]] static FontRequest of(const QString &postScriptName);
};

} // namespace tallyfold::pdf
