#include "app/RunMessages.h"

#include "app/FailureText.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

namespace tallyfold {

TEST(RunMessages, AFailureNamesItsFileUnlessItIsTheFolder)
{
    const std::error_code broken = std::make_error_code(std::errc::io_error);
    const QString reason = QString::fromStdString(broken.message());
    const QString ofFile = failedRunMessage(FileError{QStringLiteral("Index.csv"), broken});
    EXPECT_TRUE(ofFile.contains(QStringLiteral("“Index.csv”: ") + reason)) << ofFile.toStdString();
    const QString ofFolder = failedRunMessage(FileError{QStringLiteral("."), broken});
    EXPECT_EQ(ofFolder, failedRunMessage(reason));
    EXPECT_FALSE(ofFolder.contains(u'“')) << ofFolder.toStdString();
}

TEST(RunMessages, AFullDiskAndAFolderThatMayNotBeWrittenInAreNoFaultOfOneFile)
{
    for (const std::errc code :
         {std::errc::no_space_on_device, std::errc::permission_denied, std::errc::read_only_file_system}) {
        const std::error_code error = std::make_error_code(code);
        const QString message = failedRunMessage(FileError{QStringLiteral("Index.csv"), error});
        EXPECT_FALSE(message.contains(QStringLiteral("Index.csv"))) << message.toStdString();
        EXPECT_EQ(message, failedRunMessage(writingFailureText(error).value()));
    }
}

TEST(RunMessages, AProgramWithoutANameHasItsOwn)
{
    const QString before = QGuiApplication::applicationDisplayName();
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Another"));
    EXPECT_EQ(displayedName(), QStringLiteral("Another"));
    QGuiApplication::setApplicationDisplayName(QString());
    EXPECT_EQ(displayedName(), QStringLiteral("Tallyfold"));
    QGuiApplication::setApplicationDisplayName(before);
}

} // namespace tallyfold
