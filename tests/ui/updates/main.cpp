#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int count, char **values)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, values);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tallyfold"));
    testing::InitGoogleTest(&count, values);
    return RUN_ALL_TESTS();
}
