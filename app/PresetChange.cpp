#include "app/PresetChange.h"

#include <utility>

namespace tallyfold {

StampSettings withFieldsOf(const StampSettings &current, const StampSettings &from, const StampSettings &to)
{
    StampSettings result = current;
    forEachField([&](const char * /*key*/, auto member) {
        if (from.*member != to.*member) {
            result.*member = to.*member;
        }
    });
    result.startNumber = current.startNumber == from.startNumber ? to.startNumber : current.startNumber;
    return result;
}

PresetChange::PresetChange(const QString &actionName, Settings settings, const StampSettings &before,
                           const StampSettings &after, std::shared_ptr<const std::int64_t> series)
    : QUndoCommand(actionName),
      m_settings(std::move(settings)),
      m_before(before),
      m_after(after),
      m_series(std::move(series)),
      m_seriesThen(*m_series)
{
}

bool PresetChange::isOver() const
{
    return *m_series != m_seriesThen;
}

void PresetChange::undo()
{
    change(m_after, m_before);
    m_isDone = false;
}

void PresetChange::redo()
{
    if (!m_isDone) {
        change(m_before, m_after);
    }
    m_isDone = true;
}

void PresetChange::change(const StampSettings &from, const StampSettings &to)
{
    if (isOver()) {
        setObsolete(true);
    } else {
        m_settings.set(withFieldsOf(m_settings.get(), from, to));
    }
}

} // namespace tallyfold
