#include "app/UriList.h"

#include <optional>
#include <string>
#include <string_view>

namespace tallyfold {

namespace {

const QByteArray scheme = QByteArrayLiteral("file:");

/// The part after the scheme and the local host; nothing for another scheme or host.
std::optional<QByteArray> encodedPathOf(const QByteArray &uri)
{
    if (uri.left(scheme.size()).toLower() != scheme) {
        return std::nullopt;
    }
    QByteArray rest = uri.mid(scheme.size());
    if (rest.startsWith("//")) {
        const qsizetype slash = rest.indexOf('/', 2);
        if (slash < 0) {
            return std::nullopt;
        }
        const QByteArray machine = rest.mid(2, slash - 2).toLower();
        if (!machine.isEmpty() && machine != "localhost") {
            return std::nullopt;
        }
        rest = rest.mid(slash);
    }
    return rest;
}

int hexDigit(char character)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const char lower =
        character >= 'A' && character <= 'F' ? static_cast<char>(character - 'A' + 'a') : character;
    const std::size_t value = digits.find(lower);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

/// The decoded bytes of `encoded`. A percent sign without two hexadecimal digits stands for itself, as
/// written by programs that do not encode.
std::string decoded(const QByteArray &encoded)
{
    std::string bytes;
    for (qsizetype place = 0; place < encoded.size(); ++place) {
        const bool isEscape = encoded[place] == '%' && place + 2 < encoded.size();
        const int high = isEscape ? hexDigit(encoded[place + 1]) : -1;
        const int low = isEscape ? hexDigit(encoded[place + 2]) : -1;
        if (high >= 0 && low >= 0) {
            bytes.push_back(static_cast<char>(high * 16 + low));
            place += 2;
        } else {
            bytes.push_back(encoded[place]);
        }
    }
    return bytes;
}

} // namespace

std::vector<std::filesystem::path> localPathsIn(QByteArrayView uriList)
{
    std::vector<std::filesystem::path> paths;
    for (const QByteArray &line : uriList.toByteArray().split('\n')) {
        const QByteArray uri = line.trimmed();
        if (uri.startsWith('#')) {
            continue;
        }
        if (const std::optional<QByteArray> encoded = encodedPathOf(uri)) {
            const std::string path = decoded(*encoded);
            if (path.starts_with('/') && path.find('\0') == std::string::npos) {
                paths.emplace_back(path);
            }
        }
    }
    return paths;
}

QByteArray fileUri(const std::filesystem::path &path)
{
    return QByteArrayLiteral("file://") + QByteArray::fromStdString(path.native()).toPercentEncoding("/");
}

QByteArray uriListOf(const std::vector<std::filesystem::path> &paths)
{
    QByteArray list;
    for (const std::filesystem::path &path : paths) {
        list += fileUri(path) + "\r\n";
    }
    return list;
}

} // namespace tallyfold
