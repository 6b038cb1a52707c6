#include "window_support/MenuBaseline.h"

#include "window_support/LocalizedTitle.h"

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

struct Calls {
    int closed = 0;
    int helped = 0;
};

MenuBaseline baseline(Calls &calls, const QString &language)
{
    return {{[&calls] { ++calls.closed; }},
            MenuHelp{QStringLiteral("Tallyfold"), QKeySequence(Qt::CTRL | Qt::Key_Question),
                     [&calls] { ++calls.helped; }},
            {},
            language};
}

} // namespace

TEST(MenuBaseline, ClosesTheWindow)
{
    Calls calls;
    QMenu menu;
    QAction *const entry = baseline(calls, QStringLiteral("en")).addCloseTo(menu);
    EXPECT_EQ(entry->text(), QStringLiteral("Close Window"));
    EXPECT_EQ(entry->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_W));
    entry->trigger();
    EXPECT_EQ(calls.closed, 1);
}

TEST(MenuBaseline, OpensTheHelpAndListsFurtherEntries)
{
    Calls calls;
    QMenu menu;
    QAction further(QStringLiteral("Web Site"));
    MenuBaseline entries = baseline(calls, QStringLiteral("en"));
    entries.helpItems = {&further};
    entries.addHelpTo(menu);
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_EQ(menu.actions()[0]->text(), QStringLiteral("Tallyfold Help"));
    EXPECT_EQ(menu.actions()[0]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Question));
    EXPECT_EQ(menu.actions()[1], &further);
    menu.actions()[0]->trigger();
    EXPECT_EQ(calls.helped, 1);
    QMenu german;
    baseline(calls, QStringLiteral("de")).addHelpTo(german);
    EXPECT_EQ(german.actions()[0]->text(), QStringLiteral("Tallyfold-Hilfe"));
}

TEST(MenuBaseline, WithoutHelpThereIsNoEntryForIt)
{
    Calls calls;
    QMenu menu;
    MenuBaseline entries = baseline(calls, QStringLiteral("en"));
    entries.help.reset();
    entries.addHelpTo(menu);
    EXPECT_TRUE(menu.isEmpty());
}

TEST(LocalizedTitle, IsInTheApplicationsLanguage)
{
    const QStringList available{QStringLiteral("en"), QStringLiteral("de")};
    EXPECT_EQ(applicationLanguage(available, {QStringLiteral("fr-FR"), QStringLiteral("de-AT")}),
              QStringLiteral("de"));
    EXPECT_EQ(applicationLanguage(available, {QStringLiteral("fr-FR")}), QStringLiteral("en"));
    EXPECT_EQ(applicationLanguage({}, {QStringLiteral("es-MX")}), QStringLiteral("es"));
    EXPECT_EQ(applicationLanguage({}, {}), QStringLiteral("Base"));
    const QStringList base{QStringLiteral("Base")}; // Of an application that was never translated.
    EXPECT_EQ(applicationLanguage(base, {QStringLiteral("de-AT"), QStringLiteral("fr")}),
              QStringLiteral("de"));
    EXPECT_EQ(applicationLanguage(base, {}), QStringLiteral("Base"));
    EXPECT_EQ(applicationLanguage({QStringLiteral("Base"), QStringLiteral("fr")}, {QStringLiteral("fr-CA")}),
              QStringLiteral("fr"));
    EXPECT_EQ(localizedTitle(QStringLiteral("Close Window"), QStringLiteral("de")),
              QStringLiteral("Fenster schließen"));
    EXPECT_EQ(localizedTitle(QStringLiteral("Close Window"), QStringLiteral("es-MX")),
              QStringLiteral("Cerrar ventana"));
}

TEST(LocalizedTitle, OfALanguageWithoutATableIsTheDefault)
{
    EXPECT_EQ(localizedTitle(QStringLiteral("Close Window"), QStringLiteral("fi")),
              QStringLiteral("Close Window"));
    EXPECT_EQ(localizedTitle(QStringLiteral("Unknown"), QStringLiteral("de")), QStringLiteral("Unknown"));
    Calls calls;
    QMenu menu;
    EXPECT_EQ(baseline(calls, QStringLiteral("fi")).addCloseTo(menu)->text(), QStringLiteral("Close Window"));
}

} // namespace tallyfold
