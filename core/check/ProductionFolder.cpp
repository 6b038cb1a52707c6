#include "core/check/ProductionFolder.h"

#include "core/OutputFolder.h"
#include "core/PdfEnding.h"
#include "core/Production.h"
#include "core/SourceFile.h"
#include "core/check/WholeFile.h"

#include <QHash>

#include <algorithm>
#include <set>
#include <string>

namespace tallyfold::check {

namespace fs = std::filesystem;

namespace {

/// An index of a million rows has a fifth of that.
constexpr std::int64_t maxTableSize = 512 * 1024 * 1024;

/// What lies in a folder itself, by name.
class Listing {
public:
    Listing(const fs::path &folder, std::error_code &error)
    {
        fs::directory_iterator entry(folder, error);
        while (!error && entry != fs::directory_iterator()) {
            std::error_code unknown; // Of the kind: what cannot be told is looked at by its name.
            if (!entry->is_directory(unknown)) {
                add(entry->path());
            }
            entry.increment(error);
        }
    }

    /// The path of the file called `name`, in whichever form its characters are composed: some systems change
    /// that when they copy files. Empty when there is none.
    [[nodiscard]] fs::path pathOf(const QString &name) const
    {
        const auto exact = m_paths.constFind(name);
        if (exact != m_paths.cend()) {
            return *exact;
        }
        return m_composed.value(composed(name));
    }

    /// In the order of their bytes.
    [[nodiscard]] const std::set<fs::path> &files() const
    {
        return m_files;
    }

private:
    static QString composed(const QString &name)
    {
        return name.normalized(QString::NormalizationForm_C);
    }

    void add(const fs::path &path)
    {
        m_files.insert(path);
        const QString name = displayName(path);
        m_paths.insert(name, path);
        m_composed.insert(composed(name), path);
    }

    std::set<fs::path> m_files;
    QHash<QString, fs::path> m_paths;
    QHash<QString, fs::path> m_composed;
};

/// Takes up findings of one folder.
class Report {
public:
    Report(std::vector<Finding> &findings, std::size_t folder) : m_findings(&findings), m_folder(folder) {}

    void add(const QString &file, Finding::What what)
    {
        m_findings->push_back({m_folder, file, std::nullopt, std::move(what)});
    }

private:
    std::vector<Finding> *m_findings;
    std::size_t m_folder;
};

IndexContents contentsOf(const fs::path &index, Report &report)
{
    const QString &name = ProductionOptions::indexName;
    if (index.empty()) {
        report.add(name, IndexMissing{});
        return {};
    }
    const auto bytes = wholeFile(index, maxTableSize);
    if (const auto *error = std::get_if<std::error_code>(&bytes)) {
        report.add(name, IndexUnreadable{*error});
        return {};
    }
    IndexContents contents = IndexContents::of(std::get<QByteArray>(bytes));
    for (const std::int64_t row : contents.rowsNotUnderstood) {
        report.add(name, RowNotUnderstood{row});
    }
    return contents;
}

std::optional<HashLines> hashesIn(const fs::path &list, Report &report)
{
    if (list.empty()) {
        return std::nullopt;
    }
    const auto bytes = wholeFile(list, maxTableSize);
    if (std::holds_alternative<std::error_code>(bytes)) {
        report.add(ProductionFolder::hashListName, HashListNotUnderstood{0});
        return std::nullopt;
    }
    HashLines hashes = HashLines::of(std::get<QByteArray>(bytes));
    for (const std::int64_t line : hashes.linesNotUnderstood) {
        report.add(ProductionFolder::hashListName, HashListNotUnderstood{line});
    }
    return hashes;
}

} // namespace

ProductionFolder ProductionFolder::of(const fs::path &path, std::size_t folder)
{
    ProductionFolder production;
    production.path = path;
    Report report(production.findings, folder);
    std::error_code error;
    const Listing listing(path, error);
    if (error) {
        report.add({}, FolderUnreadable{error});
        return production;
    }
    production.index = listing.pathOf(ProductionOptions::indexName);
    production.hashes = hashesIn(listing.pathOf(hashListName), report);
    std::set<fs::path> named;
    std::set<QString> namedInIndex;
    for (IndexedCopy &indexed : contentsOf(production.index, report).copies) {
        fs::path copy = listing.pathOf(indexed.name);
        named.insert(copy);
        namedInIndex.insert(indexed.name);
        production.copies.push_back({std::move(indexed), std::move(copy)});
    }
    if (auto change = production.index.empty() ? std::nullopt : production.changeOf(production.index)) {
        report.add(ProductionOptions::indexName, std::move(*change));
    }
    const HashLines noHashes;
    for (const auto &[file, digest] : production.hashes.value_or(noHashes).digests) {
        const QString name = displayName(fs::path(file));
        if (listing.pathOf(name).empty() && !namedInIndex.contains(name)) {
            report.add(name, CopyMissing{});
        }
    }
    for (const fs::path &file : listing.files()) {
        const std::string name = file.filename().string();
        if (name.starts_with(hiddenFilePrefix)) {
            report.add(displayName(file), Leftover{});
        } else if (hasPdfEnding(std::string_view(name)) && !named.contains(file)) {
            report.add(displayName(file), NotInIndex{});
        }
    }
    return production;
}

std::optional<Finding::What> ProductionFolder::changeOf(const fs::path &file,
                                                        const std::stop_token &givenUp) const
{
    if (!hashes) {
        return std::nullopt;
    }
    const auto digest = hashes->digests.find(file.filename().string());
    if (digest == hashes->digests.end()) {
        return NotInHashList{};
    }
    const auto hashed = sha256Of(file, givenUp);
    const auto *there = std::get_if<HashedFile>(&hashed);
    return there && there->digest != digest->second ? std::optional<Finding::What>(Changed{}) : std::nullopt;
}

} // namespace tallyfold::check
