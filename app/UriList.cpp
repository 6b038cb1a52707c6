#include "app/UriList.h"

#include <optional>
#include <string>

namespace tallyfold {

namespace {

const QByteArray scheme = QByteArrayLiteral("file:");

/// What follows the scheme and this machine's name; nothing when there is another scheme or machine.
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
            const std::string path = QByteArray::fromPercentEncoding(*encoded).toStdString();
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
