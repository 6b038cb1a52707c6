#pragma once

#include "ui/Environment.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/controls/SymbolLabel.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace tallyfold {

/// Explains that the files in the folder are the copies of the last run, as long as the current plan is the
/// one that it wrote. Hidden otherwise.
class WrittenNotice final : public QWidget {
    Q_OBJECT
public:
    explicit WrittenNotice(const Environment &environment, QWidget *parent = nullptr);

private:
    /// Everything that determines what a run writes.
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
    std::optional<Run> m_started; ///< The run in progress.
    std::optional<Run> m_written; ///< The run that the summary of the model describes.
    SymbolLabel *m_label;
    ElidedLabel *m_place;
};

} // namespace tallyfold
