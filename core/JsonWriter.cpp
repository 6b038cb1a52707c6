#include "core/JsonWriter.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>
#include <charconv>

namespace tallyfold::JsonWriter {

QByteArray text(const QString &value)
{
    const QByteArray inBrackets = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return inBrackets.sliced(1, inBrackets.size() - 2);
}

QByteArray integer(std::int64_t value)
{
    return QByteArray::number(static_cast<qlonglong>(value));
}

QByteArray number(double value)
{
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), result.ptr - digits.data()};
}

QByteArray boolean(bool value)
{
    return value ? QByteArrayLiteral("true") : QByteArrayLiteral("false");
}

QByteArray object(std::initializer_list<Entry> entries)
{
    return object(std::span(entries.begin(), entries.size()));
}

QByteArray object(std::span<const Entry> entries)
{
    QByteArray out("{");
    for (const auto &[key, value] : entries) {
        if (out.size() > 1) {
            out.append(',');
        }
        out.append('"').append(key).append("\":").append(value);
    }
    return out.append('}');
}

QByteArray array(std::span<const QByteArray> values)
{
    QByteArray out("[");
    for (const QByteArray &value : values) {
        if (out.size() > 1) {
            out.append(',');
        }
        out.append(value);
    }
    return out.append(']');
}

} // namespace tallyfold::JsonWriter
