#include "app/CurrentPlan.h"

namespace tallyfold {

CurrentPlan::CurrentPlan(AppModel &model, QObject *parent) : QObject(parent), m_model(&model)
{
    connect(&model, &AppModel::sourcesChanged, this, &CurrentPlan::renew);
    connect(&model, &AppModel::settingsChanged, this, &CurrentPlan::renewForSettings);
    renew();
}

const ProductionPlan &CurrentPlan::operator*() const
{
    return *m_plan;
}

std::shared_ptr<const ProductionPlan> CurrentPlan::snapshot() const
{
    return m_plan;
}

void CurrentPlan::renewForSettings()
{
    if (m_model->settings().stamp != m_stamp) { // Presets and options do not affect the plan.
        renew();
    }
}

void CurrentPlan::renew()
{
    m_stamp = m_model->settings().stamp;
    m_plan = std::make_shared<const ProductionPlan>(m_model->plan());
    Q_EMIT changed();
}

} // namespace tallyfold
