#include "core/Production.h"

#include "core/Log.h"
#include "core/OutputFolder.h"
#include "core/ProductionIndex.h"
#include "core/Stamper.h"
#include "pdf/copy/CopyVerifier.h"

#include <QHashFunctions>
#include <QSet>

#include <new>
#include <unordered_map>
#include <utility>

namespace tallyfold {

namespace {

namespace fs = std::filesystem;

std::vector<ProductionConflict> conflictOf(ProductionConflict::Kind kind)
{
    return {{kind, {}}};
}

/// `path`, absolute, with symbolic links resolved as far as it exists.
fs::path resolved(const fs::path &path)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    fs::path result = fs::weakly_canonical(absolute, error);
    return error ? absolute.lexically_normal() : result;
}

/// Resolves many paths, most of which are in the same few folders.
class Resolver {
public:
    fs::path operator()(const fs::path &path)
    {
        std::error_code error;
        if (!path.has_filename() || fs::is_symlink(fs::symlink_status(path, error)) || error) {
            return resolved(path);
        }
        const fs::path parent = path.has_parent_path() ? path.parent_path() : fs::path(".");
        const auto [folder, isNew] = m_folders.try_emplace(parent.native());
        if (isNew) {
            folder->second = resolved(parent);
        }
        return folder->second / path.filename();
    }

private:
    std::unordered_map<std::string, fs::path> m_folders;
};

/// `path` in a form for comparison without regard to letter case. Bytes that are not valid UTF-8 never equal
/// text.
QString withoutCase(const fs::path &path)
{
    const std::string &bytes = path.native();
    const QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    const bool isText = text.toUtf8() == QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size()));
    return isText ? text.toLower()
                  : QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size())).prepend(u'\0');
}

/// `name` in `folder`. Names are encoded in UTF-8.
fs::path inFolder(const fs::path &folder, const QString &name)
{
    return folder / fs::path(name.toStdString());
}

/// Whether a file of any type, including a dangling symbolic link, exists at `path`.
bool isTaken(const fs::path &path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

/// A production in progress.
class Run {
public:
    Run(const ProductionPlan &plan, fs::path folder, const Production::OnPage &onPage,
        files::FileCalls &calls)
        : m_plan(plan),
          m_path(std::move(folder)),
          m_folder(OutputFolder::open(m_path, calls, m_refusal)),
          m_onPage(onPage)
    {
    }

    void writeCopies()
    {
        for (const PlannedFile *file : m_plan.stampedFiles()) {
            try {
                writeCopy(*file);
            } catch (const StampError &error) {
                if (!error.is<StampError::Cancelled>()) {
                    note(*file, error);
                }
            } catch (const std::bad_alloc &) {
                note(*file, cannotWrite(*file, {FailureCause::During::writingCopy,
                                                make_error_code(std::errc::not_enough_memory)}));
            }
            if (m_isStopped) {
                keepNames();
                throw ProductionError{ProductionError::Cancelled{m_result.written}};
            }
        }
    }

    fs::path writeTable(const QString &name, const QString &text)
    {
        if (!m_folder) {
            throw FileError{name, m_refusal};
        }
        m_folder->writeNewFile(name, text.toUtf8());
        return inFolder(m_path, name);
    }

    /// Flushes the directory; the files themselves are flushed already.
    void flushNames()
    {
        if (m_folder) {
            m_folder->flush();
        }
    }

    [[nodiscard]] QSet<QString> failedNames() const
    {
        return {m_result.failures.keyBegin(), m_result.failures.keyEnd()};
    }

    ProductionResult &result()
    {
        return m_result;
    }

private:
    [[nodiscard]] static StampError cannotWrite(const PlannedFile &file, const FailureCause &cause)
    {
        return StampError::cannotWrite(file.outputName, cause);
    }

    void note(const PlannedFile &file, const StampError &error)
    {
        qCInfo(coreLog) << "no copy of" << file.source.name << error;
        m_result.failures.insert(file.source.name, error);
    }

    /// Flushes the directory and ignores errors: the production has failed already.
    void keepNames()
    {
        try {
            flushNames();
        } catch (const FileError &) {
        }
    }

    void writeCopy(const PlannedFile &file)
    {
        // Before the copy is created, so that a faulty source is not reported as a failure of the folder.
        const std::unique_ptr<pdf::Document> source = Stamper::open(file.source);
        if (!m_folder) {
            throw cannotWrite(file, {FailureCause::During::creatingCopy, m_refusal});
        }
        OutputFolder::TemporaryFile temporary(*m_folder);
        Stamper::write(file, *source, m_plan.settings, temporary.sink(), [this] {
            ++m_result.pages;
            m_isStopped = m_onPage && !m_onPage(m_result.pages);
            return !m_isStopped;
        });
        const auto isWhole = [this, &file](const files::WrittenFile &written) {
            return m_verifier.verify(written, static_cast<std::int64_t>(file.pages.size()));
        };
        if (const auto cause = temporary.publish(file.outputName, isWhole)) {
            throw cannotWrite(file, *cause);
        }
        m_result.written.push_back(inFolder(m_path, file.outputName));
    }

    const ProductionPlan &m_plan;
    fs::path m_path;
    std::error_code m_refusal;              ///< Why `m_folder` is null.
    std::unique_ptr<OutputFolder> m_folder; ///< Null if it was removed after the check for conflicts.
    const Production::OnPage &m_onPage;
    ProductionResult m_result;
    pdf::CopyVerifier m_verifier;
    bool m_isStopped = false;
};

} // namespace

std::size_t hashValue(const ProductionConflict &conflict)
{
    return qHashMulti(0, static_cast<int>(conflict.kind), conflict.name);
}

std::size_t hashValue(const ProductionResult &result)
{
    std::size_t hash = qHashMulti(0, result.pages);
    const auto add = [&hash](const fs::path &path) { hash = qHashMulti(hash, fs::hash_value(path)); };
    for (const fs::path &path : result.written) {
        add(path);
    }
    add(result.index.value_or(fs::path()));
    add(result.privilegeLog.value_or(fs::path()));
    for (const auto &[name, error] : result.failures.asKeyValueRange()) {
        hash = qHashMulti(hash, name, hashValue(error));
    }
    return hash;
}

std::vector<ProductionConflict> Production::findConflicts(const ProductionPlan &plan, const fs::path &folder,
                                                          const ProductionOptions &options)
{
    using Kind = ProductionConflict::Kind;
    std::vector<ProductionConflict> conflicts;
    const std::vector<const PlannedFile *> files = plan.stampedFiles();
    if (files.empty()) {
        conflicts = conflictOf(Kind::nothingToStamp);
    }
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        conflicts.push_back({Kind::folderMissing, {}});
        return conflicts;
    }
    const fs::path target = resolved(folder);
    QSet<QString> originals;
    Resolver resolve;
    for (const PlannedFile &file : plan.files) {
        originals.insert(withoutCase(resolve(file.source.url)));
    }
    for (const QString &name : plan.duplicateOutputNames()) {
        conflicts.push_back({Kind::duplicate, name});
    }
    for (const PlannedFile *file : files) {
        const fs::path path = inFolder(target, file->outputName);
        if (originals.contains(withoutCase(path))) {
            conflicts.push_back({Kind::wouldReplaceOriginal, file->outputName});
        } else if (isTaken(path)) {
            conflicts.push_back({Kind::exists, file->outputName});
        }
    }
    if (options.writeIndex && isTaken(inFolder(target, ProductionOptions::indexName))) {
        conflicts.push_back({Kind::exists, ProductionOptions::indexName});
    }
    if (options.writePrivilegeLog && isTaken(inFolder(target, ProductionOptions::privilegeLogName))) {
        conflicts.push_back({Kind::exists, ProductionOptions::privilegeLogName});
    }
    return conflicts;
}

ProductionResult Production::write(const ProductionPlan &plan, const fs::path &folder,
                                   const ProductionOptions &options, const OnPage &onPage)
{
    return write(plan, folder, options, onPage, files::FileCalls::system());
}

ProductionResult Production::write(const ProductionPlan &plan, const fs::path &folder,
                                   const ProductionOptions &options, const OnPage &onPage,
                                   files::FileCalls &calls)
{
    const std::vector<ProductionConflict> conflicts = findConflicts(plan, folder, options);
    if (!conflicts.empty()) {
        throw ProductionError{ProductionError::Conflicts{conflicts}};
    }
    Run run(plan, folder, onPage, calls);
    run.writeCopies();
    run.flushNames(); // Before the index, which lists the copies.
    if (options.writeIndex) {
        run.result().index =
            run.writeTable(ProductionOptions::indexName, ProductionIndex::csv(plan, run.failedNames()));
    }
    if (options.writePrivilegeLog) {
        run.result().privilegeLog = run.writeTable(ProductionOptions::privilegeLogName,
                                                   ProductionIndex::privilegeLog(plan, run.failedNames()));
    }
    run.flushNames();
    return std::move(run.result());
}

} // namespace tallyfold
