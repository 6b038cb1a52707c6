#include "ui/desktop/BusLog.h"

#include "ui/Log.h"

namespace tallyfold {

void logBusFailure(const char *what, const QDBusError &error)
{
    qCInfo(uiLog) << what << "failed:" << qUtf8Printable(error.name());
}

} // namespace tallyfold
