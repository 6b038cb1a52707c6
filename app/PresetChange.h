#pragma once

#include "core/StampSettings.h"

#include <QString>
#include <QUndoCommand>

#include <cstdint>
#include <functional>
#include <memory>

namespace tallyfold {

/// `current` with the values of `to` in the fields in which `from` and `to` differ; the start number only if
/// it still is that of `from`.
[[nodiscard]] StampSettings withFieldsOf(const StampSettings &current, const StampSettings &from,
                                         const StampSettings &to);

/// The application of a preset as an undo command: undo restores the fields that the preset changed and keeps
/// other changes. It also keeps a start number that the series has passed, so that no number is assigned
/// twice.
class PresetChange final : public QUndoCommand {
public:
    /// Reads and writes the stamp settings.
    struct Settings {
        std::function<StampSettings()> get;
        std::function<void(const StampSettings &)> set;
    };

    /// The change from `before` to `after`. It becomes obsolete when `series` changes.
    PresetChange(const QString &actionName, Settings settings, const StampSettings &before,
                 const StampSettings &after, std::shared_ptr<const std::int64_t> series);

    /// Whether its series has ended: it then has no effect and is removed from the stack by undo or redo.
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
    bool m_isDone = true; ///< QUndoStack::push calls redo for a change that is made already.
};

} // namespace tallyfold
