#pragma once

#include "core/ProductionPlan.h"
#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolLabel.h"

#include <QWidget>

namespace tallyfold {

/// The totals of a plan, under the list.
class ProductionSummary final : public QWidget {
    Q_OBJECT
public:
    explicit ProductionSummary(QWidget *parent = nullptr);

    void setPlan(const ProductionPlan &plan);

private:
    StyledLabel *m_totals;
    StyledLabel *m_range;
    SymbolLabel *m_skipped;
};

} // namespace tallyfold
