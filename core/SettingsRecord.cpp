#include "core/SettingsRecord.h"

#include "core/JsonWriter.h"

#include <QJsonObject>

#include <cmath>
#include <limits>

namespace tallyfold {

namespace {

/// Takes the value of `key` where it has the field's type; else the field keeps its default.
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

    /// A whole number may also be written with a fraction of zero.
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

    template <typename Case, std::size_t count>
    void read(const char *key, Case &field, const std::array<StoredCase<Case>, count> &cases) const
    {
        const QString stored = valueOf(key).toString();
        for (const StoredCase<Case> &known : cases) {
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

template <typename Case, std::size_t count>
QByteArray keyOf(Case value, const std::array<StoredCase<Case>, count> &cases)
{
    for (const StoredCase<Case> &known : cases) {
        if (known.value == value) {
            return JsonWriter::text(QString::fromLatin1(known.key));
        }
    }
    return JsonWriter::text({});
}

bool isFinite(const StampSettings &settings)
{
    const StampColor &color = settings.color;
    for (const double value :
         {settings.margin, settings.fontSize, color.red, color.green, color.blue, color.alpha}) {
        if (!std::isfinite(value)) {
            return false;
        }
    }
    return true;
}

/// The identifier that `text` is, that of zeros included, which the platform gives for what is none as well.
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
    reader.read("prefix", settings.prefix);
    reader.read("digits", settings.digits);
    reader.read("startNumber", settings.startNumber);
    reader.read("suffix", settings.suffix);
    reader.read("batesPosition", settings.batesPosition, stampPositionKeys);
    reader.read("margin", settings.margin);
    reader.read("fontName", settings.fontName);
    reader.read("fontSize", settings.fontSize);
    reader.read("color", settings.color);
    reader.read("background", settings.background);
    reader.read("legend", settings.legend);
    reader.read("legendPosition", settings.legendPosition, stampPositionKeys);
    reader.read("pageOfTotal", settings.pageOfTotal);
    reader.read("pageOfTotalFormat", settings.pageOfTotalFormat);
    reader.read("pageOfTotalPosition", settings.pageOfTotalPosition, stampPositionKeys);
    reader.read("cover", settings.cover, coverOptionKeys);
    reader.read("order", settings.order, fileOrderKeys);
    reader.read("naming", settings.naming, outputNamingKeys);
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
    if (!isFinite(settings)) {
        return std::nullopt;
    }
    namespace Json = JsonWriter;
    const StampColor &color = settings.color;
    return Json::object({
        {"prefix", Json::text(settings.prefix)},
        {"digits", Json::integer(settings.digits)},
        {"startNumber", Json::integer(settings.startNumber)},
        {"suffix", Json::text(settings.suffix)},
        {"batesPosition", keyOf(settings.batesPosition, stampPositionKeys)},
        {"margin", Json::number(settings.margin)},
        {"fontName", Json::text(settings.fontName)},
        {"fontSize", Json::number(settings.fontSize)},
        {"color", Json::object({{"red", Json::number(color.red)},
                                {"green", Json::number(color.green)},
                                {"blue", Json::number(color.blue)},
                                {"alpha", Json::number(color.alpha)}})},
        {"background", Json::boolean(settings.background)},
        {"legend", Json::text(settings.legend)},
        {"legendPosition", keyOf(settings.legendPosition, stampPositionKeys)},
        {"pageOfTotal", Json::boolean(settings.pageOfTotal)},
        {"pageOfTotalFormat", Json::text(settings.pageOfTotalFormat)},
        {"pageOfTotalPosition", keyOf(settings.pageOfTotalPosition, stampPositionKeys)},
        {"cover", keyOf(settings.cover, coverOptionKeys)},
        {"order", keyOf(settings.order, fileOrderKeys)},
        {"naming", keyOf(settings.naming, outputNamingKeys)},
    });
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
