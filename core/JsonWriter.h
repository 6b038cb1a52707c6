#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <initializer_list>
#include <span>
#include <utility>

namespace tallyfold {

/// Compact JSON with its keys in the order they are given, which the platform's own objects do not keep.
namespace JsonWriter {

[[nodiscard]] QByteArray text(const QString &value);
[[nodiscard]] QByteArray integer(std::int64_t value);
/// The shortest decimal that reads back as `value`, which must be finite.
[[nodiscard]] QByteArray number(double value);
[[nodiscard]] QByteArray boolean(bool value);

/// A key in plain ASCII and a value that is JSON already.
using Entry = std::pair<const char *, QByteArray>;

/// An object of these, in their order.
[[nodiscard]] QByteArray object(std::span<const Entry> entries);
[[nodiscard]] QByteArray object(std::initializer_list<Entry> entries);
/// An array of values that are JSON already.
[[nodiscard]] QByteArray array(std::span<const QByteArray> values);

} // namespace JsonWriter

} // namespace tallyfold
