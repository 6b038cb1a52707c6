#include "core/SourceFile.h"

#include <gtest/gtest.h>

#include <map>

namespace tallyfold {

namespace {

/// Each problem with its stored name.
struct Known {
    QString key;
    QString status;
    bool isPasswordProtected;
};

} // namespace

TEST(SourceFile, EveryProblemHasItsKeyAndItsStatus)
{
    const QString byPassword = QStringLiteral("skipped: password-protected");
    const std::map<SourceProblem, Known> known{
        {SourceProblem::unreadable,
         {QStringLiteral("unreadable"), QStringLiteral("skipped: unreadable"), false}},
        {SourceProblem::locked, {QStringLiteral("locked"), byPassword, true}},
        {SourceProblem::encrypted, {QStringLiteral("encrypted"), byPassword, true}},
        {SourceProblem::empty, {QStringLiteral("empty"), QStringLiteral("skipped: empty"), false}}};
    EXPECT_EQ(known.size(), allSourceProblems.size());
    for (const SourceProblem problem : allSourceProblems) {
        const Known &expected = known.at(problem);
        EXPECT_EQ(keyOf(problem), expected.key);
        EXPECT_EQ(indexStatus(problem), expected.status);
        EXPECT_EQ(isPasswordProtected(problem), expected.isPasswordProtected) << expected.key.toStdString();
    }
}

TEST(SourceFile, TheShownPathIsCompleteWithReplacementCharactersForInvalidBytes)
{
    EXPECT_EQ(displayPath("/a/b.pdf"), QStringLiteral("/a/b.pdf"));
    EXPECT_EQ(displayPath("/a\xff/b.pdf"), QStringLiteral("/a\uFFFD/b.pdf"));
}

TEST(SourceFile, TheNameShownIsTheLastComponent)
{
    EXPECT_EQ(displayName("/a/b.pdf"), QStringLiteral("b.pdf"));
    EXPECT_EQ(displayName("/a/b.pdf/"), QStringLiteral("b.pdf"));
    EXPECT_EQ(displayName("caf\xE9.pdf"), QStringLiteral("caf\uFFFD.pdf"));
}

TEST(SourceFile, TheDistantPastIsBeforeAnyFile)
{
    EXPECT_LT(distantPast(), (FileDate{-62'135'596'799, 0})); // The first second of the year 1.
}

} // namespace tallyfold
