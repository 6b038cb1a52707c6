#pragma once

#include "app/AppModel.h"
#include "core/ProductionPlan.h"

#include <QObject>

#include <memory>

namespace tallyfold {

/// The plan of what would be written now, made once for all views that show something of it.
class CurrentPlan final : public QObject {
    Q_OBJECT
public:
    explicit CurrentPlan(AppModel &model, QObject *parent = nullptr);

    [[nodiscard]] const ProductionPlan &operator*() const;
    /// The plan as it is now; it stays as it is when another takes its place.
    [[nodiscard]] std::shared_ptr<const ProductionPlan> snapshot() const;

Q_SIGNALS:
    /// There is another plan.
    void changed();

private:
    void renew();
    void renewForSettings();

    AppModel *m_model;
    StampSettings m_stamp;
    std::shared_ptr<const ProductionPlan> m_plan;
};

} // namespace tallyfold
