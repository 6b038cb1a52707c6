#include "core/SharedWork.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

namespace tallyfold {

TEST(SharedWork, ThatSucceedsIsDoneOnce)
{
    SharedWork work;
    int attempts = 0;
    work.run([&] { return ++attempts > 0; });
    EXPECT_EQ(attempts, 1);
}

TEST(SharedWork, ThatFailsAloneIsNotRepeated)
{
    SharedWork work;
    int attempts = 0;
    for (int times = 1; times <= 2; ++times) { // One that is over is no other.
        work.run([&] { return ++attempts < 0; });
        EXPECT_EQ(attempts, times);
    }
}

TEST(SharedWork, ThatFailsBesideAnotherIsRepeatedWhenThatIsOver)
{
    SharedWork work;
    std::promise<void> isOtherUnderWay;
    std::promise<void> mayOtherEnd;
    std::atomic<bool> isOtherOver = false;
    std::thread other([&] {
        work.run([&] {
            isOtherUnderWay.set_value();
            mayOtherEnd.get_future().wait();
            isOtherOver = true;
            return true;
        });
    });
    isOtherUnderWay.get_future().wait();
    int attempts = 0;
    work.run([&] {
        if (++attempts == 1) {
            EXPECT_FALSE(isOtherOver);
            mayOtherEnd.set_value();
            return false;
        }
        EXPECT_TRUE(isOtherOver);
        return false;
    });
    EXPECT_EQ(attempts, 2) << "and not once more";
    other.join();
}

TEST(SharedWork, ThatFailsAfterAnotherBeganBesideItIsRepeated)
{
    SharedWork work;
    int attempts = 0;
    work.run([&] {
        if (++attempts == 1) {
            std::thread([&] { work.run([] { return true; }); }).join();
        }
        return false;
    });
    EXPECT_EQ(attempts, 2) << "the other is over, and had its part in the failure all the same";
}

} // namespace tallyfold
