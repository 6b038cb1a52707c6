#include "core/SettingsRecord.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>
#include <limits>

namespace tallyfold {

namespace {

QJsonValue json(const QByteArray &text)
{
    return QJsonDocument::fromJson("[" + text + "]").array().at(0);
}

StampSettings decoded(const QByteArray &text)
{
    return decodeStampSettings(json(text)).value();
}

} // namespace

TEST(SettingsRecord, AnEmptyRecordGivesTheDefaults)
{
    EXPECT_EQ(decoded("{}"), StampSettings());
}

TEST(SettingsRecord, OnlyWhatIsNoObjectFails)
{
    for (const char *text : {"[]", "3", "\"x\"", "null", "true"}) {
        EXPECT_FALSE(decodeStampSettings(json(text))) << text;
        EXPECT_FALSE(decodePreset(json(text))) << text;
    }
}

TEST(SettingsRecord, WhatIsWrittenReadsBackTheSame)
{
    StampSettings settings = StampSettings::exhibits();
    settings.startNumber = 999'999'999;
    settings.margin = 20.25;
    settings.color = {0.1, 0.2, 0.3, 0.4};
    settings.legend = QStringLiteral("“Quoted”\\ \"text\" 机密");
    settings.order = FileOrder::manual;
    settings.cover = CoverOption::skipNoNumber;
    EXPECT_EQ(decoded(encode(settings).value()), settings);
}

TEST(SettingsRecord, DefaultsAreWrittenAsCompactJson)
{
    const QByteArray record = encode(StampSettings()).value();
    EXPECT_TRUE(record.startsWith('{') && record.endsWith('}'));
    for (const char *entry :
         {R"("prefix":"ABC")", R"("digits":6)", R"("startNumber":1)", R"("suffix":"")",
          R"("batesPosition":"bottomRight")", R"("margin":18)", R"("fontName":"Helvetica")",
          R"("fontSize":10)", R"("color":{"red":0,"green":0,"blue":0,"alpha":1})", R"("background":true)",
          R"("legend":"")", R"("legendPosition":"bottomLeft")", R"("pageOfTotal":false)",
          R"("pageOfTotalFormat":"Page {page} of {total}")", R"("pageOfTotalPosition":"bottomCenter")",
          R"("cover":"stampAll")", R"("order":"name")", R"("naming":"original")"}) {
        const qsizetype place = record.indexOf(entry);
        ASSERT_GT(place, 0) << entry;
        EXPECT_TRUE(record[place - 1] == '{' || record[place - 1] == ',') << entry;
        const char after = record[place + static_cast<qsizetype>(std::strlen(entry))];
        EXPECT_TRUE(after == ',' || after == '}') << entry;
    }
}

TEST(SettingsRecord, OneBadKeySpoilsNoOther)
{
    const StampSettings settings = decoded(
        R"({"prefix":"X","batesPosition":"middle","digits":"8","margin":null,"background":1,"legend":7,"fontSize":12})");
    StampSettings expected;
    expected.prefix = QStringLiteral("X");
    expected.fontSize = 12;
    EXPECT_EQ(settings, expected);
}

TEST(SettingsRecord, EveryCaseOfEveryEnumerationReadsBack)
{
    const auto roundTrip = [](auto StampSettings::*field, const auto &cases) {
        for (const auto &known : cases) {
            StampSettings settings;
            settings.*field = known.value;
            EXPECT_EQ(decoded(encode(settings).value()).*field, known.value) << known.key;
            EXPECT_TRUE(encode(settings).value().contains(QByteArray("\"") + known.key + "\""));
        }
    };
    roundTrip(&StampSettings::batesPosition, stampPositionKeys);
    roundTrip(&StampSettings::cover, coverOptionKeys);
    roundTrip(&StampSettings::order, fileOrderKeys);
    roundTrip(&StampSettings::naming, outputNamingKeys);
}

TEST(SettingsRecord, WholeNumbersMayBeWrittenWithAFractionOfZero)
{
    EXPECT_EQ(decoded(R"({"digits":8.0})").digits, 8);
    EXPECT_EQ(decoded(R"({"digits":8.5})").digits, 6);
    EXPECT_EQ(decoded(R"({"startNumber":1e3})").startNumber, 1000);
    EXPECT_EQ(decoded(R"({"startNumber":1e300})").startNumber, 1);
    EXPECT_EQ(decoded(R"({"startNumber":9223372036854775807})").startNumber, 999'999'999);
}

TEST(SettingsRecord, WhatIsReadIsNormalised)
{
    EXPECT_EQ(decoded(R"({"digits":99,"margin":-4,"prefix":"a\nb"})").digits, 12);
    EXPECT_EQ(decoded(R"({"digits":99,"margin":-4,"prefix":"a\nb"})").margin, 0);
    EXPECT_EQ(decoded(R"({"prefix":"a\nb"})").prefix, QStringLiteral("a b"));
}

TEST(SettingsRecord, AColourNeedsAllFourComponentsAndIsNotClamped)
{
    EXPECT_EQ(decoded(R"({"color":{"red":2,"green":-1,"blue":0.5,"alpha":1}})").color,
              (StampColor{2, -1, 0.5, 1}));
    EXPECT_EQ(decoded(R"({"color":{"red":1,"green":1,"blue":1}})").color, StampColor::black());
    EXPECT_EQ(decoded(R"({"color":{"red":"1","green":1,"blue":1,"alpha":1}})").color, StampColor::black());
    EXPECT_EQ(decoded(R"({"color":[1,1,1,1]})").color, StampColor::black());
}

TEST(SettingsRecord, NumbersThatJsonCannotHoldAreNotWritten)
{
    StampSettings settings;
    settings.margin = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(encode(settings));
    for (double StampColor::*component :
         {&StampColor::red, &StampColor::green, &StampColor::blue, &StampColor::alpha}) {
        StampSettings coloured;
        coloured.color.*component = std::numeric_limits<double>::quiet_NaN();
        EXPECT_FALSE(encode(coloured));
    }
}

TEST(SettingsRecord, APresetReadsBackTheSame)
{
    const Preset preset =
        Preset::of(QUuid::createUuid(), QStringLiteral("Standard"), StampSettings::exhibits());
    EXPECT_EQ(decodePreset(json(encode(preset).value())).value(), preset);
}

TEST(SettingsRecord, APresetWithoutAnIdentifierGetsAFreshOneEveryTime)
{
    const Preset one = decodePreset(json(R"({"name":"a"})")).value();
    const Preset other = decodePreset(json(R"({"name":"a","id":"nonsense"})")).value();
    EXPECT_FALSE(one.id.isNull());
    EXPECT_FALSE(other.id.isNull());
    EXPECT_NE(one.id, other.id);
    EXPECT_EQ(one.settings, StampSettings());
}

TEST(SettingsRecord, TheIdentifierOfZerosIsOne)
{
    const Preset nil{QUuid(), QStringLiteral("a"), {}};
    EXPECT_EQ(decodePreset(json(encode(nil).value())).value(), nil);
    EXPECT_EQ(decodePreset(json(R"({"id":"{00000000-0000-0000-0000-000000000000}"})")).value().id, QUuid());
    for (const char *id :
         {"", "0", "00000000-0000-0000-0000-00000000000", "00000000-0000-0000-0000-00000000000g"}) {
        EXPECT_NE(decodePreset(json(QByteArray("{\"id\":\"") + id + "\"}")).value().id, QUuid()) << id;
    }
}

TEST(SettingsRecord, ADecodedPresetNameIsNotShortened)
{
    const QByteArray longName(100, 'n');
    EXPECT_EQ(decodePreset(json("{\"name\":\"" + longName + "\"}")).value().name.size(), 100);
    EXPECT_EQ(Preset::of(QUuid(), QString(100, u'n'), {}).name.size(), 80);
    EXPECT_EQ(decodePreset(json(R"({"name":7})")).value().name, QString());
}

} // namespace tallyfold
