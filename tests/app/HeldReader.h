#pragma once

#include "app/KnownSources.h"
#include "app/SourceReading.h"
#include "tests/app/Gate.h"

#include <string>

namespace tallyfold::tests {

/// Reads files as the system does, and waits at `gate` before the one called `name`.
inline SourceReading::Read readerHeldAt(Gate &gate, const std::string &name)
{
    return [&gate, name](const std::filesystem::path &location) {
        if (location.filename() == name) {
            gate.pass();
        }
        return KnownSources::read(location);
    };
}

} // namespace tallyfold::tests
