#pragma once

#include <QDBusError>

namespace tallyfold {

/// Logs that `what`, which went over the session's bus, failed with `error`: its name, for its text may name
/// files.
void logBusFailure(const char *what, const QDBusError &error);

} // namespace tallyfold
