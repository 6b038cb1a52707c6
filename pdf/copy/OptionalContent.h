#pragma once

#include "pdf/copy/ObjectCopier.h"

#include <string>

namespace tallyfold::pdf {

/// The `/OCProperties` of a copy (PDF 1.7, 8.11.4): the optional content groups that were copied, with their
/// states in the source's default configuration. Names and order for a panel are left out. Empty when no
/// group was copied. Called after all pages are copied.
[[nodiscard]] std::string optionalContentProperties(Document &source, const ObjectCopier &copier);

} // namespace tallyfold::pdf
