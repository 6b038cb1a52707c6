#include "app/RunMessages.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(RunMessages, AFailureNamesItsFileUnlessItIsTheFolder)
{
    const std::error_code full = std::make_error_code(std::errc::no_space_on_device);
    const QString reason = QString::fromStdString(full.message());
    const QString ofFile = failedRunMessage(FileError{QStringLiteral("Index.csv"), full});
    EXPECT_TRUE(ofFile.contains(QStringLiteral("“Index.csv”: ") + reason)) << ofFile.toStdString();
    const QString ofFolder = failedRunMessage(FileError{QStringLiteral("."), full});
    EXPECT_EQ(ofFolder, failedRunMessage(reason));
    EXPECT_FALSE(ofFolder.contains(u'“')) << ofFolder.toStdString();
}

} // namespace tallyfold
