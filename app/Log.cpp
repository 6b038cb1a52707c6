#include "app/Log.h"

namespace tallyfold {

Q_LOGGING_CATEGORY(appLog, "tallyfold.app", QtWarningMsg)

} // namespace tallyfold
