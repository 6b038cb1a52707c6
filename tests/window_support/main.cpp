#include <QApplication>

#include <gtest/gtest.h>

int main(int count, char **values)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, values);
    testing::InitGoogleTest(&count, values);
    return RUN_ALL_TESTS();
}
