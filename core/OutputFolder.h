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

/// The folder that a production is written to. It is opened once, so that all files end up in the same folder
/// even if it is renamed meanwhile. Existing files are never replaced: a file gets its final name only if
/// that name is free.
class OutputFolder {
public:
    /// The folder at `path`; null, with the reason in `error`, if it does not exist, is not a folder or
    /// cannot be opened. `calls` must outlive it.
    [[nodiscard]] static std::unique_ptr<OutputFolder> open(const std::filesystem::path &path,
                                                            files::FileCalls &calls, std::error_code &error);

    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;

    /// Whether a file that was read back is what should have been written.
    using Proof = std::function<bool(const files::WrittenFile &file)>;

    /// A hidden file with a random name, which gets its own name once it is complete, so that no incomplete
    /// file ever has one. Deleted by the destructor unless it was published; errors in that are ignored.
    class HiddenFile {
    public:
        /// `ending` is the last part of the random name. If `error` is set, the file could not be created,
        /// and nothing may be written to it.
        HiddenFile(const OutputFolder &folder, const char *ending, std::error_code &error);
        ~HiddenFile();
        HiddenFile(const HiddenFile &) = delete;
        HiddenFile &operator=(const HiddenFile &) = delete;

        [[nodiscard]] const std::string &name() const;
        [[nodiscard]] files::ByteSink &sink();

        /// Flushes the file to the disk, checks it with `proof`, if given, and renames it to `name`. Returns
        /// the cause of a failure: `name` may be taken, and a file that `proof` rejects is damaged.
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
        /// Throws `StampError` `cannotWrite` with the name of the file if it cannot be created.
        explicit TemporaryFile(const OutputFolder &folder);

        [[nodiscard]] files::ByteSink &sink();

        /// As `HiddenFile::publish`.
        [[nodiscard]] std::optional<FailureCause> publish(const QString &name, const Proof &proof = {});

    private:
        std::error_code m_error;
        HiddenFile m_file;
    };

    /// Writes `contents` to a new file `name` and flushes it to the disk. Throws `FileError` and leaves no
    /// file behind if that fails, also if `name` is taken.
    void writeNewFile(const QString &name, const QByteArray &contents) const;

    /// Flushes the directory entries to the disk. Throws `FileError` with the name "." if that fails.
    void flush() const;

private:
    OutputFolder(int descriptor, files::FileCalls &calls);
    void remove(const std::string &name) const;

    int m_descriptor;
    files::FileCalls &m_calls;
};

} // namespace tallyfold
