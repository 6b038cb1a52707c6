#include "tests/core/EveryField.h"
#include "tests/ui/WindowFixture.h"
#include "ui/controls/ColorWell.h"
#include "ui/controls/Picker.h"
#include "ui/controls/PositionGrid.h"
#include "ui/controls/Stepper.h"
#include "ui/text/Titles.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QLineEdit>

#include <map>
#include <set>

namespace tallyfold {

namespace {

/// What every control of a stamp setting shows, by the key of the setting.
using Shown = std::map<std::string, std::string>;

std::string nameOf(StampPosition position)
{
    return titleOf(position).toStdString();
}

std::string nameOf(const StampColor &color)
{
    std::string name;
    for (const double component : {color.red, color.green, color.blue, color.alpha}) {
        name += std::to_string(component) + ' ';
    }
    return name;
}

std::string nameOf(bool isOn)
{
    return isOn ? "on" : "off";
}

class SettingsInTheWindow : public tests::WindowFixture {
protected:
    Shown shown()
    {
        const auto grid = [this](const char *name) { return nameOf(find<PositionGrid>(name)->selection()); };
        const auto field = [this](const char *name) { return find<QLineEdit>(name)->text().toStdString(); };
        const auto stepper = [this](const char *name) { return find<Stepper>(name)->text().toStdString(); };
        const auto picker = [this](const char *name) {
            return find<Picker>(name)->currentText().toStdString();
        };
        const auto toggle = [this](const char *name) { return nameOf(find<QCheckBox>(name)->isChecked()); };
        return {{"prefix", field("prefix")},
                {"digits", stepper("digits")},
                {"startNumber", field("startNumber")},
                {"suffix", field("suffix")},
                {"batesPosition", grid("batesPosition")},
                {"margin", stepper("margin")},
                {"fontName", picker("fontName")},
                {"fontSize", stepper("fontSize")},
                {"color", nameOf(find<ColorWell>("color")->color())},
                {"background", toggle("background")},
                {"legend", field("legend")},
                {"legendPosition", grid("legendPosition")},
                {"pageOfTotal", toggle("pageOfTotal")},
                {"pageOfTotalFormat", field("pageOfTotalFormat")},
                {"pageOfTotalPosition", grid("pageOfTotalPosition")},
                {"cover", picker("cover")},
                {"order", picker("fileOrder")},
                {"naming", picker("naming")}};
    }

    /// What the controls have to show of `settings`.
    static Shown wordsOf(const StampSettings &settings)
    {
        std::string font;
        for (const FontChoice &choice : fontChoices) {
            font = settings.fontName == QLatin1StringView(choice.name) ? choice.title : font;
        }
        return {{"prefix", settings.prefix.toStdString()},
                {"digits", std::to_string(settings.digits)},
                {"startNumber", std::to_string(settings.startNumber)},
                {"suffix", settings.suffix.toStdString()},
                {"batesPosition", nameOf(settings.batesPosition)},
                {"margin", marginText(settings.margin).toStdString()},
                {"fontName", font},
                {"fontSize", fontSizeText(settings.fontSize).toStdString()},
                {"color", nameOf(settings.color)},
                {"background", nameOf(settings.background)},
                {"legend", settings.legend.toStdString()},
                {"legendPosition", nameOf(settings.legendPosition)},
                {"pageOfTotal", nameOf(settings.pageOfTotal)},
                {"pageOfTotalFormat", settings.pageOfTotalFormat.toStdString()},
                {"pageOfTotalPosition", nameOf(settings.pageOfTotalPosition)},
                {"cover", titleOf(settings.cover).toStdString()},
                {"order", titleOf(settings.order).toStdString()},
                {"naming", titleOf(settings.naming).toStdString()}};
    }

    void type(const char *name, const QString &text)
    {
        auto *edit = find<QLineEdit>(name);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }

    void type(Stepper *stepper, const QString &text)
    {
        stepper->setFocus();
        stepper->selectAll();
        QTest::keyClicks(stepper, text);
        QTest::keyClick(stepper, Qt::Key_Return);
    }

    void pick(const char *name, const QString &title)
    {
        auto *picker = find<Picker>(name);
        picker->setCurrentText(title);
        ASSERT_EQ(picker->currentText(), title);
        Q_EMIT picker->activated(picker->currentIndex());
    }

    void choose(const char *name, StampPosition position)
    {
        find<PositionGrid>(name)->spot(position)->click();
    }
};

} // namespace

TEST_F(SettingsInTheWindow, EveryControlShowsAtTheNextStartWhatWasSet)
{
    const Shown defaults = shown();
    EXPECT_EQ(defaults, wordsOf(StampSettings()));
    EXPECT_EQ(defaults.size(), tests::everyField().size());
    const StampSettings settings = tests::settingsWithoutDefaults();
    model().setStamp(settings);
    const Shown before = shown();
    restart();
    EXPECT_EQ(stamp(), settings);
    EXPECT_EQ(shown(), wordsOf(settings));
    EXPECT_EQ(shown(), before);
    for (const auto &[key, words] : before) {
        EXPECT_NE(words, defaults.at(key)) << key;
    }
    restart();
    EXPECT_EQ(stamp(), settings) << "showing changed nothing";
}

TEST_F(SettingsInTheWindow, EachFieldAloneComesBackInItsControl)
{
    const Shown defaults = shown();
    for (const tests::SettingsField &field : tests::everyField()) {
        StampSettings settings;
        field.change(settings);
        model().setStamp(settings);
        restart();
        EXPECT_EQ(stamp(), settings) << field.key;
        Shown expected = defaults;
        expected[field.key] = wordsOf(settings).at(field.key);
        EXPECT_EQ(shown(), expected) << field.key;
        EXPECT_NE(expected, defaults) << field.key;
    }
}

TEST_F(SettingsInTheWindow, WhatTheUserSetsInEveryControlIsThereAtTheNextStart)
{
    type("prefix", QStringLiteral("SMITH-"));
    type("startNumber", QStringLiteral("777"));
    type("suffix", QStringLiteral("-z"));
    type("legend", QStringLiteral("SECRET"));
    type(find<Stepper>("digits"), QStringLiteral("9"));
    type(find<Stepper>("margin"), QStringLiteral("33"));
    type(find<Stepper>("fontSize"), QStringLiteral("14"));
    choose("batesPosition", StampPosition::topLeft);
    choose("legendPosition", StampPosition::topRight);
    click("background");
    click("pageOfTotal");
    type("pageOfTotalFormat", QStringLiteral("{page}/{total}"));
    choose("pageOfTotalPosition", StampPosition::topCenter);
    pick("fontName", QStringLiteral("Courier Bold"));
    pick("cover", titleOf(CoverOption::skipNoNumber));
    pick("fileOrder", titleOf(FileOrder::modified));
    pick("naming", titleOf(OutputNaming::batesRange));
    click("color");
    find<ColorWell>("color")->panel()->setCurrentColor(QColor(12, 100, 200));
    click("writeIndex");
    click("writePrivilegeLog");
    model().savePreset(QStringLiteral("Smith"));

    const AppSettings set = model().settings();
    const StampSettings defaults;
    StampSettings remaining = set.stamp;
    for (const tests::SettingsField &field : tests::everyField()) {
        const StampSettings before = remaining;
        field.reset(remaining);
        EXPECT_NE(remaining, before) << field.key << " was not set";
    }
    EXPECT_EQ(remaining, defaults);
    const Shown before = shown();
    restart();
    EXPECT_EQ(model().settings(), set);
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(shown(), wordsOf(set.stamp));
    EXPECT_FALSE(find<QCheckBox>("writeIndex")->isChecked());
    EXPECT_TRUE(find<QCheckBox>("writePrivilegeLog")->isChecked());
    ASSERT_EQ(model().settings().presets.size(), 1U);
    EXPECT_EQ(model().settings().presets.front().settings, set.stamp);
}

TEST_F(SettingsInTheWindow, ShowingWhatNoControlCanShowChangesNothing)
{
    StampSettings settings = tests::settingsWithoutDefaults();
    settings.fontName = QStringLiteral(" Some Other Font ");
    settings.margin = 0.001;
    settings.fontSize = 71.999;
    settings.color = {2, -1, 1e300, 7};
    settings.legend = QStringLiteral("  \t ");
    model().setStamp(settings);
    for (int start = 0; start < 2; ++start) {
        restart();
        EXPECT_EQ(stamp(), settings);
    }
    addPdfs({"a.pdf"});
    EXPECT_EQ(stamp(), settings);
}

TEST_F(SettingsInTheWindow, EveryChoiceOfEveryControlComesBack)
{
    const auto comesBack = [this](const char *key, auto StampSettings::*field, const auto &cases) {
        std::set<std::string> titles;
        for (const auto &known : cases) {
            edit([&](StampSettings &settings) { settings.*field = known.value; });
            restart();
            EXPECT_EQ(stamp().*field, known.value) << known.key;
            titles.insert(shown().at(key));
        }
        EXPECT_EQ(titles.size(), cases.size()) << key;
        EXPECT_FALSE(titles.contains("")) << key;
    };
    comesBack("batesPosition", &StampSettings::batesPosition, stampPositionKeys);
    comesBack("legendPosition", &StampSettings::legendPosition, stampPositionKeys);
    comesBack("pageOfTotalPosition", &StampSettings::pageOfTotalPosition, stampPositionKeys);
    comesBack("cover", &StampSettings::cover, coverOptionKeys);
    comesBack("order", &StampSettings::order, fileOrderKeys);
    comesBack("naming", &StampSettings::naming, outputNamingKeys);
}

} // namespace tallyfold
