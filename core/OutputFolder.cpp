#include "core/OutputFolder.h"

#include "core/ExclusiveMove.h"
#include "core/StampError.h"

#include <QUuid>

#include <cerrno>
#include <fcntl.h>
#include <span>

namespace tallyfold {

using pdf::uninterrupted;

namespace {

std::string temporaryName()
{
    return ".tallyfold-" + QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString() +
           ".pdf";
}

} // namespace

std::unique_ptr<OutputFolder> OutputFolder::open(const std::filesystem::path &path, pdf::FileCalls &calls,
                                                 std::error_code &error)
{
    const int descriptor = uninterrupted(
        [&] { return calls.openAt(AT_FDCWD, path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); });
    if (descriptor < 0) {
        error = {errno, std::generic_category()};
        return nullptr;
    }
    return std::unique_ptr<OutputFolder>(new OutputFolder(descriptor, calls));
}

OutputFolder::OutputFolder(int descriptor, pdf::FileCalls &calls) : m_descriptor(descriptor), m_calls(calls)
{
}

OutputFolder::~OutputFolder()
{
    (void)m_calls.close(m_descriptor);
}

void OutputFolder::remove(const std::string &name) const
{
    (void)uninterrupted([&] { return m_calls.unlink(m_descriptor, name.c_str()); });
}

OutputFolder::TemporaryFile::TemporaryFile(const OutputFolder &folder)
    : m_folder(&folder), m_name(temporaryName())
{
    std::error_code ignored;
    m_sink = pdf::FileSink::create(folder.m_descriptor, m_name, folder.m_calls, ignored);
    if (!m_sink) {
        throw StampError::cannotWrite(QString::fromStdString(m_name));
    }
}

OutputFolder::TemporaryFile::~TemporaryFile()
{
    if (!m_isPublished) {
        m_sink.reset();
        m_folder->remove(m_name);
    }
}

pdf::ByteSink &OutputFolder::TemporaryFile::sink()
{
    return *m_sink;
}

bool OutputFolder::TemporaryFile::publish(const QString &name)
{
    m_isPublished = m_sink->flushToDisk() && ExclusiveMove::move(m_folder->m_calls, m_folder->m_descriptor,
                                                                 m_name, name.toStdString()) == 0;
    return m_isPublished;
}

void OutputFolder::writeNewFile(const QString &name, const QByteArray &contents) const
{
    const std::string fileName = name.toStdString();
    std::error_code error;
    const std::unique_ptr<pdf::FileSink> sink = pdf::FileSink::create(m_descriptor, fileName, m_calls, error);
    if (!sink) {
        throw FileError{name, error};
    }
    if (!sink->write(std::span(contents.constData(), static_cast<std::size_t>(contents.size()))) ||
        !sink->flushToDisk()) {
        remove(fileName);
        throw FileError{name, sink->failure()};
    }
}

void OutputFolder::flush() const
{
    // Some network file systems cannot flush a folder, and say so; there is nothing better to do there.
    if (uninterrupted([this] { return m_calls.sync(m_descriptor); }) != 0 && errno != EINVAL &&
        errno != ENOTSUP) {
        throw FileError{QStringLiteral("."), std::error_code(errno, std::generic_category())};
    }
}

} // namespace tallyfold
