#include "app/SettingsStore.h"
#include "core/Graphemes.h"
#include "core/NormalizedSettings.h"
#include "core/SettingsRecord.h"
#include "tests/properties/Property.h"
#include "tests/properties/RandomValues.h"
#include "tests/support/TemporaryFolder.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <string>

namespace tallyfold {

using tests::holdsAlways;

namespace {

QJsonObject parsed(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

bool isFinite(const StampColor &color)
{
    return std::isfinite(color.red) && std::isfinite(color.green) && std::isfinite(color.blue) &&
           std::isfinite(color.alpha);
}

/// Settings that can be stored: those of the program are, but for colours that no panel gives.
StampSettings storable(StampSettings settings)
{
    if (!isFinite(settings.color)) {
        settings.color = StampColor::darkBlue();
    }
    return settings.normalized();
}

bool isWithin(double value, const ClosedRange<double> &range)
{
    return value >= range.lowest && value <= range.highest;
}

bool isLineOf(const QString &text, std::size_t longest)
{
    static const QString newlines = QStringLiteral("\n\v\f\r\u0085\u2028\u2029");
    return graphemeBoundaries(text).size() - 1 <= longest &&
           std::none_of(text.begin(), text.end(), [](QChar unit) { return newlines.contains(unit); });
}

} // namespace

TEST(SettingsProperty, NormalisedSettingsAreWithinEveryLimitAndStaySo)
{
    holdsAlways(
        [] {
            const auto raw = *tests::rawSettings();
            const StampSettings normal = raw.normalized();
            RC_ASSERT(isLineOf(normal.prefix, 40));
            RC_ASSERT(isLineOf(normal.suffix, 40));
            RC_ASSERT(isLineOf(normal.legend, 200));
            RC_ASSERT(isLineOf(normal.pageOfTotalFormat, 80));
            RC_ASSERT(normal.digits >= 1 && normal.digits <= 12);
            RC_ASSERT(normal.startNumber >= 0 && normal.startNumber <= 999'999'999);
            RC_ASSERT(isWithin(normal.margin, {0, 144}));
            RC_ASSERT(isWithin(normal.fontSize, {4, 72}));
            RC_ASSERT(!normal.fontName.trimmed().isEmpty());
            if (isFinite(raw.color)) { // A colour with a component that is no number equals nothing.
                RC_ASSERT(normal.normalized() == normal);
                RC_ASSERT(hashValue(normal.normalized()) == hashValue(normal));
            }
        },
        500);
}

TEST(SettingsProperty, WhatIsInItsLimitsIsLeftAlone)
{
    holdsAlways(
        [] {
            const auto raw = *tests::rawSettings();
            const StampSettings normal = raw.normalized();
            const auto keeps = [](const QString &text, std::size_t longest, const QString &kept) {
                return !isLineOf(text, longest) || kept == text;
            };
            RC_ASSERT(keeps(raw.prefix, 40, normal.prefix));
            RC_ASSERT(keeps(raw.suffix, 40, normal.suffix));
            RC_ASSERT(keeps(raw.legend, 200, normal.legend));
            RC_ASSERT(keeps(raw.pageOfTotalFormat, 80, normal.pageOfTotalFormat));
            RC_ASSERT(raw.digits < 1 || raw.digits > 12 || normal.digits == raw.digits);
            RC_ASSERT(raw.startNumber < 0 || raw.startNumber > 999'999'999 ||
                      normal.startNumber == raw.startNumber);
            RC_ASSERT(!isWithin(raw.margin, {0, 144}) || normal.margin == raw.margin);
            RC_ASSERT(!isWithin(raw.fontSize, {4, 72}) || normal.fontSize == raw.fontSize);
            RC_ASSERT(raw.fontName.trimmed().isEmpty() || normal.fontName == raw.fontName);
        },
        300);
}

TEST(SettingsProperty, WhatIsWrittenIsRead)
{
    holdsAlways(
        [] {
            const auto raw = *tests::rawSettings();
            const bool canBeStored =
                isFinite(raw.color) && std::isfinite(raw.margin) && std::isfinite(raw.fontSize);
            RC_ASSERT(encode(raw).has_value() == canBeStored);
            if (canBeStored) {
                // What is out of its limits is normalised by the one who reads.
                RC_ASSERT(decodeStampSettings(parsed(*encode(raw))) == raw.normalized());
            }
            const StampSettings settings = storable(raw);
            RC_ASSERT(decodeStampSettings(parsed(encode(settings).value())) == settings);
        },
        400);
}

TEST(SettingsProperty, APresetThatIsWrittenIsRead)
{
    holdsAlways(
        [] {
            const auto name = *tests::texts();
            const auto settings = storable(*tests::rawSettings());
            const Preset preset = Preset::of(QUuid::createUuid(), name, settings);
            RC_ASSERT(preset.settings == settings);
            RC_ASSERT(name.startsWith(preset.name));
            RC_ASSERT(decodePreset(parsed(encode(preset).value())) == preset);
        },
        200);
}

TEST(SettingsProperty, WhatIsStoredOnTheDiskIsLoaded)
{
    const tests::TemporaryFolder folder;
    int count = 0;
    holdsAlways(
        [&] {
            AppSettings settings = AppSettings::defaults();
            settings.stamp = storable(*tests::rawSettings());
            settings.onboardingDone = *rc::gen::arbitrary<bool>();
            settings.writeIndex = *rc::gen::arbitrary<bool>();
            settings.writePrivilegeLog = *rc::gen::arbitrary<bool>();
            for (const StampSettings &raw :
                 *rc::gen::resize(3, rc::gen::container<std::vector<StampSettings>>(tests::rawSettings()))) {
                settings.presets.push_back(Preset::of(QUuid::createUuid(), *tests::texts(), storable(raw)));
            }
            const std::filesystem::path path = folder / (std::to_string(count) + ".ini");
            const std::filesystem::path copy = folder / (std::to_string(count++) + ".copy.ini");
            SettingsStore(QString::fromStdString(path)).save(settings);
            std::filesystem::copy_file(path, copy); // Nobody has this one in memory.
            RC_ASSERT(SettingsStore(QString::fromStdString(copy)).load() == settings);
            RC_ASSERT(decodeAppSettings(encode(settings).value()) == settings);
        },
        60);
}

} // namespace tallyfold
