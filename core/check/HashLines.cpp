#include "core/check/HashLines.h"

#include <algorithm>
#include <optional>

namespace tallyfold::check {

namespace {

std::optional<char> unescaped(char ch)
{
    switch (ch) {
    case '\\':
        return '\\';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    default:
        return std::nullopt;
    }
}

std::optional<std::string> nameIn(QByteArrayView text, bool isEscaped)
{
    std::string name;
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (!isEscaped || text[place] != '\\') {
            name.push_back(text[place]);
            continue;
        }
        ++place;
        const auto ch = place < text.size() ? unescaped(text[place]) : std::nullopt;
        if (!ch) {
            return std::nullopt;
        }
        name.push_back(*ch);
    }
    return name.empty() ? std::nullopt : std::optional(name);
}

std::optional<Sha256> digestIn(QByteArrayView hexadecimal)
{
    const QByteArray bytes = QByteArray::fromHex(hexadecimal.toByteArray());
    Sha256 digest{};
    if (bytes.size() != static_cast<qsizetype>(digest.size()) ||
        bytes.toHex() != hexadecimal.toByteArray().toLower()) {
        return std::nullopt;
    }
    std::copy(bytes.begin(), bytes.end(), digest.begin());
    return digest;
}

} // namespace

QByteArray hashLine(const Sha256 &digest, const std::string &name)
{
    QByteArray escaped;
    for (const char ch : name) {
        switch (ch) {
        case '\\':
            escaped += "\\\\";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        default:
            escaped += ch;
        }
    }
    const bool isEscaped = escaped.size() != static_cast<qsizetype>(name.size());
    return (isEscaped ? QByteArray("\\") : QByteArray()) + hexadecimal(digest) + "  " + escaped + '\n';
}

HashLines HashLines::of(QByteArrayView bytes)
{
    HashLines list;
    std::int64_t number = 0;
    while (!bytes.isEmpty()) {
        ++number;
        const qsizetype end = bytes.indexOf('\n');
        QByteArrayView line = end < 0 ? bytes : bytes.first(end);
        bytes = end < 0 ? QByteArrayView() : bytes.sliced(end + 1);
        if (line.endsWith('\r')) {
            line.chop(1);
        }
        if (line.isEmpty() || line.startsWith('#')) {
            continue;
        }
        const bool isEscaped = line.startsWith('\\');
        line = line.sliced(isEscaped ? 1 : 0);
        constexpr qsizetype digits = 64;
        const bool isWhole = line.size() > digits + 2 && line[digits] == ' ' &&
                             (line[digits + 1] == ' ' || line[digits + 1] == '*');
        const auto digest = isWhole ? digestIn(line.first(digits)) : std::nullopt;
        const auto name = isWhole ? nameIn(line.sliced(digits + 2), isEscaped) : std::nullopt;
        if (!digest || !name || !list.digests.emplace(*name, *digest).second) {
            list.linesNotUnderstood.push_back(number);
        }
    }
    return list;
}

} // namespace tallyfold::check
