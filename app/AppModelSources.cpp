// The list of sources and the selection in it.

#include "app/AppModel.h"
#include "app/SourceRows.h"

#include <memory>
#include <utility>

namespace tallyfold {

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
