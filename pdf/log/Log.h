#pragma once

#include <QLoggingCategory>

namespace tallyfold::pdf {

/// Causes of failures in this layer: "tallyfold.pdf", quiet unless QT_LOGGING_RULES asks for it. Messages
/// carry neither names nor contents of documents.
Q_DECLARE_LOGGING_CATEGORY(pdfLog)

} // namespace tallyfold::pdf
