#include "ui/theme/Symbols.h"

#include "tests/ui/Contrast.h"
#include "ui/desktop/ColorScheme.h"
#include "ui/text/HelpTopics.h"
#include "ui/theme/Typography.h"

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace tallyfold {

namespace {

/// How many pixels of `image` are of exactly this colour, and of any.
struct Ink {
    int same = 0;
    int any = 0;
};

Ink inkOf(const QImage &image, const QColor &color)
{
    Ink ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            ink.any += pixel.alpha() > 0 ? 1 : 0;
            ink.same += pixel == color ? 1 : 0;
        }
    }
    return ink;
}

} // namespace

TEST(Symbols, EveryNameHasADrawingInTheColourAskedFor)
{
    ASSERT_EQ(symbolNames().size(), 25);
    for (const QString &name : symbolNames()) {
        const Ink ink = inkOf(symbolPixmap(name, 32, Qt::red, 2).toImage(), Qt::red);
        EXPECT_GT(ink.same, 64) << name.toStdString();
        EXPECT_LT(ink.any, 64 * 64) << name.toStdString();
    }
}

TEST(Symbols, AnUnknownNameHasNone)
{
    EXPECT_TRUE(symbolIcon(QStringLiteral("no.such")).isNull());
}

TEST(Symbols, EveryTopicOfTheHelpHasOne)
{
    for (const HelpTopic &topic : helpTopics()) {
        EXPECT_FALSE(symbolIcon(topic.symbol).isNull()) << topic.symbol.toStdString();
    }
}

TEST(Symbols, AreDrawnForTheScaleOfTheScreen)
{
    const QIcon icon = symbolIcon(QStringLiteral("plus"));
    EXPECT_EQ(icon.pixmap(QSize(18, 18), 2.0).size(), QSize(36, 36));
}

TEST(Symbols, FollowThePalette)
{
    const QPalette before = QApplication::palette();
    const QIcon icon = symbolIcon(QStringLiteral("checkmark.circle.fill"), Tone::text);
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        const QColor text = palette.color(QPalette::WindowText);
        EXPECT_GT(inkOf(icon.pixmap(QSize(32, 32), 1.0).toImage(), text).same, 64);
    }
    QApplication::setPalette(before);
}

TEST(Tones, AreTellableFromTheGroundTheyStandOn)
{
    // WCAG 2.1, 1.4.3: text has a contrast of 4.5 at least.
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        for (const Tone tone : {Tone::text, Tone::secondary, Tone::warning, Tone::blocking}) {
            for (const QPalette::ColorRole ground : {QPalette::Window, QPalette::Base}) {
                EXPECT_GE(tests::contrast(colorOf(tone, palette), palette.color(ground)), 4.5)
                    << "tone " << static_cast<int>(tone) << " ground " << ground << " dark "
                    << isDark(palette);
            }
        }
        EXPECT_GE(tests::contrast(colorOf(Tone::onAccent, palette), colorOf(Tone::accent, palette)), 4.0);
        EXPECT_GE(tests::contrast(palette.color(QPalette::Link), palette.color(QPalette::Base)), 4.5);
    }
}

TEST(Tones, OfHighContrastAreAsFarApartAsTheyCanBe)
{
    // WCAG 2.1, 1.4.6: text has a contrast of 7 at least.
    for (const QPalette &palette : {lightPalette(Contrast::high), darkPalette(Contrast::high)}) {
        EXPECT_EQ(contrastOf(palette), Contrast::high);
        for (const Tone tone : {Tone::text, Tone::secondary, Tone::warning, Tone::blocking, Tone::success}) {
            EXPECT_GE(tests::contrast(colorOf(tone, palette), palette.color(QPalette::Window)), 7)
                << static_cast<int>(tone);
        }
        EXPECT_GE(tests::contrast(colorOf(Tone::onAccent, palette), colorOf(Tone::accent, palette)), 7);
        EXPECT_GE(tests::contrast(palette.color(QPalette::Link), palette.color(QPalette::Base)), 7);
        EXPECT_GE(tests::contrast(colorOf(Tone::border, palette), palette.color(QPalette::Base)), 3);
        EXPECT_GE(tests::contrast(colorOf(Tone::edge, palette), palette.color(QPalette::Button)), 7);
    }
    EXPECT_EQ(contrastOf(lightPalette()), Contrast::normal);
    EXPECT_EQ(contrastOf(darkPalette()), Contrast::normal);
}

TEST(Tones, OfEdgesAreSeenUponAnyGround)
{
    // WCAG 2.1, 1.4.11: the parts of a control have a contrast of 3 at least.
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        for (const QPalette::ColorRole ground : {QPalette::Window, QPalette::Base, QPalette::Button}) {
            EXPECT_GE(tests::contrast(colorOf(Tone::edge, palette), palette.color(ground)), 3) << ground;
        }
    }
}

TEST(Typography, CaptionsAreNotMuchSmallerThanTheSystemsFont)
{
    for (const TextStyle style : {TextStyle::caption, TextStyle::captionStrong, TextStyle::callout}) {
        EXPECT_GE(fontOf(style).pointSizeF(), 0.9 * QApplication::font().pointSizeF());
    }
}

TEST(ColorScheme, TurnsTheWholeApplicationDarkAndLight)
{
    const QPalette before = QApplication::palette();
    ColorScheme::apply(ColorScheme::Preference::dark);
    EXPECT_TRUE(isDark(QApplication::palette()));
    ColorScheme::apply(ColorScheme::Preference::none);
    EXPECT_FALSE(isDark(QApplication::palette()));
    QApplication::setPalette(before);
}

} // namespace tallyfold
