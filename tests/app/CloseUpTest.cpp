#include "app/PreviewImages.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

/// A page of letter size at two pixels per point, red at the top and blue at the bottom.
QImage letterPage()
{
    QImage page(1224, 1584, QImage::Format_RGBA8888_Premultiplied);
    page.fill(Qt::red);
    for (int row = 792; row < 1584; ++row) {
        for (int column = 0; column < 1224; ++column) {
            page.setPixelColor(column, row, Qt::blue);
        }
    }
    return page;
}

} // namespace

TEST(CloseUp, IsABandAsHighAsTheStampAtItsEdge)
{
    const std::optional<QImage> band = closeUpOf(letterPage(), 612, StampSettings());
    ASSERT_TRUE(band);
    EXPECT_EQ(band->size(), QSize(1224, 94));
    EXPECT_EQ(band->deviceIndependentSize(), QSizeF(612, 47));
    EXPECT_EQ(band->pixelColor(0, 0), QColor(Qt::blue));
}

TEST(CloseUp, ComesFromTheTopWhereTheNumberIs)
{
    StampSettings settings;
    settings.batesPosition = StampPosition::topCenter;
    settings.legend = QStringLiteral("CONFIDENTIAL"); // At the bottom.
    const std::optional<QImage> band = closeUpOf(letterPage(), 612, settings);
    ASSERT_TRUE(band);
    EXPECT_EQ(band->height(), 2 * (18 + 30 + 14));
    EXPECT_EQ(band->pixelColor(0, 0), QColor(Qt::red));
}

TEST(CloseUp, IsThePictureOfThePageFromEdgeToEdge)
{
    QImage page = letterPage();
    for (int row = 0; row < page.height(); ++row) {
        page.setPixelColor(0, row, Qt::green);
        page.setPixelColor(page.width() - 1, row, Qt::yellow);
    }
    const std::optional<QImage> band = closeUpOf(page, 612, StampSettings());
    ASSERT_TRUE(band);
    EXPECT_EQ(band->pixelColor(0, 0), QColor(Qt::green));
    EXPECT_EQ(band->pixelColor(1, 0), QColor(Qt::blue));
    EXPECT_EQ(band->pixelColor(band->width() - 1, band->height() - 1), QColor(Qt::yellow));
}

TEST(CloseUp, MayBeOnePixelHigh)
{
    const std::optional<QImage> band = closeUpOf(letterPage().copy(0, 0, 1224, 1), 612, StampSettings());
    ASSERT_TRUE(band);
    EXPECT_EQ(band->height(), 1);
}

TEST(CloseUp, EveryLineMakesItHigherUpToThePage)
{
    StampSettings settings;
    settings.legend = QStringLiteral("x");
    settings.pageOfTotal = true;
    EXPECT_EQ(closeUpOf(letterPage(), 612, settings)->height(), 2 * (18 + 45 + 14));
    settings.margin = 144;
    settings.fontSize = 72;
    EXPECT_EQ(closeUpOf(letterPage(), 100, settings)->height(), 1584);
}

TEST(CloseUp, IsTruncatedToWholePixels)
{
    StampSettings settings;
    settings.fontSize = 10.3; // 2 × (18 + 15.45 + 14) = 94.9
    EXPECT_EQ(closeUpOf(letterPage(), 612, settings)->height(), 94);
}

TEST(CloseUp, OfANarrowPageCountsAPoint)
{
    QImage page(10, 1000, QImage::Format_RGBA8888_Premultiplied);
    page.fill(Qt::white);
    EXPECT_EQ(closeUpOf(page, 0.1, StampSettings())->size(), QSize(10, 470));
}

TEST(CloseUp, OfLessThanAPixelIsNone)
{
    QImage page(1, 1000, QImage::Format_RGBA8888_Premultiplied);
    page.fill(Qt::white);
    EXPECT_FALSE(closeUpOf(page, 14'400, StampSettings()));
}

} // namespace tallyfold
