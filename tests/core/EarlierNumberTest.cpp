#include "core/EarlierNumber.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(EarlierNumber, NumbersAsTheyAreStampedAreFound)
{
    for (const char *text :
         {"ABC000123", "EX-0001", "DEF 1234567", "A0000", "AB12_012345678901", "Z999999"}) {
        EXPECT_EQ(earlierNumberIn(QString::fromLatin1(text)), QString::fromLatin1(text));
    }
    EXPECT_EQ(earlierNumberIn(QStringLiteral("CONFIDENTIAL ABC000045")), QStringLiteral("ABC000045"));
    EXPECT_EQ(earlierNumberIn(QStringLiteral("see\nABC000045\nABC000046")), QStringLiteral("ABC000045"));
}

TEST(EarlierNumber, OrdinaryTextIsNot)
{
    for (const char *text : {"", "Page 12", "ABC123", "2023", "abc000123", "ABC00", "A 12345", "xABC000123",
                             "ABC000123x", "ABCDEFGHIJKLM0000123"}) {
        EXPECT_EQ(earlierNumberIn(QString::fromLatin1(text)), std::nullopt) << text;
    }
}

TEST(EarlierNumber, LettersDigitsAndSeparatorsAreCounted)
{
    const auto letters = [](qsizetype count) { return QString(count, u'A'); };
    const auto zeros = [](qsizetype count) { return QString(count, u'0'); };
    const auto ones = [](qsizetype count) { return QString(count, u'1'); };
    for (const QString &number :
         {letters(1) + zeros(4), letters(12) + zeros(4), letters(1) + zeros(12), letters(12) + ones(6),
          letters(1) + ones(12), u'A' + ones(11) + u'-' + ones(12), letters(12) + u' ' + zeros(12)}) {
        EXPECT_EQ(earlierNumberIn(number), number);
    }
    for (const QString &text :
         {zeros(6), letters(1) + zeros(3), letters(13) + zeros(4), letters(12) + u'-' + zeros(13),
          letters(12) + u'-' + zeros(3), letters(12) + u'-' + ones(5), letters(12) + u'-' + ones(13)}) {
        EXPECT_EQ(earlierNumberIn(text), std::nullopt) << qPrintable(text);
    }
}

TEST(EarlierNumber, OneSeparatorMayStandInANumber)
{
    for (const char *separator : {"", "-", "_", " "}) {
        const QString number = QStringLiteral("ABC%1000123").arg(QLatin1StringView(separator));
        EXPECT_EQ(earlierNumberIn(number), number);
    }
    for (const char *separator : {"--", "- ", "  ", "__", " -", ".", "/", "\t", "\n", "+"}) {
        const QString text = QStringLiteral("ABC%1000123").arg(QLatin1StringView(separator));
        EXPECT_EQ(earlierNumberIn(text), std::nullopt) << qPrintable(text);
    }
}

TEST(EarlierNumber, ACharacterIsNotDivided)
{
    // An Arabic number sign and the digit after it form one grapheme cluster despite the word boundary
    // between them; so do a digit and a Thai vowel after it.
    const QString before = QStringLiteral("\u0600ABC000123");
    const QString after = QStringLiteral("ABC000123\u0E33");
    EXPECT_EQ(earlierNumberIn(before), std::nullopt);
    EXPECT_EQ(earlierNumberIn(after), std::nullopt);
    for (const QString &text : {before, after}) {
        EXPECT_EQ(earlierNumberIn(text + QStringLiteral(" DEF000456")), QStringLiteral("DEF000456"));
    }
}

TEST(EarlierNumber, WordsEndWhereUnicodeEndsThem)
{
    // There is no word boundary at a full stop or comma between digits, or an apostrophe between letters.
    for (const char *text : {"ABC000123.5", "ABC000123,4", "X'ABC000123", "1_ABC000123", "ABC000123_"}) {
        EXPECT_EQ(earlierNumberIn(QString::fromLatin1(text)), std::nullopt) << text;
    }
    for (const char *text : {"ABC000123.", "(ABC000123)", "1,ABC000123", "ABC000123:5", "#ABC000123/2"}) {
        EXPECT_EQ(earlierNumberIn(QString::fromLatin1(text)), QStringLiteral("ABC000123")) << text;
    }
}

TEST(EarlierNumber, OnlyAsciiLettersAndDigitsCount)
{
    EXPECT_EQ(earlierNumberIn(QStringLiteral("\u00C4\u00D6000123")), std::nullopt);
    EXPECT_EQ(earlierNumberIn(QStringLiteral("ABC\u0660\u0660\u0661\u0662")), std::nullopt);
}

TEST(EarlierNumber, AMatchIsMadeOfWholeCharacters)
{
    EXPECT_EQ(earlierNumberIn(QStringLiteral("ABC000123\u0301")), std::nullopt);
    EXPECT_EQ(earlierNumberIn(QStringLiteral("ABC000123\u0301 DEF000777")), QStringLiteral("DEF000777"));
}

TEST(EarlierNumber, StripsLieAtTheBottomTheTopTheLeftAndTheRight)
{
    const auto strips = earlierNumberStrips({10, 20, 622, 812});
    EXPECT_EQ(strips[0], (pdf::Rect{10, 20, 622, 110}));
    EXPECT_EQ(strips[1], (pdf::Rect{10, 722, 622, 812}));
    EXPECT_EQ(strips[2], (pdf::Rect{10, 20, 100, 812}));
    EXPECT_EQ(strips[3], (pdf::Rect{532, 20, 622, 812}));
}

TEST(EarlierNumber, StripsOfANarrowPageAreHalfItsWidthDeep)
{
    EXPECT_EQ(earlierNumberStrips({0, 0, 100, 800})[0].maxY, 50);
    EXPECT_EQ(earlierNumberStrips({0, 0, 800, 60})[2].maxX, 30);
}

} // namespace tallyfold
