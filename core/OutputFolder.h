#pragma once

#include "core/FailureCause.h"
#include "core/FileError.h"
#include "files/ByteSink.h"
#include "files/FileSink.h"
#include "files/WrittenFile.h"

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace tallyfold {

/// How the names of the hidden files begin in which something is made before it gets its own name. A process
/// that is killed leaves one.
inline constexpr std::string_view hiddenFilePrefix = ".tallyfold-";

/// The folder a production is written into. It is opened once, so that what is written stays together even
/// when the folder is renamed meanwhile. Nothing in it is ever replaced: a file gets its final name only
/// where none is.
class OutputFolder {
public:
    /// The folder at `path`; null, with the reason in `error`, when it is not there, is not a folder or
    /// cannot be opened. `calls` must outlive it.
    [[nodiscard]] static std::unique_ptr<OutputFolder> open(const std::filesystem::path &path,
                                                            files::FileCalls &calls, std::error_code &error);

    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;

    /// Whether what was read back of a file is what was to be written.
    using Proof = std::function<bool(const files::WrittenFile &file)>;

    /// A hidden file of a random name in which something is made before it gets its own name, so that only
    /// what is whole ever has one, whatever happens on the way. Removed with this object when it was not
    /// published; a removal that fails is passed over.
    class HiddenFile {
    public:
        /// `ending` is the last part of its name. `error` says why it could not be made; nothing may be
        /// written then.
        HiddenFile(const OutputFolder &folder, const char *ending, std::error_code &error);
        ~HiddenFile();
        HiddenFile(const HiddenFile &) = delete;
        HiddenFile &operator=(const HiddenFile &) = delete;

        [[nodiscard]] const std::string &name() const;
        [[nodiscard]] files::ByteSink &sink();

        /// Brings the file to the disk, lets `proof`, if there is any, look at it, and then gives it the
        /// name `name`. What kept it from that, if anything did: there may be something of that name, and
        /// what `proof` refuses is damaged.
        [[nodiscard]] std::optional<FailureCause> publish(const QString &name, const Proof &proof = {});

    private:
        [[nodiscard]] std::optional<FailureCause> prove(const Proof &proof) const;

        const OutputFolder *m_folder;
        std::string m_name;
        std::unique_ptr<files::FileSink> m_sink;
        bool m_isPublished = false;
    };

    /// The hidden file of a copy.
    class TemporaryFile {
    public:
        /// Throws `StampError` `cannotWrite` with the file's name when it cannot be made.
        explicit TemporaryFile(const OutputFolder &folder);

        [[nodiscard]] files::ByteSink &sink();

        /// As of `HiddenFile`.
        [[nodiscard]] std::optional<FailureCause> publish(const QString &name, const Proof &proof = {});

    private:
        std::error_code m_error;
        HiddenFile m_file;
    };

    /// Writes `contents` into a new file called `name` and brings it to the disk. Throws `FileError`, and
    /// leaves nothing, when that fails; a file of that name is such a failure.
    void writeNewFile(const QString &name, const QByteArray &contents) const;

    /// Brings the names given so far to the disk. Throws `FileError` with the name "." when that fails.
    void flush() const;

private:
    OutputFolder(int descriptor, files::FileCalls &calls);
    void remove(const std::string &name) const;

    int m_descriptor;
    files::FileCalls &m_calls;
};

} // namespace tallyfold
