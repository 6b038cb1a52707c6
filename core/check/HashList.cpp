#include "core/check/HashList.h"

#include "core/CSV.h"
#include "core/OutputFolder.h"
#include "core/Production.h"
#include "core/SourceCollector.h"
#include "core/SourceFile.h"
#include "core/check/HashLines.h"
#include "core/check/ProductionFolder.h"

#include <QStringList>

#include <optional>

namespace tallyfold::check {

namespace fs = std::filesystem;

namespace {

/// Hashes one file after the other, as long as none fails.
class Hasher {
public:
    Hasher(std::int64_t files, const ShowProgress &show, std::stop_token givenUp)
        : m_show(&show), m_givenUp(std::move(givenUp))
    {
        m_progress.plannedPages = files;
    }

    std::optional<HashedFile> operator()(const fs::path &path, const QString &name)
    {
        if (m_failure) {
            return std::nullopt;
        }
        m_progress.reading = name;
        if (*m_show) {
            (*m_show)(m_progress);
        }
        auto hashed = sha256Of(path, m_givenUp);
        ++m_progress.pages;
        if (const auto *error = std::get_if<std::error_code>(&hashed)) {
            fail(name, *error);
            return std::nullopt;
        }
        return std::get<HashedFile>(hashed);
    }

    void fail(const QString &name, std::error_code error)
    {
        m_failure = HashesNotWritten{name, error};
    }

    [[nodiscard]] const std::optional<HashesNotWritten> &failure() const
    {
        return m_failure;
    }

private:
    const ShowProgress *m_show;
    std::stop_token m_givenUp;
    Progress m_progress;
    std::optional<HashesNotWritten> m_failure;
};

/// Only a production that is all there is listed.
std::optional<HashesNotWritten> whatIsMissing(const ProductionFolder &production)
{
    for (const Finding &finding : production.findings) {
        if (const auto *unreadable = std::get_if<FolderUnreadable>(&finding.what)) {
            return HashesNotWritten{displayName(production.path), unreadable->error};
        }
        if (const auto *unreadable = std::get_if<IndexUnreadable>(&finding.what)) {
            return HashesNotWritten{finding.file, unreadable->error};
        }
        if (std::holds_alternative<IndexMissing>(finding.what)) {
            return HashesNotWritten{finding.file, make_error_code(std::errc::no_such_file_or_directory)};
        }
        if (std::holds_alternative<RowNotUnderstood>(finding.what)) {
            return HashesNotWritten{finding.file, make_error_code(std::errc::bad_message)};
        }
    }
    for (const ProductionFolder::Copy &copy : production.copies) {
        if (copy.path.empty()) {
            return HashesNotWritten{copy.indexed.name, make_error_code(std::errc::no_such_file_or_directory)};
        }
    }
    return std::nullopt;
}

HashesOutcome written(const fs::path &path, const QString &name, const QByteArray &contents,
                      HashesWritten outcome)
{
    std::error_code error;
    const auto folder = OutputFolder::open(path, files::FileCalls::system(), error);
    if (!folder) {
        return HashesNotWritten{displayName(path), error};
    }
    try {
        folder->writeNewFile(name, contents);
        folder->flush();
    } catch (const FileError &failure) {
        return HashesNotWritten{failure.name, failure.code};
    }
    return outcome;
}

/// The files below folders, by their names.
std::multimap<QString, fs::path> filesByName(std::span<const fs::path> folders)
{
    std::multimap<QString, fs::path> files;
    for (const fs::path &file : collectPdfs(folders).locations) {
        files.emplace(displayName(file), file);
    }
    return files;
}

} // namespace

HashesOutcome writeHashList(const fs::path &folder, const ShowProgress &show, const std::stop_token &givenUp)
{
    const ProductionFolder production = ProductionFolder::of(folder, 0);
    if (auto missing = whatIsMissing(production)) {
        return *missing;
    }
    const auto files = static_cast<std::int64_t>(production.copies.size()) + 1;
    Hasher hash(files, show, givenUp);
    QByteArray list;
    const auto add = [&](const fs::path &path) {
        if (const auto hashed = hash(path, displayName(path))) {
            list += hashLine(hashed->digest, path.filename().string());
        }
    };
    for (const ProductionFolder::Copy &copy : production.copies) {
        add(copy.path);
    }
    add(production.index);
    if (hash.failure()) {
        return *hash.failure();
    }
    return written(folder, ProductionFolder::hashListName, list, {files, {}, {}});
}

HashesOutcome writeHashTable(const fs::path &folder, std::span<const fs::path> originals,
                             const ShowProgress &show, const std::stop_token &givenUp)
{
    const ProductionFolder production = ProductionFolder::of(folder, 0);
    if (auto missing = whatIsMissing(production)) {
        return *missing;
    }
    const std::multimap<QString, fs::path> sources = filesByName(originals);
    HashesWritten outcome;
    Hasher hash(2 * static_cast<std::int64_t>(production.copies.size()), show, givenUp);
    std::vector<QStringList> rows{{QStringLiteral("File"), QStringLiteral("Stamped Copy"),
                                   QStringLiteral("Original SHA-256"), QStringLiteral("Copy SHA-256"),
                                   QStringLiteral("Copy Bytes")}};
    for (const ProductionFolder::Copy &copy : production.copies) {
        const auto [first, last] = sources.equal_range(copy.indexed.source);
        QString original;
        if (first == last) {
            outcome.missingOriginals.push_back(copy.indexed.source);
        } else if (std::next(first) != last) {
            outcome.ambiguousOriginals.push_back(copy.indexed.source);
        } else if (const auto hashed = hash(first->second, copy.indexed.source)) {
            original = QString::fromLatin1(hexadecimal(hashed->digest));
        }
        if (const auto hashed = hash(copy.path, copy.indexed.name)) {
            rows.push_back({copy.indexed.source, copy.indexed.name, original,
                            QString::fromLatin1(hexadecimal(hashed->digest)), QString::number(hashed->size)});
        }
        ++outcome.files;
    }
    if (hash.failure()) {
        return *hash.failure();
    }
    return written(folder, hashTableName, CSV::text(rows).toUtf8(), std::move(outcome));
}

} // namespace tallyfold::check
