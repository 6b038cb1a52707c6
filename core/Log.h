#pragma once

#include <QLoggingCategory>

namespace tallyfold {

/// What the core has to say to whoever looks for the cause of a failure: "tallyfold.core", quiet unless
/// QT_LOGGING_RULES asks for it.
Q_DECLARE_LOGGING_CATEGORY(coreLog)

} // namespace tallyfold
