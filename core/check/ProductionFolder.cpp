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
constexpr std::int64_t maxIndexSize = 512 * 1024 * 1024;

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

IndexContents indexIn(const Listing &listing, Report &report)
{
    const QString &name = ProductionOptions::indexName;
    const fs::path path = listing.pathOf(name);
    if (path.empty()) {
        report.add(name, IndexMissing{});
        return {};
    }
    const auto bytes = wholeFile(path, maxIndexSize);
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

} // namespace

ProductionFolder ProductionFolder::of(const fs::path &path, std::size_t folder)
{
    ProductionFolder production{path, {}, {}};
    Report report(production.findings, folder);
    std::error_code error;
    const Listing listing(path, error);
    if (error) {
        report.add({}, FolderUnreadable{error});
        return production;
    }
    std::set<fs::path> named;
    for (IndexedCopy &indexed : indexIn(listing, report).copies) {
        fs::path copy = listing.pathOf(indexed.name);
        named.insert(copy);
        production.copies.push_back({std::move(indexed), std::move(copy)});
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

} // namespace tallyfold::check
