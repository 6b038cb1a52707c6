#include "window_support/WindowReader.h"
#include "window_support/WindowUndoManagerReader.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace tallyfold {

TEST(WindowReader, TellsTheWindowItComesInto)
{
    std::vector<QWidget *> found;
    auto reader = std::make_unique<WindowReader>([&found](QWidget *window) { found.push_back(window); });
    EXPECT_TRUE(found.empty());
    QWidget first;
    QWidget inside(&first);
    reader->setParent(&inside);
    EXPECT_EQ(found, (std::vector<QWidget *>{&first}));
    QWidget second;
    reader->setParent(&second);
    EXPECT_EQ(found, (std::vector<QWidget *>{&first, &second}));
    reader->setParent(nullptr);
    EXPECT_EQ(found.size(), 2U);
    reader->setParent(&second);
    EXPECT_EQ(found.size(), 3U) << "it had left it";
    QWidget within(&second);
    reader->setParent(&within);
    EXPECT_EQ(found.size(), 3U) << "it is still in it";
    reader->setParent(nullptr);
}

TEST(WindowReader, TellsOfAWindowThatWhatHoldsItIsMovedInto)
{
    std::vector<QWidget *> found;
    QWidget first;
    QWidget second;
    QWidget inside(&first);
    const WindowReader reader([&found](QWidget *window) { found.push_back(window); }, &inside);
    inside.setParent(&second);
    EXPECT_EQ(found, (std::vector<QWidget *>{&first, &second}));
}

TEST(WindowUndoManagerReader, TellsTheUndoStackOfTheWindow)
{
    QWidget window;
    QUndoStack undo(&window);
    std::vector<QUndoStack *> found;
    const WindowUndoManagerReader reader([&found](QUndoStack *stack) { found.push_back(stack); }, &window);
    EXPECT_EQ(found, (std::vector<QUndoStack *>{&undo}));
}

TEST(WindowUndoManagerReader, TellsWhenThereIsNone)
{
    QWidget window;
    QWidget part(&window);
    const QUndoStack ofThePart(&part);
    std::vector<QUndoStack *> found;
    const WindowUndoManagerReader reader([&found](QUndoStack *stack) { found.push_back(stack); }, &window);
    EXPECT_EQ(found, (std::vector<QUndoStack *>{nullptr}));
}

} // namespace tallyfold
