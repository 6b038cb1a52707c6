#include "core/check/RegularFile.h"

#include "files/FileStatus.h"

#include <cerrno>

namespace tallyfold::check {

RegularFile::RegularFile(const std::filesystem::path &path, std::error_code &error)
{
    error.clear();
    errno = 0;
    files::Descriptor descriptor = files::Descriptor::ofFile(path);
    if (!descriptor.isOpen()) {
        error = std::error_code(errno, std::generic_category());
        return;
    }
    const auto status = files::FileStatus::of(descriptor.number(), error);
    if (!status) {
        return;
    }
    if (status->kind != files::FileStatus::Kind::regular) {
        error = make_error_code(std::errc::invalid_argument);
        return;
    }
    m_size = status->size;
    m_descriptor = std::move(descriptor);
}

int RegularFile::descriptor() const
{
    return m_descriptor.number();
}

std::int64_t RegularFile::size() const
{
    return m_size;
}

} // namespace tallyfold::check
