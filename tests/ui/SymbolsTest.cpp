#include "ui/theme/Symbols.h"

#include "ui/desktop/ColorScheme.h"
#include "ui/text/HelpTopics.h"

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
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto contrast = [&](const QColor &one, const QColor &other) {
        const double first = luminance(one) + 0.05;
        const double second = luminance(other) + 0.05;
        return std::max(first, second) / std::min(first, second);
    };
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        for (const Tone tone : {Tone::text, Tone::secondary, Tone::warning, Tone::blocking}) {
            for (const QPalette::ColorRole ground : {QPalette::Window, QPalette::Base}) {
                EXPECT_GE(contrast(colorOf(tone, palette), palette.color(ground)), 4.5)
                    << "tone " << static_cast<int>(tone) << " ground " << ground << " dark "
                    << isDark(palette);
            }
        }
        EXPECT_GE(contrast(colorOf(Tone::onAccent, palette), colorOf(Tone::accent, palette)), 4.0);
        EXPECT_GE(contrast(palette.color(QPalette::Link), palette.color(QPalette::Base)), 4.5);
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
