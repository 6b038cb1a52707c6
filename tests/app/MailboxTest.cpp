#include "app/Mailbox.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>

#include <vector>

namespace tallyfold {

namespace {

bool send(QObject &object, QEvent::Type type)
{
    QEvent event(type);
    return QCoreApplication::sendEvent(&object, &event);
}

} // namespace

TEST(Mailbox, WhatIsPostedIsDoneInItsOrder)
{
    Mailbox mailbox;
    std::vector<int> done;
    for (int number = 0; number < 3; ++number) {
        mailbox.post([&done, number] { done.push_back(number); });
    }
    EXPECT_TRUE(done.empty());
    QCoreApplication::sendPostedEvents(&mailbox);
    EXPECT_EQ(done, (std::vector{0, 1, 2}));
}

TEST(Mailbox, OtherEventsDoNothingAndAreLeftToOthers)
{
    Mailbox mailbox;
    int done = 0;
    mailbox.post([&done] { ++done; });
    EXPECT_FALSE(send(mailbox, QEvent::SockAct));
    EXPECT_TRUE(send(mailbox, QEvent::User));
    EXPECT_EQ(done, 0);
    QCoreApplication::sendPostedEvents(&mailbox);
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(send(mailbox, QEvent::User));
    EXPECT_EQ(done, 1);
}

} // namespace tallyfold
