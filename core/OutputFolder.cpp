#include "core/OutputFolder.h"

#include "core/StampError.h"
#include "files/ExclusiveMove.h"

#include <QUuid>

#include <span>

namespace tallyfold {

using During = FailureCause::During;

namespace {

std::string temporaryName(const char *ending)
{
    return std::string(hiddenFilePrefix) +
           QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString() + ending;
}

} // namespace

std::unique_ptr<OutputFolder> OutputFolder::open(const std::filesystem::path &path, files::FileCalls &calls,
                                                 std::error_code &error)
{
    const int descriptor = files::openFolder(calls, path, error);
    return descriptor < 0 ? nullptr : std::unique_ptr<OutputFolder>(new OutputFolder(descriptor, calls));
}

OutputFolder::OutputFolder(int descriptor, files::FileCalls &calls) : m_descriptor(descriptor), m_calls(calls)
{
}

OutputFolder::~OutputFolder()
{
    (void)m_calls.close(m_descriptor);
}

void OutputFolder::remove(const std::string &name) const
{
    (void)files::uninterrupted([&] { return m_calls.unlink(m_descriptor, name.c_str()); });
}

OutputFolder::HiddenFile::HiddenFile(const OutputFolder &folder, const char *ending, std::error_code &error)
    : m_folder(&folder),
      m_name(temporaryName(ending)),
      m_sink(files::FileSink::create(folder.m_descriptor, m_name, folder.m_calls, error))
{
}

OutputFolder::HiddenFile::~HiddenFile()
{
    if (m_sink && !m_isPublished) {
        m_sink.reset();
        m_folder->remove(m_name);
    }
}

const std::string &OutputFolder::HiddenFile::name() const
{
    return m_name;
}

files::ByteSink &OutputFolder::HiddenFile::sink()
{
    return *m_sink;
}

std::optional<FailureCause> OutputFolder::HiddenFile::prove(const Proof &proof) const
{
    if (!proof) {
        return std::nullopt;
    }
    const auto file =
        files::WrittenFile::open(m_folder->m_descriptor, m_name, m_sink->size(), m_folder->m_calls);
    if (file && proof(*file)) {
        return std::nullopt;
    }
    return FailureCause{During::checkingCopy, FailureCause::Finding::damaged};
}

std::optional<FailureCause> OutputFolder::HiddenFile::publish(const QString &name, const Proof &proof)
{
    if (!m_sink->flushToDisk()) {
        return FailureCause{During::writingCopy, m_sink->failure()};
    }
    // Not earlier: a network file system may not have sent the data before it was flushed.
    if (const auto damage = prove(proof)) {
        return damage;
    }
    const int error =
        files::ExclusiveMove::move(m_folder->m_calls, m_folder->m_descriptor, m_name, name.toStdString());
    m_isPublished = error == 0;
    return m_isPublished ? std::nullopt
                         : std::optional(FailureCause{During::namingCopy,
                                                      std::error_code(error, std::generic_category())});
}

OutputFolder::TemporaryFile::TemporaryFile(const OutputFolder &folder) : m_file(folder, ".pdf", m_error)
{
    if (m_error) {
        throw StampError::cannotWrite(QString::fromStdString(m_file.name()),
                                      FailureCause{During::creatingCopy, m_error});
    }
}

files::ByteSink &OutputFolder::TemporaryFile::sink()
{
    return m_file.sink();
}

std::optional<FailureCause> OutputFolder::TemporaryFile::publish(const QString &name, const Proof &proof)
{
    return m_file.publish(name, proof);
}

void OutputFolder::writeNewFile(const QString &name, const QByteArray &contents) const
{
    std::error_code error;
    HiddenFile file(*this, ".csv", error);
    if (error) {
        throw FileError{name, error};
    }
    // `publish` fails with the reason if writing has failed.
    (void)file.sink().write(std::span(contents.constData(), static_cast<std::size_t>(contents.size())));
    if (const auto cause = file.publish(name)) {
        throw FileError{name, cause->systemError()};
    }
}

void OutputFolder::flush() const
{
    if (const std::error_code error = files::syncFolder(m_calls, m_descriptor)) {
        throw FileError{QStringLiteral("."), error};
    }
}

} // namespace tallyfold
