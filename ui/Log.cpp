#include "ui/Log.h"

namespace tallyfold {

Q_LOGGING_CATEGORY(uiLog, "tallyfold.ui", QtWarningMsg)

} // namespace tallyfold
