#include "tests/app/ModelFixture.h"

#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"

namespace tallyfold {

using StampRefusal = tests::ModelFixture;
namespace fs = std::filesystem;

TEST_F(StampRefusal, ConflictsAreToldBeforeProtectedFilesAreAskedAbout)
{
    addPdfs({"a.pdf"});
    tests::encrypt(folder / "sources/a.pdf", folder / "sources/locked.pdf", "secret owner 256");
    model->add(std::vector{folder / "sources/locked.pdf"});
    tests::writeFile(output / "a.pdf", "kept");
    model->setOutputFolder(output);
    for (const bool isConfirmed : {false, true}) {
        model->stamp(isConfirmed);
        EXPECT_TRUE(model->problem().has_value());
        EXPECT_FALSE(model->isConfirmingProtected());
        EXPECT_FALSE(model->isRunning());
        model->setProblem(std::nullopt);
    }
    fs::remove(output / "a.pdf");
    model->stamp(false);
    EXPECT_FALSE(model->problem().has_value());
    EXPECT_TRUE(model->isConfirmingProtected()) << "now there is something to ask";
    EXPECT_FALSE(model->isRunning());
    EXPECT_TRUE(fs::is_empty(output));
}

} // namespace tallyfold
