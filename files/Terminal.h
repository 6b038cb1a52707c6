#pragma once

#include <cstdio>

namespace tallyfold::files {

/// Whether what is written to `stream` goes to a terminal, where somebody reads it at once.
[[nodiscard]] bool isTerminal(std::FILE *stream);

} // namespace tallyfold::files
