// What is shown while files are read.

#include "ui/sheets/ReadingView.h"

#include "app/LooseTask.h"
#include "tests/app/HeldReader.h"
#include "tests/ui/WindowFixture.h"
#include "ui/text/ReadingText.h"

#include <QAccessible>
#include <QCursor>
#include <QProgressBar>
#include <QTimer>

namespace tallyfold {

namespace {

/// Counts how often a widget is painted.
class Paintings final : public QObject {
public:
    explicit Paintings(QWidget &widget)
    {
        widget.installEventFilter(this);
    }
    [[nodiscard]] int count() const
    {
        return m_count;
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(object, event);
    }

private:
    int m_count = 0;
};

class Reading : public tests::WindowFixture {
protected:
    Reading()
    {
        reader = tests::readerHeldAt(gate, "held.pdf");
        patience = std::chrono::milliseconds(0);
        restart();
    }
    ~Reading() override
    {
        gate.open();
        EXPECT_TRUE(waitUntil([] { return !LooseTask::isAnyLeft(); }));
    }

    /// Does `then` in the events that happen while files are read, once what is read is shown.
    void whenShown(const std::function<void()> &then)
    {
        QTimer::singleShot(0, app.get(), [this, then] {
            EXPECT_TRUE(waitUntil([] { return isShown("readingView"); }));
            then();
        });
    }
    /// The same once so many were read.
    void whenRead(int count, const std::function<void()> &then)
    {
        whenShown([this, count, then] {
            EXPECT_TRUE(waitUntil([&] { return find<QProgressBar>("readingProgress")->value() == count; }));
            then();
        });
    }
    static std::optional<Qt::CursorShape> overrideCursor()
    {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        return cursor != nullptr ? std::optional(cursor->shape()) : std::nullopt;
    }

    tests::Gate gate;
};

} // namespace

TEST(ReadingText, TellsWhichFileItIsTheTurnOf)
{
    EXPECT_EQ(readingText({std::nullopt, 0}), QStringLiteral("Looking for PDFs…"));
    EXPECT_EQ(readingText({20'000, 0}), QStringLiteral("Reading 1 of 20,000…"));
    EXPECT_EQ(readingText({20'000, 1233}), QStringLiteral("Reading 1,234 of 20,000…"));
    EXPECT_EQ(readingText({20'000, 20'000}), QStringLiteral("Reading 20,000 of 20,000…"));
    EXPECT_EQ(readingText({1, 0}), QStringLiteral("Reading 1 of 1…"));
}

TEST_F(Reading, IsShownAfterASecond)
{
    EXPECT_EQ(WindowReadingPanel::usualPatience, std::chrono::seconds(1));
    EXPECT_EQ(TallyfoldApp::systemParts().patience, WindowReadingPanel::usualPatience);
}

TEST_F(Reading, ThatIsOverBeforeShowsNothingButAnotherCursor)
{
    patience = std::chrono::hours(1);
    restart();
    std::optional<Qt::CursorShape> meanwhile;
    QObject::connect(&model(), &AppModel::sourcesChanged, app.get(), [&] { meanwhile = overrideCursor(); });
    QTimer::singleShot(0, app.get(), [] { ADD_FAILURE() << "events happen meanwhile"; });
    addPdfs({"a.pdf", "b.pdf"});
    QCoreApplication::removePostedEvents(app.get());
    EXPECT_EQ(meanwhile, Qt::WaitCursor);
    EXPECT_EQ(overrideCursor(), std::nullopt);
    EXPECT_EQ(app->mainView().findChild<QWidget *>(QStringLiteral("readingView")), nullptr);
    EXPECT_EQ(listed(), "a.pdf b.pdf");
}

TEST_F(Reading, IsFollowedWhileTheWindowIsPaintedAndEscapeKeepsWhatWasRead)
{
    const Paintings paintings(app->mainView());
    whenRead(2, [&] {
        EXPECT_EQ(text("readingText"), "Reading 3 of 4…");
        auto *progress = find<QProgressBar>("readingProgress");
        EXPECT_EQ(progress->maximum(), 4);
        EXPECT_EQ(overrideCursor(), Qt::BusyCursor) << "there is something to click";
        const int before = paintings.count();
        app->mainView().update();
        EXPECT_TRUE(waitUntil([&] { return paintings.count() > before; }));
        auto *view = find<QWidget>("readingView");
        EXPECT_EQ(QApplication::activeModalWidget(), view);
        QTest::keyClick(view, Qt::Key_Escape);
    });
    addPdfs({"1.pdf", "2.pdf", "held.pdf", "3.pdf"});
    EXPECT_EQ(listed(), "1.pdf 2.pdf");
    EXPECT_EQ(overrideCursor(), std::nullopt);
    EXPECT_EQ(app->mainView().undoStack().count(), 1);
    app->mainView().undoStack().undo();
    EXPECT_EQ(listed(), "");
}

TEST_F(Reading, IsStoppedByItsButtonAsWell)
{
    whenRead(1, [this] {
        EXPECT_EQ(text("stopReading"), "Stop");
        QTest::keyClick(find<QWidget>("readingView"), Qt::Key_Return);
        EXPECT_TRUE(isShown("readingView")) << "Return was meant for something else";
        click("stopReading");
    });
    addPdfs({"1.pdf", "held.pdf"});
    EXPECT_EQ(listed(), "1.pdf");
}

TEST_F(Reading, ClosesItsViewWhenAllWereRead)
{
    whenRead(1, [this] { gate.open(); });
    addPdfs({"1.pdf", "held.pdf", "2.pdf"});
    EXPECT_EQ(listed(), "1.pdf held.pdf 2.pdf");
    EXPECT_FALSE(isShown("readingView"));
}

TEST_F(Reading, TellsWhatItDoesToThoseWhoDoNotSeeIt)
{
    whenRead(1, [this] {
        auto *progress = find<QProgressBar>("readingProgress");
        QAccessibleInterface *bar = QAccessible::queryAccessibleInterface(progress);
        EXPECT_EQ(bar->role(), QAccessible::ProgressBar);
        EXPECT_EQ(bar->text(QAccessible::Name), QStringLiteral("Reading 2 of 2…"));
        EXPECT_EQ(bar->valueInterface()->currentValue(), 1);
        EXPECT_EQ(bar->valueInterface()->maximumValue(), 2);
        QAccessibleInterface *label = QAccessible::queryAccessibleInterface(find<QWidget>("readingText"));
        EXPECT_EQ(label->role(), QAccessible::Notification);
        EXPECT_EQ(label->text(QAccessible::Name), QStringLiteral("Reading 2 of 2…"));
        auto *view = find<QWidget>("readingView");
        EXPECT_EQ(QAccessible::queryAccessibleInterface(view)->text(QAccessible::Name),
                  QStringLiteral("Reading PDFs"));
        gate.open();
    });
    addPdfs({"1.pdf", "held.pdf"});
}

TEST_F(Reading, NothingElseTakesClicks)
{
    const auto clickAdd = [this] {
        auto *add = find<QWidget>("toolbarAdd");
        QTest::mouseClick(add->window()->windowHandle(), Qt::LeftButton, {},
                          add->mapTo(add->window(), add->rect().center()));
    };
    whenRead(1, [&] {
        clickAdd();
        EXPECT_TRUE(panels->asked.empty());
        gate.open();
    });
    addPdfs({"1.pdf", "held.pdf"});
    clickAdd();
    EXPECT_EQ(panels->asked.size(), 1U);
}

TEST_F(Reading, FilesThatAreHandedOverMeanwhileComeNext)
{
    whenRead(1, [this] {
        app->reopen({pdf("other.pdf")});
        EXPECT_EQ(listed(), "");
        EXPECT_EQ(QApplication::activeModalWidget(), find<QWidget>("readingView")) << "still before all else";
        gate.open();
    });
    addPdfs({"1.pdf", "held.pdf"});
    EXPECT_EQ(listed(), "1.pdf held.pdf");
    EXPECT_TRUE(waitUntil([this] { return listed() == "1.pdf held.pdf other.pdf"; }));
}

TEST_F(Reading, WhatElseIsToBeToldWaits)
{
    whenRead(1, [this] {
        model().setProblem(QStringLiteral("A run failed."));
        EXPECT_EQ(app->mainView().sheets().current(), nullptr);
        gate.open();
    });
    addPdfs({"1.pdf", "held.pdf"});
    ASSERT_NE(app->mainView().sheets().current(), nullptr);
    EXPECT_EQ(text("alertText"), "A run failed.");
}

TEST_F(Reading, IsStoppedByClosingItsView)
{
    whenRead(1, [this] { find<QWidget>("readingView")->close(); });
    addPdfs({"1.pdf", "held.pdf"});
    EXPECT_EQ(listed(), "1.pdf");
}

TEST_F(Reading, GoesOnWhereTheWindowIsClosed)
{
    whenRead(1, [this] {
        app->mainView().close();
        gate.open();
    });
    addPdfs({"1.pdf", "held.pdf"});
    EXPECT_EQ(listed(), "1.pdf held.pdf");
    app->reopen({});
    EXPECT_TRUE(app->mainView().isVisible());
}

TEST_F(Reading, EndsWithTheProgram)
{
    bool isBack = false;
    QTimer::singleShot(0, app.get(), [&] {
        whenRead(1, [this] { app->quit(); });
        addPdfs({"1.pdf", "held.pdf"});
        isBack = true;
    });
    QApplication::exec();
    EXPECT_TRUE(isBack);
    EXPECT_FALSE(app->mainView().isVisible());
    EXPECT_FALSE(model().isReading());
}

} // namespace tallyfold
