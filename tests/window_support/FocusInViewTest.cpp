#include "window_support/FocusInView.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

/// A window with a field beside a scroll area of fifty buttons, of which it shows a few.
class FocusInViewTest : public testing::Test {
protected:
    FocusInViewTest()
    {
        auto *buttons = new QWidget;
        auto *column = new QVBoxLayout(buttons);
        for (int index = 0; index < 50; ++index) {
            m_buttons.append(new QPushButton(QString::number(index)));
            column->addWidget(m_buttons.back());
        }
        m_area->setWidget(buttons);
        m_area->setFixedHeight(120);
        auto *layout = new QVBoxLayout(&m_window);
        layout->addWidget(m_field);
        layout->addWidget(m_area);
        m_window.show();
        m_window.activateWindow();
        m_field->setFocus();
        QTest::qWait(0);
    }

    [[nodiscard]] bool isInView(const QWidget *widget) const
    {
        const QRect place(widget->mapTo(m_area->viewport(), QPoint(0, 0)), widget->size());
        return m_area->viewport()->rect().contains(place);
    }

    FocusInView m_focusInView;
    QWidget m_window;
    QLineEdit *m_field = new QLineEdit;
    QScrollArea *m_area = new QScrollArea;
    QList<QPushButton *> m_buttons;
};

} // namespace

TEST_F(FocusInViewTest, AFocusThatTheProgramSetsIsInView)
{
    for (const int index : {49, 0, 25}) {
        m_field->setFocus();
        m_buttons[index]->setFocus();
        EXPECT_TRUE(isInView(m_buttons[index])) << index;
    }
}

TEST_F(FocusInViewTest, AFocusBesideWhatIsScrolledMovesNothing)
{
    m_area->verticalScrollBar()->setValue(100);
    auto *beside = new QPushButton(m_area);
    beside->show();
    beside->setFocus();
    EXPECT_EQ(m_area->verticalScrollBar()->value(), 100);
    delete m_area->takeWidget();
    m_field->setFocus();
    beside->setFocus();
    EXPECT_TRUE(beside->hasFocus()) << "nor where there is nothing to scroll";
    m_buttons.clear();
}

TEST_F(FocusInViewTest, WhatIsClickedStaysUnderThePointer)
{
    m_area->verticalScrollBar()->setValue(m_buttons[10]->y() + m_buttons[10]->height() / 2);
    const int before = m_area->verticalScrollBar()->value();
    ASSERT_FALSE(isInView(m_buttons[10])) << "half of it is in sight";
    QTest::mousePress(m_buttons[10], Qt::LeftButton);
    EXPECT_EQ(m_area->verticalScrollBar()->value(), before);
    QTest::mouseRelease(m_buttons[10], Qt::LeftButton);
}

} // namespace tallyfold
