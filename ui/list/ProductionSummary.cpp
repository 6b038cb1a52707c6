#include "ui/list/ProductionSummary.h"

#include "ui/text/PlanText.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

namespace tallyfold {

ProductionSummary::ProductionSummary(QWidget *parent)
    : QWidget(parent),
      m_totals(new StyledLabel(TextStyle::calloutStrong)),
      m_range(new StyledLabel(TextStyle::callout)),
      m_skipped(new SymbolLabel(QStringLiteral("exclamationmark.triangle"), Tone::secondary,
                                TextStyle::caption, Tone::secondary))
{
    m_totals->setObjectName(QStringLiteral("totals"));
    m_range->setObjectName(QStringLiteral("range"));
    m_skipped->setObjectName(QStringLiteral("skipped"));
    m_range->setTabularDigits();
    m_range->setSelectable();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::section, spacing::wide, spacing::section, spacing::wide);
    layout->setSpacing(spacing::tight);
    layout->addWidget(m_totals);
    layout->addWidget(m_range);
    layout->addWidget(m_skipped);
}

void ProductionSummary::setPlan(const ProductionPlan &plan)
{
    const PlanSummary summary = summaryOf(plan);
    m_totals->setText(summary.totals);
    m_range->setText(summary.range.value_or(QString()));
    m_range->setVisible(summary.range.has_value());
    m_skipped->setText(summary.skipped.value_or(QString()));
    m_skipped->setVisible(summary.skipped.has_value());
}

} // namespace tallyfold
