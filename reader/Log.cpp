#include "reader/Log.h"

namespace tallyfold::reader {

Q_LOGGING_CATEGORY(readerLog, "tallyfold.reader", QtWarningMsg)

} // namespace tallyfold::reader
