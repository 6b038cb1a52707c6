#include "tests/app/FinishedProduction.h"

#include "core/Production.h"
#include "core/SourceClassifier.h"
#include "tests/support/Sample.h"

#include <gtest/gtest.h>

namespace tallyfold::tests {

namespace fs = std::filesystem;

void makeProduction(const fs::path &folder, const std::vector<SourceToMake> &sources,
                    const StampSettings &settings)
{
    const fs::path originals = folder.parent_path() / ("originals of " + folder.filename().string());
    std::vector<SourceFile> files;
    for (const SourceToMake &source : sources) {
        files.push_back(classify(writeSamples(originals, {source.name}, source.pages).front()));
    }
    fs::create_directories(folder);
    const ProductionResult result =
        Production::write(ProductionPlan(files, settings), folder, {}, [](std::int64_t) { return true; });
    EXPECT_TRUE(result.failures.empty());
}

} // namespace tallyfold::tests
