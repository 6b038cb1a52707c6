#include "app/Translations.h"

#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

int main(int count, char **values)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, values);
    QApplication::setApplicationDisplayName(QStringLiteral("Tallyfold"));
    QLocale::setDefault(QLocale(QStringLiteral("en_US")));
    const tallyfold::Translations translations;
    testing::InitGoogleTest(&count, values);
    return RUN_ALL_TESTS();
}
