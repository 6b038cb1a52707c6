#pragma once

#include <QCoreApplication>
#include <QString>

namespace tallyfold {

/// The text for the key `text` in the user's words; the key is the English text.
inline QString words(const char *text)
{
    return QCoreApplication::translate("Words", text);
}

} // namespace tallyfold
