#include "core/Log.h"

namespace tallyfold {

Q_LOGGING_CATEGORY(coreLog, "tallyfold.core", QtWarningMsg)

} // namespace tallyfold
