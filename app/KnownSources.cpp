#include "app/KnownSources.h"

#include "core/SourceClassifier.h"

#include <algorithm>

namespace tallyfold {

KnownSources::Told KnownSources::summaryOf(const SourceFile &source)
{
    return {source.pageCount, source.problem};
}

SourceFile KnownSources::read(const std::filesystem::path &location)
{
    const FileState state = FileState::of(location); // Before: what changes while it is read is seen later.
    SourceFile source = classify(location);
    m_known.insert(source.id, {source, state, summaryOf(source)});
    return source;
}

std::vector<KnownSources::Look> KnownSources::looksAt(const std::vector<SourceFile> &sources) const
{
    std::vector<Look> looks;
    looks.reserve(sources.size());
    for (const SourceFile &source : sources) {
        if (const auto known = m_known.constFind(source.id); known != m_known.constEnd()) {
            looks.push_back({source.id, source.url, known->state});
        }
    }
    return looks;
}

std::vector<KnownSources::Look> KnownSources::changed(const std::vector<Look> &looks,
                                                      const std::stop_token &givenUp)
{
    std::vector<Look> changed;
    for (const Look &look : looks) {
        if (givenUp.stop_requested()) {
            break;
        }
        if (FileState::of(look.url) != look.then) {
            changed.push_back(look);
        }
    }
    return changed;
}

bool KnownSources::readAnew(std::vector<SourceFile> &sources, const std::vector<Look> &changed)
{
    QHash<QUuid, FileState> wanted;
    for (const Look &look : changed) {
        wanted.insert(look.id, look.then);
    }
    bool isAny = false;
    for (SourceFile &source : sources) {
        const auto then = wanted.constFind(source.id);
        const auto known = m_known.find(source.id);
        if (then == wanted.constEnd() || known == m_known.end() || known->state != *then) {
            continue;
        }
        known->state = FileState::of(source.url);
        SourceFile read = classify(source.url);
        read.id = source.id;
        source = read;
        known->source = read;
        isAny = true;
    }
    return isAny;
}

std::vector<SourceFile> KnownSources::latest(const std::vector<SourceFile> &sources) const
{
    std::vector<SourceFile> latest = sources;
    for (SourceFile &source : latest) {
        if (const auto known = m_known.constFind(source.id); known != m_known.constEnd()) {
            source = known->source;
        }
    }
    return latest;
}

std::vector<SourceChange> KnownSources::takeChanges(const std::vector<SourceFile> &sources)
{
    std::vector<SourceChange> changes;
    for (const SourceFile &source : sources) {
        const auto known = m_known.find(source.id);
        const Told now = summaryOf(source);
        if (known != m_known.end() && known->told != now) {
            changes.push_back({source.name, known->told.pages, now.pages, !known->told.problem, !now.problem,
                               !known->state.exists});
            known->told = now;
        }
    }
    return changes;
}

} // namespace tallyfold
