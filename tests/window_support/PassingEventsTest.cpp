#include "window_support/CloseGuard.h"
#include "window_support/WindowReader.h"
#include "window_support/WindowUndoManagerReader.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>

namespace tallyfold {

namespace {

/// A widget that counts the events of users' kind that reach it.
class Counting final : public QWidget {
public:
    int count = 0;

protected:
    bool event(QEvent *event) override
    {
        count += event->type() == QEvent::User ? 1 : 0;
        return event->type() == QEvent::User || QWidget::event(event);
    }
};

bool send(QObject &object, QEvent::Type type)
{
    QEvent event(type);
    return QApplication::sendEvent(&object, &event);
}

} // namespace

TEST(PassingEvents, AGuardedWindowGetsWhatDoesNotCloseIt)
{
    CloseGuard guard;
    guard.shouldClose = [] { return false; };
    Counting window;
    guard.install(&window);
    EXPECT_TRUE(send(window, QEvent::User));
    EXPECT_EQ(window.count, 1);
}

TEST(PassingEvents, AWindowThatIsReadGetsItsEvents)
{
    Counting window;
    const WindowReader reader([](QWidget *) {}, &window);
    EXPECT_TRUE(send(window, QEvent::User));
    EXPECT_EQ(window.count, 1);
}

TEST(PassingEvents, AReaderTellsWhetherItHandledAnEventAsAnyWidgetDoes)
{
    QWidget window;
    WindowReader reader([](QWidget *) {}, &window);
    EXPECT_TRUE(send(reader, QEvent::User));
    EXPECT_FALSE(send(reader, QEvent::SockAct));
}

TEST(PassingEvents, AReaderThatIsAskedAgainWhileItTellsTellsOnce)
{
    int told = 0;
    WindowReader *asked = nullptr;
    WindowReader reader([&](QWidget *) {
        if (++told < 5) {
            send(*asked, QEvent::ParentChange);
        }
    });
    asked = &reader;
    QWidget window;
    reader.setParent(&window);
    EXPECT_EQ(told, 1);
    reader.setParent(nullptr);
}

TEST(PassingEvents, ReadersTakeNoRoomAndNoFocus)
{
    QWidget window;
    const WindowReader reader([](QWidget *) {}, &window);
    EXPECT_EQ(reader.minimumSize(), QSize(0, 0));
    EXPECT_EQ(reader.maximumSize(), QSize(0, 0));
    EXPECT_EQ(reader.focusPolicy(), Qt::NoFocus);
    const WindowUndoManagerReader undoReader([](QUndoStack *) {}, &window);
    EXPECT_EQ(undoReader.minimumSize(), QSize(0, 0));
    EXPECT_EQ(undoReader.maximumSize(), QSize(0, 0));
}

} // namespace tallyfold
