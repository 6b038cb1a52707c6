#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <initializer_list>
#include <span>
#include <utility>

namespace tallyfold {

/// Compact JSON with keys in the given order, which QJsonObject does not preserve.
namespace JsonWriter {

[[nodiscard]] QByteArray text(const QString &value);
[[nodiscard]] QByteArray integer(std::int64_t value);
/// The shortest decimal that reads back as `value`, which must be finite.
[[nodiscard]] QByteArray number(double value);
[[nodiscard]] QByteArray boolean(bool value);

/// An ASCII key and a value that already is JSON.
using Entry = std::pair<const char *, QByteArray>;

/// An object with these members, in this order.
[[nodiscard]] QByteArray object(std::span<const Entry> entries);
[[nodiscard]] QByteArray object(std::initializer_list<Entry> entries);
/// An array of values that already are JSON.
[[nodiscard]] QByteArray array(std::span<const QByteArray> values);

} // namespace JsonWriter

} // namespace tallyfold
