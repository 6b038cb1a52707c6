#pragma once

#include "pdf/copy/ObjectCopier.h"

#include <string>

namespace tallyfold::pdf {

/// The `/OCProperties` of a copy (PDF 1.7, 8.11.4): the layers that what was copied belongs to, shown or
/// hidden as in the source's default configuration. Names and order for a panel of layers are left out. Empty
/// when no layer was copied. Called when all pages are copied; what it refers to is copied already.
[[nodiscard]] std::string optionalContentProperties(Document &source, const ObjectCopier &copier);

} // namespace tallyfold::pdf
