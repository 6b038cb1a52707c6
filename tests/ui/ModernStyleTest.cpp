#include "ui/theme/ModernStyle.h"

#include "tests/ui/Contrast.h"
#include "ui/controls/ColorWell.h"
#include "ui/controls/Picker.h"
#include "ui/controls/PositionGrid.h"
#include "ui/controls/Stepper.h"
#include "ui/controls/TextField.h"
#include "ui/theme/Tones.h"

#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QPainter>
#include <QProgressBar>
#include <QStyleOptionMenuItem>
#include <QTabBar>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

namespace tallyfold {

namespace {

/// Controls in the style and the two palettes of desktops that bring none.
class ModernStyleTest : public testing::Test {
protected:
    ModernStyleTest()
    {
        QApplication::setStyle(std::make_unique<ModernStyle>().release());
    }
    ~ModernStyleTest() override
    {
        QApplication::setPalette(m_paletteBefore);
        QApplication::setStyle(m_styleBefore);
    }

    /// The highest contrast to `ground` in the part `place` of `picture`.
    static double mostContrast(const QImage &picture, const QRect &place, const QColor &ground)
    {
        double most = 1;
        for (int x = place.left(); x <= place.right(); ++x) {
            for (int y = place.top(); y <= place.bottom(); ++y) {
                most = std::max(most, tests::contrast(picture.pixelColor(x, y), ground));
            }
        }
        return most;
    }
    /// What `draw` draws on `ground`.
    static QImage drawn(QSize size, const QColor &ground, const std::function<void(QPainter &)> &draw)
    {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(ground);
        QPainter painter(&picture);
        draw(painter);
        return picture;
    }

private:
    QPalette m_paletteBefore = QApplication::palette();
    QString m_styleBefore = QApplication::style()->name();
};

} // namespace

TEST_F(ModernStyleTest, AProgressBarShowsWhatIsDoneFromTheFirstHundredthOn)
{
    QProgressBar bar;
    bar.setTextVisible(false);
    bar.setRange(0, 20'000);
    bar.resize(352, 24);
    const auto inked = [&bar](int value, Qt::LayoutDirection direction) {
        bar.setValue(value);
        bar.setLayoutDirection(direction);
        const QImage picture = bar.grab().toImage();
        const QColor accent = colorOf(Tone::accent, bar.palette());
        std::vector<int> columns;
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, picture.height() / 2) == accent) {
                columns.push_back(x);
            }
        }
        return columns;
    };
    EXPECT_TRUE(inked(0, Qt::LeftToRight).empty());
    const std::vector<int> few = inked(400, Qt::LeftToRight);
    ASSERT_FALSE(few.empty());
    EXPECT_LT(few.front(), 3);
    EXPECT_LT(few.back(), 12);
    const std::vector<int> fewFromRight = inked(400, Qt::RightToLeft);
    ASSERT_FALSE(fewFromRight.empty());
    EXPECT_GT(fewFromRight.front(), 340);
    EXPECT_NEAR(inked(10'000, Qt::LeftToRight).back(), 175, 2);
    EXPECT_NEAR(inked(10'000, Qt::RightToLeft).front(), 176, 2);
    EXPECT_GT(inked(20'000, Qt::LeftToRight).size(), 348U);
}

TEST_F(ModernStyleTest, EdgesOfWhatIsTypedInOrChosenAreSeen)
{
    // WCAG 2.1, 1.4.11: the parts of a control have a contrast of 3 at least.
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        QWidget card;
        card.setBackgroundRole(QPalette::Base);
        card.setAutoFillBackground(true);
        QVBoxLayout layout(&card);
        auto *stepper = new Stepper(1, 9, 1, [](double value) { return QString::number(value); });
        const QList<QWidget *> controls{new QWidget, new TextField, stepper, new Picker, new ColorWell};
        for (QWidget *control : controls) {
            layout.addWidget(control);
        }
        controls.first()->setFocusPolicy(Qt::StrongFocus);
        auto *box = new QCheckBox;
        layout.addWidget(box);
        card.show();
        controls.first()->setFocus();
        const QImage picture = card.grab().toImage();
        const QColor ground = palette.color(QPalette::Base);
        for (const QWidget *control : controls.mid(1)) {
            const QRect left(control->x(), control->geometry().center().y(), 3, 1);
            EXPECT_GE(mostContrast(picture, left, ground), 3) << control->metaObject()->className();
        }
        EXPECT_GE(mostContrast(picture, QRect(box->x(), box->geometry().center().y(), 6, 1), ground), 3);
    }
}

TEST_F(ModernStyleTest, SpotsThatAreNotChosenAreSeen)
{
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        PositionGrid grid(QStringLiteral("Bates number"));
        grid.setSelection(StampPosition::bottomRight);
        grid.show();
        const QWidget *spot = grid.spot(StampPosition::topLeft);
        const QImage picture = grid.grab().toImage();
        const QPoint middle = spot->mapTo(&grid, spot->rect().center());
        EXPECT_GE(tests::contrast(picture.pixelColor(middle), palette.color(QPalette::Base)), 3);
    }
}

TEST_F(ModernStyleTest, AnEntryThatIsPointedToStandsOnARoundGroundOfTheAccent)
{
    QMenu menu;
    menu.addAction(QStringLiteral("Add PDFs…"));
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        QStyleOptionMenuItem entry;
        entry.initFrom(&menu);
        entry.palette = palette;
        entry.rect = QRect(0, 0, 200, 28);
        entry.text = QStringLiteral("Add PDFs…");
        entry.menuItemType = QStyleOptionMenuItem::Normal;
        entry.state = QStyle::State_Enabled | QStyle::State_Selected | QStyle::State_Active;
        const QColor ground = palette.color(QPalette::Base);
        const QImage picture = drawn(entry.rect.size(), ground, [&](QPainter &painter) {
            QApplication::style()->drawControl(QStyle::CE_MenuItem, &entry, &painter, &menu);
        });
        EXPECT_EQ(picture.pixelColor(0, 0), ground);
        const QColor accent = colorOf(Tone::accent, palette);
        EXPECT_EQ(picture.pixelColor(190, 14), accent);
        EXPECT_GE(mostContrast(picture, QRect(20, 4, 120, 20), accent), 4) << "its text is read";
    }
}

TEST_F(ModernStyleTest, MenusAndHelpTextsHaveTheGroundAndEdgeOfTheRest)
{
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        for (const auto &[element, role] : {std::pair(QStyle::PE_PanelMenu, QPalette::Base),
                                            std::pair(QStyle::PE_PanelTipLabel, QPalette::ToolTipBase)}) {
            QStyleOptionFrame frame;
            frame.palette = palette;
            frame.rect = QRect(0, 0, 60, 40);
            const QImage picture = drawn(frame.rect.size(), Qt::red, [&](QPainter &painter) {
                QApplication::style()->drawPrimitive(element, &frame, &painter);
            });
            EXPECT_EQ(picture.pixelColor(30, 20), palette.color(role));
            EXPECT_EQ(picture.pixelColor(0, 0), colorOf(Tone::edge, palette));
            EXPECT_EQ(picture.pixelColor(59, 39), colorOf(Tone::edge, palette));
        }
    }
}

TEST_F(ModernStyleTest, TheChosenTabIsUnderlinedWithTheAccent)
{
    QTabBar tabs;
    tabs.addTab(QStringLiteral("General"));
    tabs.addTab(QStringLiteral("Other"));
    tabs.setStyle(QApplication::style());
    tabs.show();
    const QImage picture = tabs.grab().toImage();
    const QColor accent = colorOf(Tone::accent, tabs.palette());
    const auto isUnderlined = [&](int tab) {
        const QRect place = tabs.tabRect(tab);
        return picture.pixelColor(place.center().x(), place.bottom() - 1) == accent;
    };
    EXPECT_TRUE(isUnderlined(0));
    EXPECT_FALSE(isUnderlined(1));
}

TEST_F(ModernStyleTest, ArrowsPointWhereTheySay)
{
    const auto inkOf = [](QStyle::PrimitiveElement element) {
        QStyleOption option;
        option.palette = lightPalette();
        option.state = QStyle::State_Enabled;
        option.rect = QRect(0, 0, 20, 20);
        const QImage picture = drawn(option.rect.size(), Qt::white, [&](QPainter &painter) {
            QApplication::style()->drawPrimitive(element, &option, &painter);
        });
        QPointF sum;
        double weight = 0;
        for (int x = 0; x < 20; ++x) {
            for (int y = 0; y < 20; ++y) {
                const double ink = 255 - picture.pixelColor(x, y).lightness();
                // Farther out to the sides, where a chevron begins and not where it points to.
                const double reach = std::max(std::abs(x - 9.5), std::abs(y - 9.5));
                sum += reach > 2.5 ? QPointF(x - 9.5, y - 9.5) * ink : QPointF();
                weight += reach > 2.5 ? ink : 0;
            }
        }
        return weight > 0 ? sum / weight : QPointF();
    };
    EXPECT_LT(inkOf(QStyle::PE_IndicatorArrowDown).y(), -0.5);
    EXPECT_GT(inkOf(QStyle::PE_IndicatorArrowUp).y(), 0.5);
    EXPECT_LT(inkOf(QStyle::PE_IndicatorArrowRight).x(), -0.5);
    EXPECT_GT(inkOf(QStyle::PE_IndicatorArrowLeft).x(), 0.5);
}

} // namespace tallyfold
