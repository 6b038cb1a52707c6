#include "app/CountText.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <limits>

namespace tallyfold {

namespace {

const char *keyOf(Counted counted)
{
    switch (counted) {
    case Counted::files:
        return QT_TRANSLATE_N_NOOP("CountText", "%lld files");
    case Counted::pages:
        return QT_TRANSLATE_N_NOOP("CountText", "%lld pages");
    case Counted::copies:
        return QT_TRANSLATE_N_NOOP("CountText", "%lld copies");
    case Counted::findings:
        return QT_TRANSLATE_N_NOOP("CountText", "%lld findings");
    case Counted::stampedCopies:
        break;
    }
    return QT_TRANSLATE_N_NOOP("CountText", "%lld stamped copies");
}

} // namespace

QString countText(std::int64_t count, Counted counted)
{
    // The int only selects the plural form, which is the same for all large counts.
    const auto forPlural = static_cast<int>(std::min<std::int64_t>(count, std::numeric_limits<int>::max()));
    return QCoreApplication::translate("CountText", keyOf(counted), nullptr, forPlural)
        .replace(QStringLiteral("%lld"), QLocale().toString(static_cast<qlonglong>(count)));
}

} // namespace tallyfold
