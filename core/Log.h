#pragma once

#include <QLoggingCategory>

namespace tallyfold {

/// Causes of failures in this layer: "tallyfold.core", quiet unless QT_LOGGING_RULES asks for it.
Q_DECLARE_LOGGING_CATEGORY(coreLog)

} // namespace tallyfold
