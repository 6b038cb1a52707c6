#include "app/PresetChange.h"

#include <tuple>
#include <utility>

namespace tallyfold {

namespace {

/// All fields but the start number.
constexpr std::tuple fields{&StampSettings::prefix,
                            &StampSettings::digits,
                            &StampSettings::suffix,
                            &StampSettings::batesPosition,
                            &StampSettings::margin,
                            &StampSettings::fontName,
                            &StampSettings::fontSize,
                            &StampSettings::color,
                            &StampSettings::background,
                            &StampSettings::legend,
                            &StampSettings::legendPosition,
                            &StampSettings::pageOfTotal,
                            &StampSettings::pageOfTotalFormat,
                            &StampSettings::pageOfTotalPosition,
                            &StampSettings::cover,
                            &StampSettings::order,
                            &StampSettings::naming};

} // namespace

StampSettings withFieldsOf(const StampSettings &current, const StampSettings &from, const StampSettings &to)
{
    StampSettings result = current;
    const auto take = [&](auto field) {
        if (from.*field != to.*field) {
            result.*field = to.*field;
        }
    };
    std::apply([&](auto... field) { (take(field), ...); }, fields);
    if (current.startNumber == from.startNumber) {
        result.startNumber = to.startNumber;
    }
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
