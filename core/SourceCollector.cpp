#include "core/SourceCollector.h"

#include "core/NaturalOrder.h"
#include "core/PdfEnding.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <unordered_set>
#include <utility>

namespace tallyfold {

namespace {

namespace fs = std::filesystem;

/// A name of a PDF that is neither hidden nor the companion ("._name") another desktop leaves beside its
/// files.
bool isPdfName(const std::string &name)
{
    return !name.starts_with('.') && hasPdfEnding(name);
}

/// Adds all files below `top` with the name of a PDF. Symbolic links to folders are not followed, which rules
/// out loops. Every folder is listed completely before the next one is opened: an error affects one folder
/// only, and a deep tree needs no more file descriptors than a flat one.
std::vector<fs::path> pdfsBelow(const fs::path &top, const ListFolder &list,
                                std::vector<fs::path> &unreadableFolders)
{
    std::vector<fs::path> found;
    std::vector<fs::path> folders{top};
    std::vector<FolderEntry> entries;
    while (!folders.empty()) {
        const fs::path folder = std::move(folders.back());
        folders.pop_back();
        entries.clear();
        if (!list(folder, entries)) {
            unreadableFolders.push_back(folder);
        }
        for (FolderEntry &entry : entries) {
            const std::string name = entry.path.filename().native();
            if (name.starts_with('.')) {
                continue;
            }
            if (isPdfName(name)) {
                found.push_back(entry.path);
            }
            if (entry.isFolder) {
                folders.push_back(std::move(entry.path));
            }
        }
    }
    return found;
}

/// Sorts the files found below a folder. Their common path to that folder is ignored.
void sortByPath(std::vector<fs::path> &locations)
{
    // Directory entries come in any order: sort by bytes first, so that names that compare equal have a fixed
    // order.
    std::vector<std::size_t> byBytes(locations.size());
    for (std::size_t index = 0; index < byBytes.size(); ++index) {
        byBytes[index] = index;
    }
    std::sort(byBytes.begin(), byBytes.end(),
              [&](std::size_t left, std::size_t right) { return locations[left] < locations[right]; });
    std::vector<QString> names;
    names.reserve(byBytes.size());
    for (const std::size_t index : byBytes) {
        const std::string &path = locations[index].native();
        names.push_back(QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size())));
    }
    std::vector<fs::path> sorted;
    sorted.reserve(locations.size());
    for (const std::size_t place : NaturalOrder().sorted(names)) {
        sorted.push_back(std::move(locations[byBytes[place]]));
    }
    locations = std::move(sorted);
}

} // namespace

fs::path standardized(const fs::path &path)
{
    std::error_code error;
    fs::path absolute = fs::absolute(path, error);
    absolute = (error ? path : absolute).lexically_normal();
    return absolute.has_filename() || absolute == absolute.root_path() ? absolute : absolute.parent_path();
}

bool listFolder(const fs::path &folder, std::vector<FolderEntry> &entries)
{
    std::error_code error;
    std::error_code unknown; // What some entry is. By its name it is found all the same.
    bool isAll = true;
    fs::directory_iterator entry(folder, error);
    while (!error && entry != fs::directory_iterator()) {
        const bool isFolder = !entry->is_symlink(unknown) && entry->is_directory(unknown);
        isAll = isAll && (!unknown || unknown == std::errc::no_such_file_or_directory);
        entries.push_back({entry->path(), isFolder});
        entry.increment(error);
    }
    return isAll && !error;
}

CollectedPdfs collectPdfs(std::span<const fs::path> items)
{
    return collectPdfs(items, listFolder);
}

CollectedPdfs collectPdfs(std::span<const fs::path> items, const ListFolder &list)
{
    CollectedPdfs collected;
    std::unordered_set<std::string> known;
    const auto add = [&](const fs::path &location) {
        if (known.insert(standardized(location).native()).second) {
            collected.locations.push_back(location);
        }
    };
    for (const fs::path &item : items) {
        std::error_code error;
        const fs::file_status status = fs::status(item, error);
        if (!fs::exists(status)) {
            continue;
        }
        if (!fs::is_directory(status)) {
            if (isPdfName(item.filename().native())) {
                add(item);
            }
            continue;
        }
        std::vector<fs::path> found = pdfsBelow(item, list, collected.unreadableFolders);
        sortByPath(found);
        std::for_each(found.begin(), found.end(), add);
    }
    return collected;
}

} // namespace tallyfold
