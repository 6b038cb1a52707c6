#include "tests/core/StampOutcome.h"

#include "core/SourceClassifier.h"
#include "core/Stamper.h"
#include "tests/support/Count.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyfold::tests {

namespace {

Count hostileFiles("hostile files");

} // namespace

StampOutcome outcomeOfFile(const std::filesystem::path &path)
{
    const SourceFile source = classify(path);
    StampOutcome outcome{source.problem, false, 0};
    const ProductionPlan plan({source}, {});
    if (plan.stampedFiles().empty()) {
        return outcome;
    }
    const std::filesystem::path copy = path.parent_path() / "copy.pdf";
    try {
        Stamper::write(plan.files.front(), plan.settings, copy, {});
        outcome.pages = soundPages(copy);
        EXPECT_EQ(outcome.pages, source.pageCount);
    } catch (const StampError &) {
        outcome.hasFailed = true;
    }
    return outcome;
}

StampOutcome outcomeOf(std::string_view bytes)
{
    const TemporaryFolder folder;
    writeHostile(folder / "a.pdf", bytes);
    return outcomeOfFile(folder / "a.pdf");
}

void writeHostile(const std::filesystem::path &path, std::string_view bytes)
{
    writeFile(path, bytes);
    hostileFiles.add();
}

} // namespace tallyfold::tests
