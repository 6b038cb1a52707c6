// Reading files: those that are added, and those that are not what they were.

#include "app/AppModel.h"
#include "app/RunMessages.h"
#include "app/SourceMessages.h"
#include "app/SourceRows.h"
#include "core/SourceCollector.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace tallyfold {

namespace {

namespace fs = std::filesystem;

/// As `collectPdfs`, soon over when a stop is requested.
CollectedPdfs collect(const std::vector<fs::path> &items, const std::stop_token &stopped)
{
    return collectPdfs(items, [&stopped](const fs::path &folder, std::vector<FolderEntry> &entries) {
        return stopped.stop_requested() || listFolder(folder, entries);
    });
}

} // namespace

bool AppModel::isReading() const
{
    return m_isReading;
}

void AppModel::setReadingPanel(ReadingPanel *panel)
{
    m_readingPanel = panel;
}

void AppModel::readAlone(const std::function<void()> &work)
{
    assign(m_isReading, true, &AppModel::readingChanged);
    work();
    assign(m_isReading, false, &AppModel::readingChanged);
    if (!m_toAdd.empty()) { // Not now: whoever had this read is to get what was read, and nothing else.
        QMetaObject::invokeMethod(this, &AppModel::addNext, Qt::QueuedConnection);
    }
}

std::vector<KnownSources::Reading> AppModel::await(SourceReading &reading)
{
    if (m_readingPanel != nullptr) {
        m_readingPanel->await(reading);
    } else {
        reading.wait();
    }
    reading.stop();
    return reading.take();
}

void AppModel::chooseFiles()
{
    addChosen(m_panels->run(OpenPanel::forFiles()));
}

void AppModel::chooseFolder()
{
    addChosen(m_panels->run(OpenPanel::forFolder()));
}

void AppModel::addChosen(const PanelAnswer &answer)
{
    add(answer.chosen);
    if (!answer.lost.isEmpty()) {
        setProblem(lostFilesMessage(answer.lost));
    }
}

void AppModel::add(std::span<const fs::path> urls)
{
    if (!urls.empty()) {
        m_toAdd.emplace_back(urls.begin(), urls.end());
        addNext();
    }
}

void AppModel::addNext()
{
    if (m_isReading || m_toAdd.empty()) {
        return;
    }
    std::vector<fs::path> items = std::move(m_toAdd.front());
    m_toAdd.pop_front();
    readAlone([this, &items] { addNow(std::move(items)); });
}

void AppModel::addNow(std::vector<fs::path> items)
{
    const auto found = std::make_shared<CollectedPdfs>(); // Its thread may outlive the reading.
    SourceReading reading(
        [found, items = std::move(items), sources = m_sources](const std::stop_token &stopped) {
            *found = collect(items, stopped);
            return newLocations(sources, found->locations);
        },
        m_reader);
    const std::vector<KnownSources::Reading> readings = await(reading);
    if (!reading.progress().files) {
        return; // Stopped before that thread had come to its end.
    }
    if (!found->unreadableFolders.empty()) {
        setProblem(unreadableFoldersMessage(found->unreadableFolders));
    } else if (found->locations.empty()) {
        setProblem(noPdfsMessage());
    }
    if (readings.empty()) {
        return;
    }
    std::vector<SourceFile> sources = m_sources;
    sources.reserve(sources.size() + readings.size());
    for (const KnownSources::Reading &read : readings) {
        m_known.add(read);
        sources.push_back(read.source);
    }
    changeSources(sources, tr("Add Files"));
}

void AppModel::lookAtSources()
{
    if (m_sources.empty() || m_isReading || (m_look && m_look->isRunning())) {
        return;
    }
    m_look = std::make_unique<LooseTask>(
        [this, looks = m_known.looksAt(m_sources)](const std::stop_token &givenUp) -> LooseTask::Ending {
            return [this, changed = KnownSources::changed(looks, givenUp)] { readAnew(changed); };
        });
}

bool AppModel::readAnew(const std::vector<KnownSources::Look> &changed)
{
    const std::vector<KnownSources::Look> looks = m_known.unread(m_sources, changed);
    if (looks.empty() || m_isReading) { // The next look finds what this one leaves.
        return true;
    }
    std::vector<fs::path> locations;
    std::transform(looks.begin(), looks.end(), std::back_inserter(locations),
                   [](const KnownSources::Look &look) { return look.url; });
    bool isAll = false;
    readAlone([&] {
        SourceReading reading([locations](const std::stop_token &) { return locations; }, m_reader);
        const std::vector<KnownSources::Reading> readings = await(reading);
        isAll = readings.size() == looks.size();
        if (!readings.empty()) {
            std::vector<SourceFile> sources = m_sources;
            m_known.renew(sources, looks, readings);
            setSources(sources);
            refreshPreviews(); // Also where only what is on the pages is another.
        }
    });
    return isAll;
}

bool AppModel::isListAsKnown()
{
    if (!readAnew(KnownSources::changed(m_known.looksAt(m_sources)))) {
        return false;
    }
    const std::vector<SourceChange> changes = m_known.takeChanges(m_sources);
    if (!changes.empty()) {
        setProblem(changedSourcesMessage(changes));
    }
    return changes.empty();
}

} // namespace tallyfold
