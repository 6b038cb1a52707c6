#include "core/OutputFolder.h"

#include "core/ExclusiveMove.h"
#include "core/StampError.h"

#include <QUuid>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace tallyfold {

namespace {

/// A new file called `name` in `folder`, or -1. Its mode is left to the umask, so that colleagues can read
/// it.
int createFile(int folder, const std::string &name)
{
    return ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
}

std::string temporaryName()
{
    return ".tallyfold-" + QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString() +
           ".pdf";
}

} // namespace

std::unique_ptr<OutputFolder> OutputFolder::open(const std::filesystem::path &path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return descriptor < 0 ? nullptr : std::unique_ptr<OutputFolder>(new OutputFolder(descriptor));
}

OutputFolder::OutputFolder(int descriptor) : m_descriptor(descriptor) {}

OutputFolder::~OutputFolder()
{
    ::close(m_descriptor);
}

OutputFolder::TemporaryFile::TemporaryFile(const OutputFolder &folder)
    : m_folder(&folder), m_name(temporaryName())
{
    const int descriptor = createFile(folder.m_descriptor, m_name);
    if (descriptor < 0) {
        throw StampError::cannotWrite(QString::fromStdString(m_name));
    }
    m_sink = std::make_unique<pdf::FileSink>(descriptor);
}

OutputFolder::TemporaryFile::~TemporaryFile()
{
    if (!m_isPublished) {
        m_sink.reset();
        (void)::unlinkat(m_folder->m_descriptor, m_name.c_str(), 0);
    }
}

pdf::ByteSink &OutputFolder::TemporaryFile::sink()
{
    return *m_sink;
}

bool OutputFolder::TemporaryFile::publish(const QString &name)
{
    m_isPublished =
        m_sink->flushToDisk() && ExclusiveMove::move(m_folder->m_descriptor, m_name, name.toStdString()) == 0;
    return m_isPublished;
}

void OutputFolder::writeNewFile(const QString &name, const QByteArray &contents) const
{
    const std::string bytes = name.toStdString();
    const int descriptor = createFile(m_descriptor, bytes);
    if (descriptor < 0) {
        throw FileError{name, std::error_code(errno, std::generic_category())};
    }
    pdf::FileSink sink(descriptor);
    errno = 0;
    const bool isWritten =
        sink.write(std::span(contents.constData(), static_cast<std::size_t>(contents.size()))) &&
        sink.finish() && sink.flushToDisk();
    if (!isWritten) {
        const int error = errno == 0 ? EIO : errno;
        (void)::unlinkat(m_descriptor, bytes.c_str(), 0);
        throw FileError{name, std::error_code(error, std::generic_category())};
    }
}

void OutputFolder::flush() const
{
    // Some network file systems cannot flush a folder, and say so; there is nothing better to do there.
    if (::fsync(m_descriptor) != 0 && errno != EINVAL && errno != ENOTSUP) {
        throw FileError{QStringLiteral("."), std::error_code(errno, std::generic_category())};
    }
}

} // namespace tallyfold
