#include "app/SourceRows.h"

#include "core/SourceCollector.h"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace tallyfold {

std::vector<std::filesystem::path> newLocations(const std::vector<SourceFile> &sources,
                                                std::span<const std::filesystem::path> locations)
{
    std::unordered_set<std::string> known;
    for (const SourceFile &source : sources) {
        known.insert(standardized(source.url).native());
    }
    std::vector<std::filesystem::path> fresh;
    for (const std::filesystem::path &location : locations) {
        if (known.insert(standardized(location).native()).second) {
            fresh.push_back(location);
        }
    }
    return fresh;
}

std::vector<SourceFile> without(const std::vector<SourceFile> &sources, const QSet<QUuid> &ids)
{
    std::vector<SourceFile> rest;
    std::copy_if(sources.begin(), sources.end(), std::back_inserter(rest),
                 [&ids](const SourceFile &source) { return !ids.contains(source.id); });
    return rest;
}

std::vector<SourceFile> moved(const std::vector<SourceFile> &rows, const std::set<std::int64_t> &from,
                              std::int64_t to)
{
    std::vector<SourceFile> before;
    std::vector<SourceFile> movers;
    std::vector<SourceFile> after;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const auto place = static_cast<std::int64_t>(row);
        (from.contains(place) ? movers : place < to ? before : after).push_back(rows[row]);
    }
    before.insert(before.end(), movers.begin(), movers.end());
    before.insert(before.end(), after.begin(), after.end());
    return before;
}

QSet<QUuid> idsOf(const std::vector<SourceFile> &sources)
{
    QSet<QUuid> ids;
    for (const SourceFile &source : sources) {
        ids.insert(source.id);
    }
    return ids;
}

} // namespace tallyfold
