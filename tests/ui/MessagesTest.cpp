#include "ui/text/Messages.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

PasswordNotice notice(int count)
{
    PasswordNotice made;
    for (int index = 1; index <= count; ++index) {
        made.names.append(QStringLiteral("%1.pdf").arg(index));
    }
    return made;
}

} // namespace

TEST(Messages, EveryConflictHasItsWords)
{
    using Kind = ProductionConflict::Kind;
    const QString name = QStringLiteral("a.pdf");
    EXPECT_EQ(messageOf(ProductionConflict{Kind::exists, name}),
              QStringLiteral(
                  "“a.pdf” is already in the output folder. Tallyfold never replaces files: choose an empty "
                  "folder."));
    EXPECT_EQ(messageOf(ProductionConflict{Kind::duplicate, name}),
              QStringLiteral(
                  "Two copies would be named “a.pdf”. Choose a Bates naming style, or rename one original."));
    EXPECT_EQ(messageOf(ProductionConflict{Kind::wouldReplaceOriginal, name}),
              QStringLiteral("“a.pdf” would replace an original. Choose a different output folder."));
    EXPECT_EQ(messageOf(ProductionConflict{Kind::nothingToStamp, {}}), QStringLiteral("Add PDFs to number."));
    EXPECT_EQ(messageOf(ProductionConflict{Kind::folderMissing, {}}),
              QStringLiteral("The output folder isn’t there any more. Choose it again."));
}

TEST(Messages, ANameThatLooksLikeAPlaceholderStaysWhatItIs)
{
    EXPECT_TRUE(messageOf(ProductionConflict{ProductionConflict::Kind::exists, QStringLiteral("%2.pdf")})
                    .startsWith(QStringLiteral("“%2.pdf” is already")));
}

TEST(Messages, OneProtectedFileIsNamed)
{
    EXPECT_EQ(messageOf(notice(1)),
              QStringLiteral("This PDF is password-protected and won’t be stamped: 1.pdf. Remove the "
                             "password (open it in a PDF "
                             "viewer and print it to a new PDF file, or in Acrobat) and add it again."));
    EXPECT_EQ(removalTitleOf(notice(1)), QStringLiteral("Remove It from the List"));
}

TEST(Messages, ManyProtectedFilesAreNamedUpToFour)
{
    EXPECT_TRUE(messageOf(notice(4)).startsWith(
        QStringLiteral("4 PDFs are password-protected and won’t be stamped: 1.pdf, 2.pdf, 3.pdf, 4.pdf. "
                       "Remove the passwords (open each")));
    EXPECT_TRUE(messageOf(notice(6)).contains(QStringLiteral("1.pdf, 2.pdf, 3.pdf, 4.pdf and 2 more.")));
    EXPECT_EQ(removalTitleOf(notice(2)), QStringLiteral("Remove Them from the List"));
    EXPECT_TRUE(confirmationOf(notice(2)).endsWith(
        QStringLiteral(" The production index will list them as “skipped: password-protected”.")));
}

TEST(Messages, ProblemsAreToldInShortAndInFull)
{
    EXPECT_EQ(shortDescriptionOf(SourceProblem::locked), QStringLiteral("Password-protected"));
    EXPECT_EQ(shortDescriptionOf(SourceProblem::encrypted), QStringLiteral("Password-protected"));
    EXPECT_EQ(shortDescriptionOf(SourceProblem::unreadable), QStringLiteral("Can’t be read"));
    EXPECT_EQ(shortDescriptionOf(SourceProblem::empty), QStringLiteral("No pages"));
    EXPECT_TRUE(
        messageOf(SourceProblem::locked).endsWith(QStringLiteral("Tallyfold won’t stamp protected files.")));
    EXPECT_TRUE(messageOf(SourceProblem::encrypted)
                    .contains(QStringLiteral("its owner password restricts printing")));
    EXPECT_EQ(messageOf(SourceProblem::unreadable),
              QStringLiteral("This file isn’t a PDF that this computer can open. It will be skipped and "
                             "listed in the index."));
    EXPECT_EQ(messageOf(SourceProblem::empty), QStringLiteral("This PDF has no pages. It will be skipped."));
}

} // namespace tallyfold
