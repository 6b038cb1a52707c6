#pragma once

#include <QLoggingCategory>

namespace tallyfold {

/// Causes of failures in the model and what it stores: "tallyfold.app", quiet unless QT_LOGGING_RULES asks
/// for it.
Q_DECLARE_LOGGING_CATEGORY(appLog)

} // namespace tallyfold
