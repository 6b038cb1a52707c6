#include "core/StampSettings.h"

#include "core/NormalizedSettings.h"
#include "core/Preset.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tallyfold {

TEST(StampSettings, DigitsAreKeptBetweenOneAndTwelve)
{
    for (const auto &[given, kept] : {std::pair{0, 1}, {-5, 1}, {1, 1}, {12, 12}, {13, 12}}) {
        StampSettings settings;
        settings.digits = given;
        EXPECT_EQ(settings.normalized()->digits, kept) << given;
    }
    StampSettings none;
    none.digits = 0;
    EXPECT_EQ(none.bates(5), QStringLiteral("ABC5"));
}

TEST(StampSettings, StartNumbersAreKeptInTheirRange)
{
    StampSettings settings;
    settings.startNumber = -3;
    EXPECT_EQ(settings.normalized()->startNumber, 0);
    settings.startNumber = 1'000'000'000;
    EXPECT_EQ(settings.normalized()->startNumber, 999'999'999);
}

TEST(StampSettings, MarginAndFontSizeAreFiniteAndInRange)
{
    StampSettings settings;
    settings.margin = std::nan("");
    settings.fontSize = std::numeric_limits<double>::infinity();
    EXPECT_EQ(settings.normalized()->margin, 18.0);
    EXPECT_EQ(settings.normalized()->fontSize, 10.0);
    settings.margin = -5;
    settings.fontSize = 2;
    EXPECT_EQ(settings.normalized()->margin, 0.0);
    EXPECT_EQ(settings.normalized()->fontSize, 4.0);
    settings.margin = 500;
    settings.fontSize = 100;
    EXPECT_EQ(settings.normalized()->margin, 144.0);
    EXPECT_EQ(settings.normalized()->fontSize, 72.0);
}

TEST(StampSettings, EveryNewlineCharacterBecomesOneSpace)
{
    StampSettings settings;
    settings.prefix = QStringLiteral("AB\nC");
    settings.suffix = QStringLiteral("A\r\nB");
    settings.legend = QStringLiteral("a\u2028b\u0085c\vd");
    const StampSettings normal = settings.normalized();
    EXPECT_EQ(normal.prefix, QStringLiteral("AB C"));
    EXPECT_EQ(normal.suffix, QStringLiteral("A  B"));
    EXPECT_EQ(normal.legend, QStringLiteral("a b c d"));
}

TEST(StampSettings, EveryTextIsOneLineWhateverBreaksIt)
{
    for (QString StampSettings::*field : {&StampSettings::prefix, &StampSettings::suffix,
                                          &StampSettings::legend, &StampSettings::pageOfTotalFormat}) {
        for (const QChar newline : QStringLiteral("\n\v\f\r\u0085\u2028\u2029")) {
            StampSettings settings;
            settings.*field = u'a' + QString(newline) + u'b';
            EXPECT_EQ((*settings.normalized()).*field, QStringLiteral("a b")) << int{newline.unicode()};
        }
        StampSettings settings;
        settings.*field = QStringLiteral("a\t\x1F\u00A0b");
        EXPECT_EQ((*settings.normalized()).*field, settings.*field) << "what breaks no line stays";
    }
}

TEST(StampSettings, FormattersNormaliseWhatTheyAreGiven)
{
    StampSettings raw;
    raw.prefix = QStringLiteral("A\nB") + QString(60, u'p');
    raw.suffix = QString(41, u's');
    raw.digits = 99;
    EXPECT_EQ(raw.bates(7),
              QStringLiteral("A B") + QString(37, u'p') + QStringLiteral("000000000007") + QString(40, u's'));
    raw.pageOfTotalFormat = QStringLiteral("{page}\u2029of\f{total}") + QString(80, u'x');
    EXPECT_EQ(raw.pageLabel(3, 12), QStringLiteral("3 of 12") + QString(63, u'x'));
}

TEST(StampSettings, TextsAreCutToSoManyPerceivedCharacters)
{
    StampSettings settings;
    settings.prefix = QString(45, u'p');
    settings.suffix = QString(45, u's');
    settings.legend = QString(250, u'l');
    settings.pageOfTotalFormat = QString(90, u'f');
    const StampSettings normal = settings.normalized();
    EXPECT_EQ(normal.prefix.size(), 40);
    EXPECT_EQ(normal.suffix.size(), 40);
    EXPECT_EQ(normal.legend.size(), 200);
    EXPECT_EQ(normal.pageOfTotalFormat.size(), 80);
}

TEST(StampSettings, AnEmojiOfSeveralCodePointsIsOneCharacter)
{
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    StampSettings settings;
    settings.prefix = family.repeated(41);
    EXPECT_EQ(settings.normalized()->prefix, family.repeated(40));
    settings.prefix = QStringLiteral("e\u0301").repeated(41);
    EXPECT_EQ(settings.normalized()->prefix, QStringLiteral("e\u0301").repeated(40));
}

TEST(StampSettings, SpacesAtTheEndsOfTextsStay)
{
    StampSettings settings;
    settings.prefix = QStringLiteral(" A ");
    EXPECT_EQ(settings.normalized()->prefix, QStringLiteral(" A "));
}

TEST(StampSettings, AnEmptyFontNameBecomesHelveticaAndOthersAreNotTrimmed)
{
    StampSettings settings;
    settings.fontName = QStringLiteral("   ");
    EXPECT_EQ(settings.normalized()->fontName, QStringLiteral("Helvetica"));
    settings.fontName = QStringLiteral(" Courier ");
    EXPECT_EQ(settings.normalized()->fontName, QStringLiteral(" Courier "));
}

TEST(StampSettings, NumbersArePaddedButNeverCut)
{
    const StampSettings settings;
    EXPECT_EQ(settings.bates(1), QStringLiteral("ABC000001"));
    EXPECT_EQ(settings.bates(1'234'567), QStringLiteral("ABC1234567"));
    EXPECT_EQ(settings.bates(-7), QStringLiteral("ABC000000"));
    EXPECT_EQ(StampSettings::exhibits().bates(12), QStringLiteral("EX-0012"));
    StampSettings suffixed;
    suffixed.suffix = QStringLiteral("-C");
    EXPECT_EQ(suffixed.bates(42), QStringLiteral("ABC000042-C"));
}

TEST(StampSettings, ThePageLabelReplacesEveryPlaceholder)
{
    StampSettings settings;
    EXPECT_EQ(settings.pageLabel(3, 12), QStringLiteral("Page 3 of 12"));
    settings.pageOfTotalFormat = QStringLiteral("{page}/{page} – {total}");
    EXPECT_EQ(settings.pageLabel(2, 9), QStringLiteral("2/2 – 9"));
    settings.pageOfTotalFormat = QStringLiteral("{Page} of all");
    EXPECT_EQ(settings.pageLabel(2, 9), QStringLiteral("{Page} of all"));
}

TEST(StampSettings, ReadyMadeSettingsDifferFromTheDefaultsOnlyWhereTheySay)
{
    EXPECT_EQ(StampSettings::standard(), StampSettings());
    StampSettings confidential;
    confidential.legend = QStringLiteral("CONFIDENTIAL");
    confidential.color = StampColor::of(0.78, 0.08, 0.10);
    EXPECT_EQ(StampSettings::confidential(QStringLiteral("CONFIDENTIAL")), confidential);
    StampSettings exhibits;
    exhibits.prefix = QStringLiteral("EX-");
    exhibits.digits = 4;
    exhibits.batesPosition = StampPosition::topRight;
    exhibits.pageOfTotal = true;
    exhibits.naming = OutputNaming::batesAndOriginal;
    EXPECT_EQ(StampSettings::exhibits(), exhibits);
}

TEST(Preset, HoldsASettingThatCanBeUsedAndANameThatCanBeShown)
{
    StampSettings raw;
    raw.digits = 99;
    raw.startNumber = -1;
    raw.margin = 1000;
    raw.prefix = QStringLiteral("a\nb");
    const QUuid id = QUuid::createUuid();
    const QString e = QStringLiteral("e\u0301");
    const Preset preset = Preset::of(id, e.repeated(81), raw);
    EXPECT_EQ(preset, (Preset{id, e.repeated(80), raw.normalized()}));
    EXPECT_NE(preset.settings, raw);
}

TEST(StampPosition, TheFirstThreeAreAtTheTop)
{
    int top = 0;
    for (const StampPosition position : allStampPositions) {
        top += isTop(position) ? 1 : 0;
    }
    EXPECT_EQ(top, 3);
    EXPECT_TRUE(isTop(allStampPositions[0]) && isTop(allStampPositions[2]) && !isTop(allStampPositions[3]));
}

} // namespace tallyfold
