#pragma once

#include "ui/Environment.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/controls/SymbolLabel.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace tallyfold {

/// What the last run wrote, and where, as long as what is planned now is what it wrote: the copies in the
/// folder are then its own, and nothing went wrong. Hidden otherwise.
class WrittenNotice final : public QWidget {
    Q_OBJECT
public:
    explicit WrittenNotice(const Environment &environment, QWidget *parent = nullptr);

private:
    /// All that decides what a run writes.
    struct Run {
        std::shared_ptr<const ProductionPlan> plan;
        std::optional<std::filesystem::path> folder;
        ProductionOptions options;
    };

    [[nodiscard]] Run present() const;
    [[nodiscard]] bool isUnchanged() const;
    void follow();
    void take();
    void showNotice();

    Environment m_environment;
    std::optional<Run> m_started; ///< The run that is going on.
    std::optional<Run> m_written; ///< The run of the model's summary.
    SymbolLabel *m_label;
    ElidedLabel *m_place;
};

} // namespace tallyfold
