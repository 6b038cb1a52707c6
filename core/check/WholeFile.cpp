#include "core/check/WholeFile.h"

#include "files/Descriptor.h"
#include "files/FileStatus.h"

#include <QFile>

#include <cerrno>

namespace tallyfold::check {

std::variant<QByteArray, std::error_code> wholeFile(const std::filesystem::path &path, std::int64_t maxSize)
{
    errno = 0;
    const files::Descriptor descriptor = files::Descriptor::ofFile(path);
    if (!descriptor.isOpen()) {
        return std::error_code(errno, std::generic_category());
    }
    std::error_code error;
    const auto status = files::FileStatus::of(descriptor.number(), error);
    if (!status) {
        return error;
    }
    if (status->kind != files::FileStatus::Kind::regular) {
        return make_error_code(std::errc::invalid_argument);
    }
    if (status->size > maxSize) {
        return make_error_code(std::errc::file_too_large);
    }
    QFile file;
    if (!file.open(descriptor.number(), QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return make_error_code(std::errc::io_error);
    }
    QByteArray bytes = file.read(maxSize);
    if (file.error() != QFileDevice::NoError) {
        return make_error_code(std::errc::io_error);
    }
    return bytes;
}

} // namespace tallyfold::check
