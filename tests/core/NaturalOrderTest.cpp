#include "core/NaturalOrder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace tallyfold {

namespace {

constexpr std::array<const char *, 4> localeVariables{"LC_ALL", "LC_COLLATE", "LC_MESSAGES", "LANG"};

/// An environment without a locale during its lifetime.
class NoLocale {
public:
    NoLocale()
    {
        for (const char *name : localeVariables) {
            if (const char *value = std::getenv(name)) {
                m_before[name] = value;
            }
            ::unsetenv(name);
        }
    }
    ~NoLocale()
    {
        for (const char *name : localeVariables) {
            ::unsetenv(name);
        }
        for (const auto &[name, value] : m_before) {
            ::setenv(name.c_str(), value.c_str(), 1);
        }
    }
    NoLocale(const NoLocale &) = delete;
    NoLocale &operator=(const NoLocale &) = delete;

private:
    std::map<std::string, std::string> m_before;
};

/// Whether names are ordered as in Swedish, where "ä" is the second to last letter, with these values of
/// LC_ALL, LC_COLLATE, LC_MESSAGES and LANG.
bool isSwedish(const std::array<const char *, 4> &values)
{
    const NoLocale none;
    for (std::size_t index = 0; index < values.size(); ++index) {
        if (values[index] != nullptr) {
            ::setenv(localeVariables[index], values[index], 1);
        }
    }
    const NaturalOrder order;
    const int compared = order.compare(QStringLiteral("ä"), QStringLiteral("z"));
    EXPECT_NE(compared, 0);
    EXPECT_EQ(order.sorted({QStringLiteral("ä"), QStringLiteral("z")}).front(), compared > 0 ? 1U : 0U);
    return compared > 0;
}

constexpr const char *unset = nullptr;
constexpr const char *swedish = "sv_SE.UTF-8";
constexpr const char *german = "de_DE.UTF-8";

} // namespace

TEST(NaturalOrder, TheLocaleIsThatOfCollation)
{
    EXPECT_TRUE(isSwedish({swedish, german, german, german}));
    EXPECT_TRUE(isSwedish({unset, swedish, german, german}));
    EXPECT_TRUE(isSwedish({unset, unset, german, swedish}));
    EXPECT_FALSE(isSwedish({german, swedish, swedish, swedish}));
    EXPECT_FALSE(isSwedish({unset, german, swedish, swedish}));
    EXPECT_FALSE(isSwedish({unset, unset, swedish, german}));
}

TEST(NaturalOrder, IgnoresTheLanguageOfMessagesAndEmptyVariables)
{
    EXPECT_FALSE(isSwedish({unset, unset, swedish, unset}));
    EXPECT_TRUE(isSwedish({"", swedish, german, german}));
    EXPECT_TRUE(isSwedish({"", "", german, swedish}));
    EXPECT_FALSE(isSwedish({"", "", swedish, ""}));
}

TEST(NaturalOrder, WithoutALocaleNamesAreInTheOrderThatLanguagesShare)
{
    for (const char *none : {"C", "POSIX", "C.UTF-8", "C.utf8"}) {
        EXPECT_FALSE(isSwedish({none, swedish, swedish, swedish})) << none;
        EXPECT_FALSE(isSwedish({unset, none, swedish, swedish})) << none;
    }
    for (const char *unknown : {"xx_XX.UTF-8", "/usr/lib/locale/sv_SE", "@", ".", "_", "???"}) {
        EXPECT_FALSE(isSwedish({unset, unknown, swedish, swedish})) << unknown;
    }
}

TEST(NaturalOrder, LocalesAreNamedAsPosixNamesThem)
{
    for (const char *name :
         {"sv", "sv_SE", "sv_FI", "sv_SE.UTF-8", "sv_SE.iso88591", "sv_SE@euro", "sv_FI.ISO-8859-15@euro"}) {
        EXPECT_TRUE(isSwedish({name, unset, unset, unset})) << name;
    }
}

TEST(NaturalOrder, TheScriptOfALocaleCounts)
{
    const NoLocale none;
    const QString c = QStringLiteral("cz");
    const QString caron = QStringLiteral("\u010Da"); // A separate letter in Serbian in Latin script.
    ::setenv("LC_ALL", "sr_RS.UTF-8@latin", 1);
    EXPECT_LT(NaturalOrder().compare(c, caron), 0);
    ::setenv("LC_ALL", "en_US.UTF-8", 1);
    EXPECT_GT(NaturalOrder().compare(c, caron), 0);
}

TEST(NaturalOrder, ALanguageOfTwoScriptsIsOrderedByTheOneThatIsNamed)
{
    const NoLocale none;
    const QString latin = QStringLiteral("zebra");
    const QString cyrillic = QStringLiteral("\u0430\u0431");
    ::setenv("LC_ALL", "bs_BA.UTF-8", 1);
    EXPECT_LT(NaturalOrder().compare(latin, cyrillic), 0);
    ::setenv("LC_ALL", "bs_BA.UTF-8@cyrillic", 1);
    EXPECT_GT(NaturalOrder().compare(latin, cyrillic), 0);
}

TEST(NaturalOrder, SpacesCountInLanguagesThatPassOverThemAsWell)
{
    const NoLocale none;
    for (const char *name : {"en_US.UTF-8", "th_TH.UTF-8"}) {
        ::setenv("LC_ALL", name, 1);
        EXPECT_LT(NaturalOrder().compare(QStringLiteral("a b"), QStringLiteral("ab")), 0) << name;
    }
}

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

TEST(NaturalOrder, LongNamesAreToldApartByTheirLastCharacters)
{
    const QString start(300, u'a');
    EXPECT_EQ(NaturalOrder().sorted({start + u'c', start + u'a', start + u'b', start}),
              (std::vector<std::size_t>{3, 1, 2, 0}));
}

} // namespace tallyfold
