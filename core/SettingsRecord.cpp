#include "core/SettingsRecord.h"

#include "core/JsonWriter.h"
#include "core/NormalizedSettings.h"

#include <QJsonObject>

#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

namespace tallyfold {

namespace {

/// Reads the value of `key` if it has the type of the field; otherwise the field keeps its default.
class Reader {
public:
    explicit Reader(const QJsonObject &record) : m_record(record) {}

    void read(const char *key, QString &field) const
    {
        if (const QJsonValue value = valueOf(key); value.isString()) {
            field = value.toString();
        }
    }

    void read(const char *key, bool &field) const
    {
        if (const QJsonValue value = valueOf(key); value.isBool()) {
            field = value.toBool();
        }
    }

    void read(const char *key, double &field) const
    {
        if (const QJsonValue value = valueOf(key); value.isDouble()) {
            field = value.toDouble();
        }
    }

    /// An integer may be written with a fraction of zero.
    void read(const char *key, std::int64_t &field) const
    {
        const QJsonValue value = valueOf(key);
        constexpr qint64 absent = std::numeric_limits<qint64>::min();
        const bool isWhole =
            value.isDouble() && (value.toInteger(absent) != absent || value.toInteger(0) == absent);
        if (isWhole) {
            field = value.toInteger();
        }
    }

    void read(const char *key, StampColor &field) const
    {
        const QJsonValue value = valueOf(key);
        if (!value.isObject()) {
            return;
        }
        const QJsonObject components = value.toObject();
        for (const char *name : {"red", "green", "blue", "alpha"}) {
            if (!components.value(QLatin1StringView(name)).isDouble()) {
                return;
            }
        }
        const Reader reader(components);
        reader.read("red", field.red);
        reader.read("green", field.green);
        reader.read("blue", field.blue);
        reader.read("alpha", field.alpha);
    }

    template <typename Case>
    requires std::is_enum_v<Case>
    void read(const char *key, Case &field) const
    {
        const QString stored = valueOf(key).toString();
        for (const StoredCase<Case> &known : storedCases(field)) {
            if (stored == QLatin1StringView(known.key)) {
                field = known.value;
            }
        }
    }

private:
    [[nodiscard]] QJsonValue valueOf(const char *key) const
    {
        return m_record.value(QLatin1StringView(key));
    }

    QJsonObject m_record;
};

QByteArray valueOf(const QString &field)
{
    return JsonWriter::text(field);
}

QByteArray valueOf(bool field)
{
    return JsonWriter::boolean(field);
}

QByteArray valueOf(double field)
{
    return JsonWriter::number(field);
}

QByteArray valueOf(std::int64_t field)
{
    return JsonWriter::integer(field);
}

QByteArray valueOf(const StampColor &field)
{
    return JsonWriter::object({{"red", valueOf(field.red)},
                               {"green", valueOf(field.green)},
                               {"blue", valueOf(field.blue)},
                               {"alpha", valueOf(field.alpha)}});
}

template <typename Case>
requires std::is_enum_v<Case> QByteArray valueOf(Case field)
{
    for (const StoredCase<Case> &known : storedCases(field)) {
        if (known.value == field) {
            return JsonWriter::text(QString::fromLatin1(known.key));
        }
    }
    return JsonWriter::text({});
}

/// Whether JSON can represent the value.
bool canBeStored(const auto & /*value*/)
{
    return true;
}

bool canBeStored(const double &value)
{
    return std::isfinite(value);
}

bool canBeStored(const StampColor &value)
{
    return std::isfinite(value.red) && std::isfinite(value.green) && std::isfinite(value.blue) &&
           std::isfinite(value.alpha);
}

/// The identifier in `text`. QUuid::fromString gives the null identifier for invalid text as well as for
/// zeros.
std::optional<QUuid> storedId(const QString &text)
{
    const QUuid id = QUuid::fromString(text);
    const bool isOne = !id.isNull() || text == id.toString() || text == id.toString(QUuid::WithoutBraces);
    return isOne ? std::optional(id) : std::nullopt;
}

} // namespace

std::optional<StampSettings> decodeStampSettings(const QJsonValue &record)
{
    if (!record.isObject()) {
        return std::nullopt;
    }
    const Reader reader(record.toObject());
    StampSettings settings;
    forEachField([&](const char *key, auto member) { reader.read(key, settings.*member); });
    return settings.normalized();
}

std::optional<Preset> decodePreset(const QJsonValue &record)
{
    if (!record.isObject()) {
        return std::nullopt;
    }
    const QJsonObject object = record.toObject();
    Preset preset;
    preset.id = storedId(object.value(u"id").toString()).value_or(QUuid::createUuid());
    preset.name = object.value(u"name").toString();
    preset.settings = decodeStampSettings(object.value(u"settings")).value_or(StampSettings{});
    return preset;
}

std::optional<QByteArray> encode(const StampSettings &settings)
{
    bool areStorable = true;
    std::vector<JsonWriter::Entry> entries;
    forEachField([&](const char *key, auto member) {
        if (areStorable = areStorable && canBeStored(settings.*member); areStorable) {
            entries.emplace_back(key, valueOf(settings.*member));
        }
    });
    return areStorable ? std::optional(JsonWriter::object(entries)) : std::nullopt;
}

std::optional<QByteArray> encode(const Preset &preset)
{
    const std::optional<QByteArray> settings = encode(preset.settings);
    if (!settings) {
        return std::nullopt;
    }
    return JsonWriter::object({{"id", JsonWriter::text(preset.id.toString(QUuid::WithoutBraces).toUpper())},
                               {"name", JsonWriter::text(preset.name)},
                               {"settings", *settings}});
}

} // namespace tallyfold
