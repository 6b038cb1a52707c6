#include "tests/core/EveryField.h"

#include "core/NormalizedSettings.h"
#include "core/SettingsRecord.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <set>
#include <string>
#include <vector>

namespace tallyfold {

using tests::everyField;
using tests::SettingsField;
using tests::settingsWithoutDefaults;
using tests::withKey;

namespace {

QJsonObject recordOf(const StampSettings &settings)
{
    return QJsonDocument::fromJson(encode(settings).value()).object();
}

/// Initializes a member of any type.
struct AnyValue {
    template <typename Type> operator Type() const; // Never called.
};

/// How many members the aggregate has: the most that can be initialized.
template <typename Aggregate, typename... Values> constexpr std::size_t memberCount()
{
    if constexpr (requires { Aggregate{Values{}..., AnyValue{}}; }) {
        return memberCount<Aggregate, Values..., AnyValue>();
    } else {
        return sizeof...(Values);
    }
}

std::string text(const QJsonValue &value)
{
    return value.isUndefined()
               ? "missing"
               : QJsonDocument(QJsonObject{{QStringLiteral("_"), value}}).toJson().toStdString();
}

} // namespace

TEST(EveryField, AllAreStoredAndNoneIsLeftAtItsDefault)
{
    std::set<std::string> keys;
    StampSettings settings = settingsWithoutDefaults();
    for (const SettingsField &field : everyField()) {
        keys.insert(field.key);
        const StampSettings before = settings;
        field.reset(settings);
        EXPECT_NE(settings, before) << field.key;
    }
    EXPECT_EQ(settings, StampSettings());
    std::set<std::string> stored;
    for (const QString &key : recordOf({}).keys()) {
        stored.insert(key.toStdString());
    }
    EXPECT_EQ(keys.size(), everyField().size()) << "two fields share a key";
    EXPECT_EQ(keys, stored);
}

TEST(EveryField, TheListOfTheSettingsHasAllInTheirOrder)
{
    std::vector<std::string> listed;
    forEachField([&](const char *key, auto /*member*/) { listed.emplace_back(key); });
    EXPECT_EQ(listed.size(), memberCount<StampSettings>()) << "forEachField leaves out a member";
    std::vector<std::string> expected;
    for (const SettingsField &field : everyField()) {
        expected.push_back(field.key);
    }
    EXPECT_EQ(listed, expected);
    const QByteArray stored = encode(StampSettings()).value();
    qsizetype last = -1;
    for (const std::string &key : listed) {
        const qsizetype place = stored.indexOf('"' + QByteArray::fromStdString(key) + "\":");
        EXPECT_GT(place, last) << key;
        last = place;
    }
}

TEST(EveryField, AllComeBackTogether)
{
    const StampSettings settings = settingsWithoutDefaults();
    EXPECT_EQ(settings.normalized(), settings);
    EXPECT_EQ(decodeStampSettings(recordOf(settings)), settings);
}

TEST(EveryField, EachComesBackAlone)
{
    for (const SettingsField &field : everyField()) {
        StampSettings settings;
        field.change(settings);
        const QJsonObject record = recordOf(settings);
        EXPECT_EQ(decodeStampSettings(record), settings) << field.key;
        const QJsonObject alone = withKey({}, field.key, record.value(QString::fromStdString(field.key)));
        EXPECT_EQ(decodeStampSettings(alone), settings) << field.key;
    }
}

TEST(EveryField, WhateverStandsInPlaceOfOneAllOthersComeBack)
{
    const QJsonObject record = recordOf(settingsWithoutDefaults());
    for (const SettingsField &field : everyField()) {
        ASSERT_GE(field.readings.size(), 7U);
        for (const SettingsField::Reading &reading : field.readings) {
            StampSettings expected = settingsWithoutDefaults();
            reading.apply(expected);
            EXPECT_EQ(decodeStampSettings(withKey(record, field.key, reading.stored)), expected)
                << field.key << ' ' << text(reading.stored);
        }
    }
}

TEST(EveryField, EachAloneTellsSettingsApartAndChangesTheirHash)
{
    for (const StampSettings &base : {StampSettings(), settingsWithoutDefaults()}) {
        std::set<std::size_t> hashes{hashValue(base)};
        for (const SettingsField &field : everyField()) {
            StampSettings changed = base;
            (base == StampSettings() ? field.change : field.reset)(changed);
            EXPECT_FALSE(changed == base) << field.key;
            EXPECT_TRUE(hashes.insert(hashValue(changed)).second) << field.key;
            const StampSettings same = changed;
            EXPECT_TRUE(same == changed) << field.key;
            EXPECT_EQ(hashValue(same), hashValue(changed)) << field.key;
        }
    }
}

TEST(EveryField, EachTellsPresetsApart)
{
    const Preset base{QUuid::createUuid(), QStringLiteral("a"), {}};
    std::set<std::size_t> hashes{hashValue(base)};
    const auto differs = [&](const Preset &other) {
        return other != base && hashes.insert(hashValue(other)).second;
    };
    for (const SettingsField &field : everyField()) {
        Preset changed = base;
        field.change(changed.settings);
        EXPECT_TRUE(differs(changed)) << field.key;
    }
    EXPECT_TRUE(differs({QUuid::createUuid(), base.name, base.settings}));
    EXPECT_TRUE(differs({base.id, QStringLiteral("b"), base.settings}));
}

TEST(EveryField, EachComponentOfTheColourTellsItApart)
{
    const StampColor base{0.1, 0.2, 0.3, 0.4};
    std::set<std::size_t> hashes{hashValue(base)};
    for (double StampColor::*component :
         {&StampColor::red, &StampColor::green, &StampColor::blue, &StampColor::alpha}) {
        StampColor changed = base;
        changed.*component = 0.5;
        EXPECT_NE(changed, base);
        EXPECT_TRUE(hashes.insert(hashValue(changed)).second);
        StampSettings settings;
        settings.color = changed;
        EXPECT_EQ(decodeStampSettings(recordOf(settings)), settings);
    }
}

} // namespace tallyfold
