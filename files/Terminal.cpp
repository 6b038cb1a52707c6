#include "files/Terminal.h"

#include <unistd.h>

namespace tallyfold::files {

bool isTerminal(std::FILE *stream)
{
    return ::isatty(::fileno(stream)) != 0;
}

} // namespace tallyfold::files
