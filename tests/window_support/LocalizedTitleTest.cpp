#include "window_support/LocalizedTitle.h"

#include <gtest/gtest.h>

#include <array>

namespace tallyfold {

namespace {

struct Language {
    const char *identifier;
    QString close;
    QString help;
};

} // namespace

TEST(LocalizedTitle, EveryTitleIsInEveryLanguageOfTheTables)
{
    const std::array<Language, 5> languages{
        {{"en", QStringLiteral("Close Window"), QStringLiteral("%1 Help")},
         {"de", QStringLiteral("Fenster schließen"), QStringLiteral("%1-Hilfe")},
         {"es", QStringLiteral("Cerrar ventana"), QStringLiteral("Ayuda de %1")},
         {"fr", QStringLiteral("Fermer la fenêtre"), QStringLiteral("Aide %1")},
         {"it", QStringLiteral("Close Window"), QStringLiteral("%1 Help")}}};
    for (const Language &language : languages) {
        for (const char *region : {"", "-CH", "_CH", "_CH_x", "-Latn-CH"}) {
            const QString identifier = QLatin1StringView(language.identifier) + QLatin1StringView(region);
            EXPECT_EQ(localizedTitle(QStringLiteral("Close Window"), identifier), language.close)
                << identifier.toStdString();
            EXPECT_EQ(localizedTitle(QStringLiteral("%1 Help"), identifier), language.help)
                << identifier.toStdString();
        }
    }
}

TEST(LocalizedTitle, ALanguageOfARegionIsTakenWhereThereIsOne)
{
    const QStringList available{QStringLiteral("en"), QStringLiteral("pt"), QStringLiteral("pt-BR")};
    EXPECT_EQ(applicationLanguage(available, {QStringLiteral("pt-BR")}), QStringLiteral("pt-BR"));
    EXPECT_EQ(applicationLanguage(available, {QStringLiteral("pt-PT")}), QStringLiteral("pt"));
    EXPECT_EQ(applicationLanguage(available, {QStringLiteral("pt_PT")}), QStringLiteral("pt"));
    EXPECT_EQ(
        applicationLanguage(available, {QStringLiteral("fi"), QStringLiteral("pt-BR"), QStringLiteral("pt")}),
        QStringLiteral("pt-BR"));
}

} // namespace tallyfold
