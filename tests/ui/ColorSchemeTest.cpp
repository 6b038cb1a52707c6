#include "ui/desktop/ColorScheme.h"

#include "tests/support/Waiting.h"
#include "tests/ui/FakeServices.h"
#include "tests/ui/SessionBus.h"
#include "tests/ui/WindowFixture.h"
#include "ui/theme/Tones.h"

#include <QApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QLabel>
#include <QStyle>

#include <gtest/gtest.h>

namespace tallyfold {

namespace {

using Preference = ColorScheme::Preference;

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString key = QStringLiteral("color-scheme");
const QVariant none(0U);
const QVariant dark(1U);
const QVariant light(2U);

/// A program on a desktop without a style, whose palette is light until a test says otherwise.
class FollowingTheDesktop : public testing::Test {
protected:
    FollowingTheDesktop()
        : m_paletteBefore(QApplication::palette()), m_styleBefore(QApplication::style()->name())
    {
        EXPECT_TRUE(bus.isRunning());
        QApplication::setStyle(QStringLiteral("fusion"));
        QApplication::setPalette(lightPalette());
    }
    ~FollowingTheDesktop() override
    {
        QApplication::setStyle(m_styleBefore);
        QApplication::setPalette(m_paletteBefore);
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
    }

    [[nodiscard]] bool hasPortalWith(const QVariant &value)
    {
        portal.colorScheme = value;
        return portal.takePlaceOn(bus.connection(QStringLiteral("portal")));
    }
    [[nodiscard]] QDBusConnection program() const
    {
        return bus.connection(QStringLiteral("program"));
    }
    static bool isDarkNow()
    {
        return isDark(QApplication::palette());
    }
    /// Whether the program comes to be dark, or light.
    static bool becomes(const QVariant &value)
    {
        return tests::waitUntil([&] { return isDarkNow() == (value == dark); });
    }
    /// Says `value` of the scheme, and waits for the program to become it.
    bool follows(const QVariant &value)
    {
        portal.change(appearance, key, value);
        return becomes(value);
    }
    /// Until all that the portal has said so far has been heard: the bus keeps the order.
    bool hearsAll()
    {
        const tests::SettingsListener listener(program());
        portal.change(QStringLiteral("org.example"), QStringLiteral("last"), none);
        return tests::waitUntil([&] { return listener.heardCount > 0; });
    }

    tests::SessionBus bus;
    tests::FakeSettingsPortal portal;

private:
    QPalette m_paletteBefore;
    QString m_styleBefore;
};

/// The palettes that the application takes while this lives.
class Palettes final : public QObject {
public:
    Palettes()
    {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (object == qApp && event->type() == QEvent::ApplicationPaletteChange) {
            ++count;
        }
        return false;
    }

    int count = 0;
};

class AnOpenWindow : public tests::WindowFixture {
protected:
    ~AnOpenWindow() override
    {
        QApplication::setPalette(m_paletteBefore);
    }

    /// The texts of the window whose ink is that of the other scheme.
    std::string unreadableTexts(bool isDarkWanted)
    {
        std::string texts;
        for (const QLabel *label : app->mainView().findChildren<QLabel *>()) {
            if (isDark(label->palette()) != isDarkWanted) {
                texts += label->text().toStdString() + "\n";
            }
        }
        return texts;
    }

private:
    QPalette m_paletteBefore = QApplication::palette();
};

} // namespace

TEST_F(AnOpenWindow, ChangesEveryTextWithTheScheme)
{
    addPdfs({"a.pdf"});
    EXPECT_GT(app->mainView().findChildren<QLabel *>().size(), 20);
    for (const Preference preference : {Preference::dark, Preference::light, Preference::dark}) {
        ColorScheme::apply(preference);
        QCoreApplication::processEvents(); // Windows are told from there.
        EXPECT_EQ(unreadableTexts(preference == Preference::dark), "");
    }
}

TEST_F(FollowingTheDesktop, ADarkOneMakesTheProgramDark)
{
    ASSERT_TRUE(hasPortalWith(dark));
    const ColorScheme scheme(program());
    EXPECT_FALSE(isDarkNow());
    EXPECT_TRUE(becomes(dark));
    EXPECT_EQ(QApplication::palette(), darkPalette());
}

TEST_F(FollowingTheDesktop, ALightOneMakesADarkProgramLight)
{
    QApplication::setPalette(darkPalette());
    ASSERT_TRUE(hasPortalWith(light));
    const ColorScheme scheme(program());
    EXPECT_TRUE(isDarkNow());
    EXPECT_TRUE(becomes(light));
}

TEST_F(FollowingTheDesktop, ChangesAreFollowedWhileTheProgramRuns)
{
    ASSERT_TRUE(hasPortalWith(light));
    const ColorScheme scheme(program());
    EXPECT_TRUE(tests::waitUntil([&] { return portal.readCount == 1; }));
    EXPECT_TRUE(follows(dark));
    EXPECT_TRUE(follows(light));
    EXPECT_TRUE(follows(dark));
}

TEST_F(FollowingTheDesktop, OtherSettingsAreNotIts)
{
    ASSERT_TRUE(hasPortalWith(dark));
    const ColorScheme scheme(program());
    EXPECT_TRUE(becomes(dark));
    const Palettes palettes;
    portal.change(QStringLiteral("org.gnome.desktop.interface"), key, light);
    portal.change(appearance, QStringLiteral("contrast"), none);
    portal.change(appearance, QStringLiteral("accent-color"), none);
    EXPECT_TRUE(hearsAll());
    EXPECT_TRUE(isDarkNow());
    EXPECT_EQ(palettes.count, 0);
}

TEST_F(FollowingTheDesktop, HighContrastIsTakenAndFollowedInBothSchemes)
{
    portal.contrast = QVariant(1U);
    ASSERT_TRUE(hasPortalWith(dark));
    const ColorScheme scheme(program());
    const auto comesTo = [](const QPalette &palette) {
        return tests::waitUntil([&] { return QApplication::palette() == palette; });
    };
    EXPECT_TRUE(comesTo(darkPalette(Contrast::high)));
    portal.change(appearance, key, light);
    EXPECT_TRUE(comesTo(lightPalette(Contrast::high)));
    portal.change(appearance, QStringLiteral("contrast"), none);
    EXPECT_TRUE(comesTo(lightPalette()));
    portal.change(appearance, QStringLiteral("contrast"), QVariant(QStringLiteral("1")));
    EXPECT_TRUE(hearsAll());
    EXPECT_EQ(QApplication::palette(), lightPalette()) << "no number says nothing";
    portal.change(appearance, QStringLiteral("contrast"), QVariant(1U));
    EXPECT_TRUE(comesTo(lightPalette(Contrast::high)));
}

TEST_F(FollowingTheDesktop, WhatIsNoNumberSaysNothing)
{
    ASSERT_TRUE(hasPortalWith(dark));
    const ColorScheme scheme(program());
    EXPECT_TRUE(becomes(dark));
    const Palettes palettes;
    for (const QVariant &value : {QVariant(QStringLiteral("2")), QVariant(true), QVariant(2.0),
                                  QVariant(QStringList(QStringLiteral("2")))}) {
        portal.change(appearance, key, value);
    }
    EXPECT_TRUE(hearsAll());
    EXPECT_TRUE(isDarkNow());
    EXPECT_EQ(palettes.count, 0);
}

TEST_F(FollowingTheDesktop, AnAnswerThatIsNoNumberSaysNothing)
{
    QApplication::setPalette(darkPalette());
    ASSERT_TRUE(hasPortalWith(QVariant(QStringLiteral("2"))));
    const ColorScheme scheme(program());
    const Palettes palettes;
    EXPECT_TRUE(tests::waitUntil([&] { return portal.readCount == 1; }));
    EXPECT_TRUE(hearsAll());
    EXPECT_TRUE(isDarkNow());
    EXPECT_EQ(palettes.count, 0);
}

TEST_F(FollowingTheDesktop, WithoutAPreferenceTheSchemeIsThePalettesOwn)
{
    QApplication::setPalette(darkPalette());
    ASSERT_TRUE(hasPortalWith(light));
    const ColorScheme scheme(program());
    for (const QVariant &noPreference : {none, QVariant(7U)}) {
        EXPECT_TRUE(follows(light));
        portal.change(appearance, key, noPreference);
        EXPECT_TRUE(tests::waitUntil([] { return isDarkNow(); }));
    }
}

TEST_F(FollowingTheDesktop, APortalThatDoesNotKnowLeavesThePalettesOwnAndIsFollowed)
{
    QApplication::setPalette(darkPalette());
    ASSERT_TRUE(hasPortalWith({}));
    const ColorScheme scheme(program());
    const Palettes palettes;
    EXPECT_TRUE(tests::waitUntil([&] { return portal.readCount == 1; }));
    EXPECT_TRUE(hearsAll());
    EXPECT_TRUE(isDarkNow());
    EXPECT_EQ(palettes.count, 0);
    EXPECT_TRUE(follows(light));
}

TEST_F(FollowingTheDesktop, APortalThatComesLaterIsFollowed)
{
    const ColorScheme scheme(program());
    ASSERT_TRUE(hasPortalWith(light));
    EXPECT_TRUE(follows(dark));
}

TEST_F(FollowingTheDesktop, WithoutABusTheSchemeIsThePalettesOwn)
{
    for (const QPalette &palette : {darkPalette(), lightPalette()}) {
        QApplication::setStyle(QStringLiteral("fusion"));
        QApplication::setPalette(palette);
        const ColorScheme scheme(QDBusConnection(QStringLiteral("none")));
        EXPECT_EQ(isDarkNow(), isDark(palette));
        EXPECT_EQ(QApplication::palette(), palette);
    }
}

TEST_F(FollowingTheDesktop, AStyleOfTheDesktopsIsLeftAlone)
{
    QApplication::setStyle(QStringLiteral("windows"));
    QApplication::setPalette(QPalette(Qt::yellow));
    const QPalette palette = QApplication::palette();
    ASSERT_TRUE(hasPortalWith(dark));
    const ColorScheme scheme(program());
    EXPECT_EQ(QApplication::style()->name(), QStringLiteral("windows"));
    EXPECT_EQ(QApplication::palette(), palette);
    // What the program had asked for would be answered before this.
    QDBusMessage ping = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    const QDBusPendingCall answer = program().asyncCall(ping);
    EXPECT_TRUE(tests::waitUntil([&] { return answer.isFinished(); }));
    EXPECT_EQ(portal.readCount, 0);
    EXPECT_EQ(QApplication::palette(), palette);
}

} // namespace tallyfold
