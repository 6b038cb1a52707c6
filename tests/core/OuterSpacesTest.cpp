#include "core/OuterSpaces.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(OuterSpaces, SpacesOfEveryWidthAndTabsGoFromBothEnds)
{
    // Tab, and every character of the general category Zs.
    const QString spaces =
        QStringLiteral("\t \u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008"
                       "\u2009\u200A\u202F\u205F\u3000");
    for (const QChar space : spaces) {
        EXPECT_EQ(withoutOuterSpaces(space), QString()) << int{space.unicode()};
        EXPECT_EQ(withoutOuterSpaces(space + QStringLiteral("a") + space + QStringLiteral("b") + space),
                  QStringLiteral("a") + space + QStringLiteral("b"))
            << int{space.unicode()};
    }
    EXPECT_EQ(withoutOuterSpaces(spaces), QString());
    EXPECT_EQ(withoutOuterSpaces(spaces + QStringLiteral("a") + spaces), QStringLiteral("a"));
}

TEST(OuterSpaces, LineBreaksAndWhatHasNoWidthStay)
{
    for (const char16_t other : u"\n\v\f\r\u0085\u2028\u2029\u180E\u200B\uFEFF") {
        const QString text = other == 0 ? QString() : QString(QChar(other));
        EXPECT_EQ(withoutOuterSpaces(u' ' + text + u' '), text) << int{other};
    }
}

} // namespace tallyfold
