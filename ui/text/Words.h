#pragma once

#include <QCoreApplication>
#include <QString>

namespace tallyfold {

/// The translation of `text`, which is the English text, into the user's language.
inline QString words(const char *text)
{
    return QCoreApplication::translate("Words", text);
}

} // namespace tallyfold
