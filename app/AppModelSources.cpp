// The list of sources and the selection in it.

#include "app/AppModel.h"
#include "app/RunMessages.h"
#include "app/SourceMessages.h"
#include "app/SourceRows.h"
#include "core/SourceCollector.h"

#include <QCursor>
#include <QGuiApplication>

#include <memory>
#include <utility>

namespace tallyfold {

namespace {

/// Tells that nothing else happens while files are read.
class BusyCursor {
public:
    BusyCursor()
    {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~BusyCursor()
    {
        QGuiApplication::restoreOverrideCursor();
    }
    BusyCursor(const BusyCursor &) = delete;
    BusyCursor &operator=(const BusyCursor &) = delete;
};

} // namespace

const std::vector<SourceFile> &AppModel::sources() const
{
    return m_sources;
}

const QSet<QUuid> &AppModel::selection() const
{
    return m_selection;
}

void AppModel::setSelection(const QSet<QUuid> &selection)
{
    if (assign(m_selection, selection & idsOf(m_sources), &AppModel::selectionChanged)) {
        refreshPreviews();
    }
}

void AppModel::setSources(const std::vector<SourceFile> &sources)
{
    // Both are in place before either is told, so that nobody sees a selection of what is gone.
    const QSet<QUuid> selection = m_selection & idsOf(sources);
    const bool isOtherSelection = selection != m_selection;
    m_selection = selection;
    assign(m_sources, sources, &AppModel::sourcesChanged);
    if (isOtherSelection) {
        Q_EMIT selectionChanged();
    }
}

void AppModel::restoreSources(std::vector<SourceFile> &list)
{
    std::vector<SourceFile> current = m_sources;
    setSources(m_known.latest(list));
    list = std::move(current);
    refreshPreviews();
}

void AppModel::changeSources(const std::vector<SourceFile> &sources, const QString &actionName)
{
    auto before = std::make_shared<std::vector<SourceFile>>(m_sources);
    setSources(sources);
    refreshPreviews();
    registerUndo(actionName, [this, before] { restoreSources(*before); });
}

void AppModel::lookAtSources()
{
    if (m_sources.empty() || (m_look && m_look->isRunning())) {
        return;
    }
    m_look = std::make_unique<LooseTask>(
        [this, looks = m_known.looksAt(m_sources)](const std::stop_token &givenUp) -> LooseTask::Ending {
            return [this, changed = KnownSources::changed(looks, givenUp)] { readAnew(changed); };
        });
}

void AppModel::readAnew(const std::vector<KnownSources::Look> &changed)
{
    if (changed.empty()) {
        return;
    }
    const BusyCursor busy;
    std::vector<SourceFile> sources = m_sources;
    if (m_known.readAnew(sources, changed)) {
        setSources(sources);
        refreshPreviews(); // Also where only what is on the pages is another.
    }
}

bool AppModel::isListAsKnown()
{
    readAnew(KnownSources::changed(m_known.looksAt(m_sources)));
    const std::vector<SourceChange> changes = m_known.takeChanges(m_sources);
    if (!changes.empty()) {
        setProblem(changedSourcesMessage(changes));
    }
    return changes.empty();
}

void AppModel::chooseFiles()
{
    add(m_panels->run(OpenPanel::forFiles()));
}

void AppModel::add(std::span<const std::filesystem::path> urls)
{
    if (urls.empty()) {
        return;
    }
    const CollectedPdfs found = collectPdfs(urls);
    if (!found.unreadableFolders.empty()) {
        setProblem(unreadableFoldersMessage(found.unreadableFolders));
    } else if (found.locations.empty()) {
        setProblem(noPdfsMessage());
    }
    const std::vector<std::filesystem::path> fresh = newLocations(m_sources, found.locations);
    if (fresh.empty()) {
        return;
    }
    const BusyCursor busy;
    std::vector<SourceFile> sources = m_sources;
    sources.reserve(sources.size() + fresh.size());
    for (const std::filesystem::path &location : fresh) {
        sources.push_back(m_known.read(location));
    }
    changeSources(sources, tr("Add Files"));
}

void AppModel::remove(const QSet<QUuid> &ids)
{
    const std::vector<SourceFile> rest = without(m_sources, ids);
    const std::size_t removed = m_sources.size() - rest.size();
    if (removed > 0) {
        changeSources(rest, removed == 1 ? tr("Remove File") : tr("Remove Files"));
    }
}

void AppModel::removeSelected()
{
    remove(QSet<QUuid>(m_selection)); // A copy: the selection changes on the way.
}

void AppModel::removeAll()
{
    remove(idsOf(m_sources));
}

void AppModel::move(const std::set<std::int64_t> &fromOffsets, std::int64_t toOffset)
{
    setSources(moved(ordered(m_sources, m_settings.stamp.order), fromOffsets, toOffset));
    StampSettings stamp = m_settings.stamp;
    stamp.order = FileOrder::manual;
    setStamp(stamp);
    refreshPreviews();
}

} // namespace tallyfold
