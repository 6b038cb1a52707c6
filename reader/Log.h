#pragma once

#include <QLoggingCategory>

namespace tallyfold::reader {

/// Causes of failures in the reader process: "tallyfold.reader", quiet unless QT_LOGGING_RULES asks for it.
/// Messages go to the standard error of the program that started it, as far as that is no file: the limits of
/// the reader forbid writing to one.
Q_DECLARE_LOGGING_CATEGORY(readerLog)

} // namespace tallyfold::reader
