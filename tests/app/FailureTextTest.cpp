#include "app/FailureText.h"

#include "app/FailureReasons.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <map>

namespace tallyfold {

using namespace Qt::StringLiterals;
using During = FailureCause::During;
using Finding = FailureCause::Finding;

namespace {

std::error_code systemError(int number)
{
    return {number, std::generic_category()};
}

std::string textOf(const FailureCause &cause)
{
    const bool isOfSource = cause.during == During::openingSource || cause.during == During::readingSource;
    return failureText(isOfSource ? StampError::unreadable(u"a.pdf"_s, cause)
                                  : StampError::cannotWrite(u"a.pdf"_s, cause))
        .value_or(QString())
        .toStdString();
}

} // namespace

TEST(FailureText, SaysWhyAnOriginalCouldNotBeRead)
{
    for (const During during : {During::openingSource, During::readingSource}) {
        EXPECT_EQ(textOf({during, systemError(ENOENT)}),
                  "The original is no longer there. Put it back, or remove it from the list.");
        for (const int error : {EACCES, EPERM}) {
            EXPECT_EQ(textOf({during, systemError(error)}),
                      "Permission denied: the original may not be read. Ask its owner, or add a copy of it.");
        }
        EXPECT_EQ(textOf({during, systemError(EIO)}), std::string("The original couldn’t be read: ") +
                                                          strerror(EIO) + ". Check its disk or connection.");
        EXPECT_EQ(textOf({during, Finding::damaged}),
                  "The original is damaged, or no PDF any more. Print it to a new PDF, and stamp that.");
        EXPECT_EQ(textOf({during, Finding::changed}),
                  "The original changed while it was read. Stamp it again when nothing writes to it.");
        EXPECT_EQ(textOf({during, Finding::limitReached}),
                  "The original takes more memory or time than a file may take. Print it to a new PDF, and "
                  "stamp that.");
    }
}

TEST(FailureText, SaysWhyACopyCouldNotBeWritten)
{
    const std::map<int, const char *> texts{
        {ENOSPC, "No space left on the disk. Make room, or choose a folder on another disk."},
        {EDQUOT, "Your share of the disk is used up. Make room, or choose a folder on another disk."},
        {EACCES, "Permission denied in the output folder. Choose a folder that you may write in."},
        {EPERM, "Permission denied in the output folder. Choose a folder that you may write in."},
        {EROFS, "The disk of the output folder is read-only. Choose a folder on another disk."},
        {ENOENT, "The output folder is no longer there. Put it back, or choose another one."},
        {ENAMETOOLONG, "The name is too long for the disk. Choose a shorter prefix or another naming style."},
        {EEXIST, "A file of the same name turned up in the output folder, and was left as it is. Choose an "
                 "empty folder."},
        {ENOMEM, "There was not enough memory. Close other programs, or stamp fewer files at a time."}};
    for (const During during : {During::creatingCopy, During::writingCopy, During::namingCopy}) {
        for (const auto &[error, text] : texts) {
            EXPECT_EQ(textOf({during, systemError(error)}), text);
            EXPECT_EQ(writingFailureText(systemError(error)), QString::fromUtf8(text));
        }
        EXPECT_EQ(textOf({during, systemError(EIO)}), std::string("The copy couldn’t be written: ") +
                                                          strerror(EIO) +
                                                          ". Check the disk or its connection.");
    }
    EXPECT_EQ(writingFailureText(systemError(EIO)), std::nullopt);
    EXPECT_EQ(textOf({During::checkingCopy, Finding::damaged}),
              "What the disk gave back is not what was written. Check the disk or its connection.");
}

TEST(FailureText, SaysThatAnOriginalWasProtectedMeanwhile)
{
    EXPECT_EQ(failureText(StampError::locked(u"a.pdf"_s)),
              u"The original needs a password by now. Save it without one, and add that."_s);
    EXPECT_EQ(failureText(StampError::encrypted(u"a.pdf"_s)),
              u"The original’s owner allows no stamped copies by now. Ask for one without restrictions."_s);
}

TEST(FailureText, SaysNothingWhereNothingIsKnown)
{
    EXPECT_EQ(failureText(StampError::unreadable(u"a.pdf"_s)), std::nullopt);
    EXPECT_EQ(failureText(StampError::cannotWrite(u"a.pdf"_s)), std::nullopt);
    EXPECT_EQ(failureText(StampError::cancelled()), std::nullopt);
}

TEST(FailureReasons, AreCountedByCaseAndCauseTheCommonestFirst)
{
    const FailureCause full{During::writingCopy, systemError(ENOSPC)};
    const FailureCause denied{During::creatingCopy, systemError(EACCES)};
    const std::vector<FailureReason> reasons =
        failureReasons({StampError::locked(u"a"_s), StampError::cannotWrite(u"b"_s, denied),
                        StampError::cannotWrite(u"c"_s, full), StampError::cannotWrite(u"d"_s, denied),
                        StampError::cannotWrite(u"e"_s), StampError::cannotWrite(u"f"_s, denied)});
    ASSERT_EQ(reasons.size(), 4U);
    EXPECT_EQ(reasons[0].example, StampError::cannotWrite(u"b"_s));
    EXPECT_EQ(reasons[0].example.cause, denied);
    EXPECT_EQ(reasons[0].files, 3);
    EXPECT_EQ(reasons[1].example, StampError::locked(u"a"_s));
    EXPECT_EQ(reasons[2].example.cause, full);
    EXPECT_EQ(reasons[3].example.cause, std::nullopt);
    EXPECT_EQ(reasons[3].files, 1);
    EXPECT_TRUE(failureReasons({}).empty());
}

} // namespace tallyfold
