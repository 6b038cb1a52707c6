#include "core/check/WholeFile.h"

#include "core/check/RegularFile.h"
#include "files/FileCalls.h"

#include <span>

namespace tallyfold::check {

std::variant<QByteArray, std::error_code> wholeFile(const std::filesystem::path &path, std::int64_t maxSize)
{
    std::error_code error;
    const RegularFile file(path, error);
    if (error) {
        return error;
    }
    if (file.size() > maxSize) {
        return make_error_code(std::errc::file_too_large);
    }
    QByteArray bytes(static_cast<qsizetype>(file.size()), Qt::Uninitialized);
    const std::size_t count =
        files::readUpTo(files::FileCalls::system(), file.descriptor(), 0,
                        std::span(bytes.data(), static_cast<std::size_t>(bytes.size())), error);
    if (error) {
        return error;
    }
    bytes.truncate(static_cast<qsizetype>(count));
    return bytes;
}

} // namespace tallyfold::check
