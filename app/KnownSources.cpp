#include "app/KnownSources.h"

#include "core/SourceClassifier.h"

#include <QSet>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace tallyfold {

KnownSources::Told KnownSources::summaryOf(const SourceFile &source)
{
    return {source.pageCount, source.problem};
}

KnownSources::Reading KnownSources::read(const std::filesystem::path &location)
{
    const FileState state = FileState::of(location);
    return {classify(location), state};
}

void KnownSources::add(const Reading &reading)
{
    m_known.insert(reading.source.id, {reading.source, reading.state, summaryOf(reading.source)});
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

std::vector<KnownSources::Look> KnownSources::unread(const std::vector<SourceFile> &sources,
                                                     const std::vector<Look> &changed) const
{
    QSet<QUuid> listed;
    for (const SourceFile &source : sources) {
        listed.insert(source.id);
    }
    std::vector<Look> unread;
    std::copy_if(changed.begin(), changed.end(), std::back_inserter(unread), [&](const Look &look) {
        const auto known = m_known.constFind(look.id);
        return listed.contains(look.id) && known != m_known.constEnd() && known->state == look.then;
    });
    return unread;
}

void KnownSources::renew(std::vector<SourceFile> &sources, const std::vector<Look> &looks,
                         const std::vector<Reading> &readings)
{
    for (std::size_t place = 0; place < std::min(looks.size(), readings.size()); ++place) {
        const auto known = m_known.find(looks[place].id);
        if (known != m_known.end()) {
            known->source = readings[place].source;
            known->source.id = looks[place].id;
            known->state = readings[place].state;
        }
    }
    sources = latest(sources);
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
