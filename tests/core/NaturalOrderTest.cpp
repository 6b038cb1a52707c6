#include "core/NaturalOrder.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(NaturalOrder, DigitsCompareByValue)
{
    const NaturalOrder order;
    EXPECT_LT(order.compare(QStringLiteral("2.pdf"), QStringLiteral("10.pdf")), 0);
    EXPECT_LT(order.compare(QStringLiteral("File 9"), QStringLiteral("file 10")), 0);
}

TEST(NaturalOrder, CaseAndAccentsAloneNeverDecide)
{
    const NaturalOrder order;
    EXPECT_EQ(order.compare(QStringLiteral("report"), QStringLiteral("REPORT")), 0);
    EXPECT_EQ(order.compare(QStringLiteral("resume"), QStringLiteral("résumé")), 0);
    EXPECT_NE(order.compare(QStringLiteral("a b"), QStringLiteral("ab")), 0);
}

TEST(NaturalOrder, NamesThatCompareTheSameKeepTheirPlaces)
{
    const std::vector<QString> names{QStringLiteral("b"),      QStringLiteral("A"), QStringLiteral("a"),
                                     QStringLiteral("\u00C0"), QStringLiteral("B"), QString(300, u'a')};
    EXPECT_EQ(NaturalOrder().sorted(names), (std::vector<std::size_t>{1, 2, 3, 5, 0, 4}));
}

} // namespace tallyfold
