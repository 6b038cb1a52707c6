#include "tests/support/Sample.h"
#include "tests/ui/WindowFixture.h"
#include "ui/preview/CloseUpPieces.h"
#include "ui/preview/PictureFrame.h"
#include "ui/preview/PreviewPane.h"
#include "ui/text/Messages.h"

#include <QLabel>
#include <QPainter>
#include <QScrollArea>

#include <fstream>

namespace tallyfold {

namespace {

class PreviewTest : public tests::WindowFixture {
protected:
    PreviewTest()
    {
        edit([](StampSettings &settings) { settings.color = StampColor(1, 0, 0, 1); });
        addPdfs({"a.pdf"});
        waitUntil([this] { return !model().hasPreviewTask(); });
    }

    /// Gives the preview's column `width`, and waits for what that asks for.
    void setColumn(int width)
    {
        app->mainView().resize(900 + width, 700);
        auto *columns = find<QSplitter>("columns");
        columns->setSizes({300, 600, width});
        waitUntil([this] { return !model().hasPreviewTask(); });
        QTest::qWait(0);
    }
    void settle()
    {
        waitUntil([this] { return !model().hasPreviewTask(); });
        QTest::qWait(0);
    }
    /// Where the stamp's ink is in what `widget` shows.
    static QRect ink(QWidget *widget)
    {
        return ink(widget->grab().toImage());
    }
    static QRect ink(const QImage &picture)
    {
        QRect found;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor color = picture.pixelColor(x, y);
                if (color.red() > 200 && color.green() < 160 && color.blue() < 160) {
                    found |= QRect(x, y, 1, 1);
                }
            }
        }
        return found;
    }
};

} // namespace

TEST_F(PreviewTest, TheCloseUpShowsTheWholeNumberLargerThanThePageInEveryPlaceAndWidth)
{
    for (const int width : {230, 530, 1000}) {
        setColumn(width);
        for (const StampPosition position : allStampPositions) {
            edit([&](StampSettings &settings) { settings.batesPosition = position; });
            settle();
            const QRect drawn = ink(model().previews()[0]);
            ASSERT_FALSE(drawn.isNull());
            const QRect shown = ink(find<QWidget>("closeUp"));
            // Of a picture made smaller, the ink at the edges is too faint to be found.
            const double scale = static_cast<double>(shown.width()) / drawn.width();
            const auto place =
                std::to_string(width) + " wide, at place " + std::to_string(static_cast<int>(position));
            EXPECT_GE(scale, 1.4 * find<QWidget>("page1")->width() / model().previews()[0].width()) << place;
            EXPECT_NEAR(shown.height(), drawn.height() * scale, 3) << "all of it, " << place;
        }
    }
}

TEST_F(PreviewTest, AFileThatCannotBeShownIsNamedWithTheReason)
{
    const std::string name(200, '0');
    std::ofstream(pdf(name + ".pdf"), std::ios::trunc) << "not a PDF";
    model().add(std::vector{folder / "sources" / (name + ".pdf")});
    settle();
    auto *pane = find<PreviewPane>("previewPane");
    EXPECT_TRUE(isShown("unshownFile"));
    EXPECT_EQ(text("unshownFile"), name + ".pdf");
    EXPECT_EQ(text("unshownReason"), messageOf(SourceProblem::unreadable).toStdString());
    EXPECT_LE(pane->minimumSizeHint().width(), 230);
    model().setSelection({model().sources().front().id});
    settle();
    EXPECT_FALSE(isShown("unshownFile"));
    EXPECT_TRUE(isShown("page1"));
    model().removeAll();
    settle();
    EXPECT_FALSE(isShown("unshownFile"));
    EXPECT_EQ(pane->currentIndex(), 0);
}

TEST(CloseUpPieces, AreTheWholeWhereItHasRoom)
{
    EXPECT_EQ(closeUpPieces(600, 600, {PageEnd::right}, 10), QList({CloseUpPiece{0, 600, 0}}));
    EXPECT_EQ(closeUpPieces(600, 900, {PageEnd::left, PageEnd::right}, 10), QList({CloseUpPiece{0, 600, 0}}));
}

TEST(CloseUpPieces, AreTheEndsThatBearLinesWhereItHasNot)
{
    EXPECT_EQ(closeUpPieces(600, 200, {PageEnd::left}, 10), QList({CloseUpPiece{0, 200, 0}}));
    EXPECT_EQ(closeUpPieces(600, 200, {PageEnd::center}, 10), QList({CloseUpPiece{200, 200, 0}}));
    EXPECT_EQ(closeUpPieces(600, 200, {PageEnd::right}, 10), QList({CloseUpPiece{400, 200, 0}}));
    EXPECT_EQ(closeUpPieces(600, 210, {PageEnd::left, PageEnd::right}, 10),
              QList({CloseUpPiece{0, 100, 0}, CloseUpPiece{500, 100, 110}}));
    EXPECT_EQ(closeUpPieces(600, 320, {PageEnd::left, PageEnd::center, PageEnd::right}, 10),
              QList({CloseUpPiece{0, 100, 0}, CloseUpPiece{250, 100, 110}, CloseUpPiece{500, 100, 220}}));
}

TEST(CloseUpPieces, ThatMeetAreOne)
{
    EXPECT_EQ(closeUpPieces(600, 410, {PageEnd::left, PageEnd::center}, 10),
              QList({CloseUpPiece{0, 410, 0}}));
    EXPECT_EQ(closeUpPieces(600, 410, {PageEnd::center, PageEnd::right}, 10),
              QList({CloseUpPiece{190, 410, 0}}));
    EXPECT_EQ(closeUpPieces(600, 409, {PageEnd::left, PageEnd::center}, 10).size(), 2);
}

TEST(CloseUpPieces, AreOfTheEdgeThatBearsTheNumber)
{
    StampSettings settings;
    EXPECT_EQ(stampedEnds(settings), std::set{PageEnd::right});
    settings.legend = QStringLiteral("SECRET");
    settings.pageOfTotal = true;
    EXPECT_EQ(stampedEnds(settings), (std::set{PageEnd::left, PageEnd::center, PageEnd::right}));
    settings.legendPosition = StampPosition::topCenter;
    EXPECT_EQ(stampedEnds(settings), (std::set{PageEnd::center, PageEnd::right}));
    settings.batesPosition = StampPosition::topLeft;
    EXPECT_EQ(stampedEnds(settings), (std::set{PageEnd::left, PageEnd::center}));
}

TEST_F(PreviewTest, LinesAtBothEndsOfANarrowColumnAreBothShown)
{
    edit([](StampSettings &settings) { settings.legend = QStringLiteral("SECRET"); });
    for (const int width : {330, 331}) {
        setColumn(width);
        const QImage closeUp = find<QWidget>("closeUp")->grab().toImage();
        const int half = closeUp.width() / 2;
        EXPECT_FALSE(ink(closeUp.copy(0, 0, half, closeUp.height())).isNull());
        EXPECT_FALSE(ink(closeUp.copy(half, 0, half, closeUp.height())).isNull());
        for (const int side : {0, closeUp.width() - 1}) {
            EXPECT_NE(closeUp.pixelColor(side, closeUp.height() / 2), QColor(Qt::white)) << "framed " << side;
        }
    }
}

TEST_F(PreviewTest, PagesAreNoWiderThanTheirPictureHasPixels)
{
    setColumn(4000);
    const auto *page = find<PreviewImage>("page1");
    EXPECT_EQ(page->image().width(), 2400);
    EXPECT_EQ(page->width(), 1600);
    const int left = page->mapTo(find<QScrollArea>("previewScroll")->viewport(), QPoint()).x();
    EXPECT_NEAR(left, (find<QScrollArea>("previewScroll")->viewport()->width() - 1600) / 2, 1);
    setColumn(530);
    EXPECT_EQ(find<PreviewImage>("page1")->image().width(), 1200);
}

TEST(PreviewFrame, HasItsFourSidesAtEveryScaleAndPlace)
{
    const QColor ground(Qt::green);
    QWidget column;
    column.setPalette(QPalette(ground));
    column.resize(200, 200);
    auto *page = new PreviewImage(&column);
    QImage paper(1200, 1200, QImage::Format_RGB32);
    paper.fill(Qt::white);
    page->setImage(paper);
    column.show();
    /// Whether there is a line between the ground at `outside` and the paper that a step at a time leads to.
    const auto hasLine = [&](const QImage &picture, QPoint outside, QPoint step) {
        QPoint at = outside;
        while (picture.pixelColor(at) == ground) {
            at += step;
        }
        return picture.pixelColor(at) != QColor(Qt::white);
    };
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        for (int offset = 10; offset < 18; ++offset) {
            page->setGeometry(offset, offset, 100 + offset / 2, page->height());
            QImage picture((QSizeF(column.size()) * scale).toSize(), QImage::Format_RGB32);
            picture.setDevicePixelRatio(scale);
            column.render(&picture);
            const int middle = qRound((offset + 50) * scale);
            const int end = qRound(190 * scale);
            const auto place =
                ", " + std::to_string(offset) + " from the edge, at scale " + std::to_string(scale);
            EXPECT_TRUE(hasLine(picture, QPoint(0, middle), QPoint(1, 0))) << "left" << place;
            EXPECT_TRUE(hasLine(picture, QPoint(middle, 0), QPoint(0, 1))) << "top" << place;
            EXPECT_TRUE(hasLine(picture, QPoint(end, middle), QPoint(-1, 0))) << "right" << place;
            EXPECT_TRUE(hasLine(picture, QPoint(middle, end), QPoint(0, -1))) << "bottom" << place;
        }
    }
}

} // namespace tallyfold
