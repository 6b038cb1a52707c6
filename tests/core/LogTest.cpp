#include "core/Production.h"
#include "core/SourceClassifier.h"
#include "tests/support/HeardLog.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

/// Runs a production of one file that is overwritten before it is stamped.
void runWithBrokenSource()
{
    const tests::TemporaryFolder folder;
    const std::filesystem::path source = folder / "a.pdf";
    tests::writeSample(source, 1);
    const ProductionPlan plan({classify(source)}, {});
    tests::writeFile(source, "broken");
    std::filesystem::create_directory(folder / "out");
    EXPECT_EQ(Production::write(plan, folder / "out", {}, {}).failures.size(), 1);
}

} // namespace

TEST(CoreLog, TellsWhyThereIsNoCopy)
{
    EXPECT_EQ(tests::heard(QStringLiteral("tallyfold.core=true"), runWithBrokenSource),
              QStringList(QStringLiteral(
                  "tallyfold.core: no copy of \"a.pdf\" unreadable, opening the source: damaged")));
}

TEST(CoreLog, IsQuietUnlessAsked)
{
    EXPECT_EQ(tests::heard(tests::nothingAsked, runWithBrokenSource), QStringList());
}

} // namespace tallyfold
