#include "tests/core/EveryField.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <utility>

namespace tallyfold::tests {

namespace {

template <typename Value> using Member = Value StampSettings::*;

/// Stored texts and the values they are read as.
template <typename Value> using Readings = std::vector<std::pair<QByteArray, Value>>;

/// The field `member`, with the valid value `changed` other than its default. A missing key, null and the
/// values in `wrong` are read as the default; the stored texts in `odd` as the values given there.
template <typename Value>
SettingsField field(const char *key, Member<Value> member, Value changed,
                    const std::vector<QByteArray> &wrong, const Readings<Value> &odd = {})
{
    const auto set = [member](const Value &value) {
        return [member, value](StampSettings &settings) { settings.*member = value; };
    };
    SettingsField field{key, set(changed), set(StampSettings().*member), {}};
    field.readings.push_back({QJsonValue(QJsonValue::Undefined), field.reset});
    field.readings.push_back({QJsonValue(QJsonValue::Null), field.reset});
    for (const QByteArray &json : wrong) {
        field.readings.push_back({jsonValue(json), field.reset});
    }
    for (const auto &[json, value] : odd) {
        field.readings.push_back({jsonValue(json), set(value)});
    }
    return field;
}

const std::vector<QByteArray> &noText()
{
    static const std::vector<QByteArray> values{"7", "true", "[]", "[\"x\"]", "{}"};
    return values;
}

SettingsField text(const char *key, Member<QString> member, const QString &changed, qsizetype longest)
{
    return field(key, member, changed, noText(),
                 {{"\"\"", QString()},
                  {"\"a\\nb\"", QStringLiteral("a b")},
                  {'"' + QByteArray(longest + 1, 'x') + '"', QString(longest, u'x')}});
}

SettingsField integer(const char *key, Member<std::int64_t> member, std::int64_t changed, std::int64_t lowest,
                      std::int64_t highest)
{
    return field(key, member, changed, {"\"8\"", "false", "[]", "{}", "8.5", "1e300", "-1e300"},
                 {{"-9223372036854775808", lowest},
                  {"-1", lowest},
                  {"1e18", highest},
                  {"9223372036854775807", highest}});
}

SettingsField measure(const char *key, Member<double> member, double changed,
                      const ClosedRange<double> &range)
{
    return field(key, member, changed, {"\"8\"", "true", "[]", "{}"},
                 {{"-1", range.lowest}, {"-1e308", range.lowest}, {"1e308", range.highest}});
}

SettingsField toggle(const char *key, Member<bool> member, bool changed)
{
    return field(key, member, changed, {"0", "1", "\"true\"", "[]", "{}"});
}

template <typename Case> SettingsField choice(const char *key, Member<Case> member, Case changed)
{
    return field(key, member, changed, {"0", "1", "true", "[]", "{}", "\"\"", "\"middle\"", "\"TopLeft\""});
}

SettingsField color(const char *key, Member<StampColor> member, const StampColor &changed)
{
    return field(key, member, changed,
                 {"7", "\"red\"", "[0.1,0.2,0.3,1]", "{}", R"({"red":1,"green":1,"blue":1})",
                  R"({"red":1,"green":1,"alpha":1})", R"({"red":1,"blue":1,"alpha":1})",
                  R"({"green":1,"blue":1,"alpha":1})", R"({"red":null,"green":1,"blue":1,"alpha":1})",
                  R"({"red":1,"green":"1","blue":1,"alpha":1})"},
                 {{R"({"red":2,"green":-1,"blue":1e300,"alpha":7})", StampColor{2, -1, 1e300, 7}}});
}

} // namespace

const std::vector<SettingsField> &everyField()
{
    using S = StampSettings;
    static const std::vector<SettingsField> fields{
        text("prefix", &S::prefix, QStringLiteral(" É“\\\" 机"), 40),
        integer("digits", &S::digits, 9, 1, 12),
        integer("startNumber", &S::startNumber, 123'456'789, 0, S::maxStart),
        text("suffix", &S::suffix, QStringLiteral("-z "), 40),
        choice("batesPosition", &S::batesPosition, StampPosition::topLeft),
        measure("margin", &S::margin, 33.25, S::marginRange),
        field("fontName", &S::fontName, QStringLiteral("Courier-Bold"), noText(),
              {{"\"\"", QStringLiteral("Helvetica")},
               {"\" \\t \"", QStringLiteral("Helvetica")},
               {"\" Courier \"", QStringLiteral(" Courier ")}}),
        measure("fontSize", &S::fontSize, 14.5, S::fontSizeRange),
        color("color", &S::color, {0.1, 0.25, 1.0 / 3, 0.75}),
        toggle("background", &S::background, false),
        text("legend", &S::legend, QStringLiteral("Geheim – A\tB"), 200),
        choice("legendPosition", &S::legendPosition, StampPosition::topRight),
        toggle("pageOfTotal", &S::pageOfTotal, true),
        text("pageOfTotalFormat", &S::pageOfTotalFormat, QStringLiteral("{page}/{total}"), 80),
        choice("pageOfTotalPosition", &S::pageOfTotalPosition, StampPosition::topCenter),
        choice("cover", &S::cover, CoverOption::skipNoNumber),
        choice("order", &S::order, FileOrder::modified),
        choice("naming", &S::naming, OutputNaming::batesRange)};
    return fields;
}

StampSettings settingsWithoutDefaults()
{
    StampSettings settings;
    for (const SettingsField &field : everyField()) {
        field.change(settings);
    }
    return settings;
}

QJsonValue jsonValue(const QByteArray &json)
{
    return QJsonDocument::fromJson('[' + json + ']').array().at(0);
}

QJsonObject withKey(QJsonObject record, const std::string &key, const QJsonValue &value)
{
    const QString name = QString::fromStdString(key);
    if (value.isUndefined()) {
        record.remove(name);
    } else {
        record.insert(name, value);
    }
    return record;
}

} // namespace tallyfold::tests
