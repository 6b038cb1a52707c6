#pragma once

#include "app/AppModel.h"
#include "core/ProductionPlan.h"

#include <QObject>

#include <memory>

namespace tallyfold {

/// The plan for the current state of the model, computed once for all views.
class CurrentPlan final : public QObject {
    Q_OBJECT
public:
    explicit CurrentPlan(AppModel &model, QObject *parent = nullptr);

    [[nodiscard]] const ProductionPlan &operator*() const;
    /// The current plan. It is immutable: a change of the model makes a new one.
    [[nodiscard]] std::shared_ptr<const ProductionPlan> snapshot() const;

Q_SIGNALS:
    /// The plan was replaced.
    void changed();

private:
    void renew();
    void renewForSettings();

    AppModel *m_model;
    StampSettings m_stamp;
    std::shared_ptr<const ProductionPlan> m_plan;
};

} // namespace tallyfold
