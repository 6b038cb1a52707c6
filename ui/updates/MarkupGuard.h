#pragma once

#include "ui/updates/AppcastFault.h"

#include <QStringView>

#include <optional>

namespace tallyfold {

/// Why `xml` may not be given to a parser: a document type, or tags, names and namespaces that no appcast
/// needs and that make parsers slow or worse. Nothing when it may; it need not be well-formed for that. Takes
/// time proportional to the length of `xml`.
[[nodiscard]] std::optional<AppcastFault> markupFaultOf(QStringView xml);

} // namespace tallyfold
