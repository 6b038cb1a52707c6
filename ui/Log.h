#pragma once

#include <QLoggingCategory>

namespace tallyfold {

/// Causes of failures in the windows and between the program and its desktop: "tallyfold.ui", quiet unless
/// QT_LOGGING_RULES asks for it.
Q_DECLARE_LOGGING_CATEGORY(uiLog)

} // namespace tallyfold
