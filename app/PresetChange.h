#pragma once

#include "core/StampSettings.h"

#include <QString>
#include <QUndoCommand>

#include <cstdint>
#include <functional>
#include <memory>

namespace tallyfold {

/// `current` with those fields as they are in `to` in which `from` and `to` differ; the start number only
/// where it is still the one in `from`.
[[nodiscard]] StampSettings withFieldsOf(const StampSettings &current, const StampSettings &from,
                                         const StampSettings &to);

/// A preset that was applied, as an undoable step: undoing gives back the fields that applying changed, and
/// leaves what was changed besides. A start number from which the series has gone on stays as well, or
/// numbers might be given twice.
class PresetChange final : public QUndoCommand {
public:
    /// Reads and writes the stamp settings.
    struct Settings {
        std::function<StampSettings()> get;
        std::function<void(const StampSettings &)> set;
    };

    /// The change from `before` to `after`. It is over once `series` counts on.
    PresetChange(const QString &actionName, Settings settings, const StampSettings &before,
                 const StampSettings &after, std::shared_ptr<const std::int64_t> series);

    /// Whether the series it was part of is at an end: it then does nothing any more, and leaves its stack
    /// when it is undone or redone.
    [[nodiscard]] bool isOver() const;

    void undo() override;
    void redo() override;

private:
    void change(const StampSettings &from, const StampSettings &to);

    Settings m_settings;
    StampSettings m_before;
    StampSettings m_after;
    std::shared_ptr<const std::int64_t> m_series;
    std::int64_t m_seriesThen;
    bool m_isDone = true; ///< The first redo comes from the undo stack taking the change in.
};

} // namespace tallyfold
