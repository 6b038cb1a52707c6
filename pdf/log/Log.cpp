#include "pdf/log/Log.h"

namespace tallyfold::pdf {

Q_LOGGING_CATEGORY(pdfLog, "tallyfold.pdf", QtWarningMsg)

} // namespace tallyfold::pdf
