#pragma once

#include "app/AppModel.h"
#include "app/CurrentPlan.h"
#include "core/Production.h"

#include <QObject>
#include <QTimer>

#include <vector>

namespace tallyfold {

/// What stands in the way of writing into the chosen folder. Looks there again when the folder, the plan or
/// the options change and when the program becomes active: at once for the folder, a moment later for the
/// rest, so that typing does not wait for a slow disk. Keeps still while a production runs, which fills the
/// folder itself.
class OutputCheck final : public QObject {
    Q_OBJECT
public:
    OutputCheck(AppModel &model, const CurrentPlan &plan, QObject *parent = nullptr);

    /// What a production would report now; nothing while no folder is chosen.
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
