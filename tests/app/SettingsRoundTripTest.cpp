#include "app/SettingsStore.h"

#include "tests/app/ModelFixture.h"
#include "tests/core/EveryField.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

#include <array>

namespace tallyfold {

namespace fs = std::filesystem;
using tests::everyField;
using tests::SettingsField;
using tests::settingsWithoutDefaults;
using tests::withKey;

namespace {

constexpr std::array<const char *, 5> keys{"onboardingDone", "stamp", "writeIndex", "writePrivilegeLog",
                                           "presets"};

/// Settings in which nothing has its default: neither the stamp nor the five keys nor the presets.
AppSettings nothingAtItsDefault()
{
    AppSettings settings;
    settings.onboardingDone = true;
    settings.stamp = settingsWithoutDefaults();
    settings.writeIndex = false;
    settings.writePrivilegeLog = true;
    StampSettings other;
    other.startNumber = 42;
    settings.presets = {Preset::of(QUuid::createUuid(), QStringLiteral("Alles “anders”"), settings.stamp),
                        Preset::of(QUuid::createUuid(), QStringLiteral("b"), other)};
    return settings;
}

QJsonObject recordOf(const AppSettings &settings)
{
    return QJsonDocument::fromJson(encode(settings).value()).object();
}

class SettingsRoundTrip : public tests::ModelFixture {
protected:
    /// The settings that another process would read from the disk, without caches of this one.
    AppSettings onDisk()
    {
        const fs::path copy = folder / ("copy" + std::to_string(m_copies++) + ".ini");
        fs::copy_file(folder / "settings.ini", copy);
        return AppModel(std::make_unique<SettingsStore>(QString::fromStdString(copy)), panels).settings();
    }

    /// The settings read from a file that contains `record`.
    AppSettings read(const QJsonObject &record)
    {
        const QString path =
            QString::fromStdString(folder / ("record" + std::to_string(m_copies++) + ".ini"));
        QSettings(path, QSettings::IniFormat)
            .setValue(QStringLiteral("settings"), QJsonDocument(record).toJson(QJsonDocument::Compact));
        return SettingsStore(path).load();
    }

private:
    int m_copies = 0;
};

} // namespace

TEST_F(SettingsRoundTrip, NothingIsLostWhenTheProgramEnds)
{
    const AppSettings settings = nothingAtItsDefault();
    model->setSettings(settings);
    model.reset();
    EXPECT_EQ(onDisk(), settings);
    EXPECT_EQ(anotherModel()->settings(), settings);
}

TEST_F(SettingsRoundTrip, EachFieldIsStoredWhenItAloneChanges)
{
    for (const SettingsField &field : everyField()) {
        AppSettings settings = AppSettings::defaults();
        model->setSettings(settings);
        (void)counts->take();
        field.change(settings.stamp);
        model->setStamp(settings.stamp);
        EXPECT_EQ(counts->take(), (std::map<std::string, int>{{"settings", 1}})) << field.key;
        model.reset(); // The destructor writes pending changes.
        EXPECT_EQ(onDisk(), settings) << field.key;
        model = anotherModel();
        counts = std::make_unique<tests::SignalCounts>(*model);
        EXPECT_EQ(model->settings(), settings) << field.key;
    }
}

TEST_F(SettingsRoundTrip, EachOfTheFiveKeysIsStoredWhenItAloneChanges)
{
    const AppSettings changed = nothingAtItsDefault();
    const std::array<void (*)(AppSettings &, const AppSettings &), 5> take{
        [](AppSettings &to, const AppSettings &from) { to.onboardingDone = from.onboardingDone; },
        [](AppSettings &to, const AppSettings &from) { to.stamp = from.stamp; },
        [](AppSettings &to, const AppSettings &from) { to.writeIndex = from.writeIndex; },
        [](AppSettings &to, const AppSettings &from) { to.writePrivilegeLog = from.writePrivilegeLog; },
        [](AppSettings &to, const AppSettings &from) { to.presets = from.presets; }};
    for (const auto &takeOne : take) {
        AppSettings settings = AppSettings::defaults();
        takeOne(settings, changed);
        EXPECT_NE(settings, AppSettings::defaults());
        model->setSettings(settings);
        model.reset();
        EXPECT_EQ(onDisk(), settings);
        model = anotherModel();
        model->setSettings(AppSettings::defaults());
    }
}

TEST_F(SettingsRoundTrip, AKeyThatIsMissingOrNullIsAtItsDefaultAndAllOthersComeBack)
{
    const QJsonObject record = recordOf(nothingAtItsDefault());
    const AppSettings defaults = AppSettings::defaults();
    for (const char *key : keys) {
        ASSERT_TRUE(record.contains(QLatin1StringView(key))) << key;
        for (const QJsonValue &nothing : {QJsonValue(QJsonValue::Undefined), QJsonValue(QJsonValue::Null)}) {
            const AppSettings settings = read(withKey(record, key, nothing));
            // When written again, all other keys are present and this one has its default.
            EXPECT_EQ(recordOf(settings),
                      withKey(record, key, recordOf(defaults).value(QLatin1StringView(key))))
                << key;
        }
    }
}

TEST_F(SettingsRoundTrip, AKeyOfAnotherTypeGivesTheDefaults)
{
    const QJsonObject record = recordOf(nothingAtItsDefault());
    ASSERT_EQ(recordOf(read(record)), record);
    for (const char *key : keys) {
        for (const char *json : {"7", "\"true\"", "[7]", "[[]]"}) {
            EXPECT_EQ(read(withKey(record, key, tests::jsonValue(json))), AppSettings::defaults())
                << key << ' ' << json;
        }
    }
}

TEST_F(SettingsRoundTrip, WhateverStandsInPlaceOfOneFieldAllOthersComeBack)
{
    const AppSettings settings = nothingAtItsDefault();
    const QJsonObject record = recordOf(settings);
    const QJsonObject stamp = record[u"stamp"].toObject();
    const QJsonArray presets = record[u"presets"].toArray();
    for (const SettingsField &field : everyField()) {
        for (const SettingsField::Reading &reading : field.readings) {
            AppSettings expected = settings;
            reading.apply(expected.stamp);
            reading.apply(expected.presets[0].settings);
            const QJsonObject damaged = withKey(stamp, field.key, reading.stored);
            QJsonObject preset = presets[0].toObject();
            preset.insert(QStringLiteral("settings"), damaged);
            QJsonObject stored = record;
            stored.insert(QStringLiteral("stamp"), damaged);
            stored.insert(QStringLiteral("presets"), QJsonArray{preset, presets[1]});
            EXPECT_EQ(read(stored), expected) << field.key;
        }
    }
}

} // namespace tallyfold
