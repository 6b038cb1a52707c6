#pragma once

#include "app/AppModel.h"
#include "app/CurrentPlan.h"
#include "core/Production.h"

#include <QObject>
#include <QTimer>

#include <vector>

namespace tallyfold {

/// The conflicts with files in the chosen folder. Checks again when the folder, the plan or the options
/// change and when the application becomes active: immediately for the folder, otherwise after a delay, so
/// that typing does not wait for a slow disk. Pauses during a production, which itself fills the folder.
class OutputCheck final : public QObject {
    Q_OBJECT
public:
    OutputCheck(AppModel &model, const CurrentPlan &plan, QObject *parent = nullptr);

    /// The conflicts that a production would report now; none while no folder is chosen.
    [[nodiscard]] const std::vector<ProductionConflict> &conflicts() const;

Q_SIGNALS:
    void changed();

private:
    void look();
    void lookSoon();

    AppModel *m_model;
    const CurrentPlan *m_plan;
    std::vector<ProductionConflict> m_conflicts;
    QTimer m_timer;
};

} // namespace tallyfold
