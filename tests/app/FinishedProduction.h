#pragma once

#include "core/StampSettings.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tallyfold::tests {

/// A source of a production: its name, and how many pages it has.
struct SourceToMake {
    std::string name;
    int pages = 1;
};

/// Makes these sources in a folder beside `folder`, and a production of them with an index in `folder`.
void makeProduction(const std::filesystem::path &folder, const std::vector<SourceToMake> &sources,
                    const StampSettings &settings = {});

} // namespace tallyfold::tests
