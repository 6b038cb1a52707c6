#include "ui/controls/CollapsibleSection.h"

#include "ui/controls/StyledLabel.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

namespace tallyfold {

CollapsibleSection::CollapsibleSection(std::int64_t number, const QString &title, const QString &footer,
                                       QWidget *parent)
    : QWidget(parent), m_title(new SectionTitle(number, title)), m_body(new QWidget), m_card(new Card)
{
    auto *body = new QVBoxLayout(m_body);
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(spacing::tight + 2);
    body->addWidget(m_card);
    if (!footer.isEmpty()) {
        auto *explanation = new StyledLabel(footer, TextStyle::caption, Tone::secondary);
        explanation->setContentsMargins(spacing::wide, 0, spacing::wide, 0);
        body->addWidget(explanation);
    }
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::tight);
    layout->addWidget(m_title);
    layout->addWidget(m_body);
    connect(m_title, &QAbstractButton::toggled, this, [this](bool isExpanded) {
        m_body->setVisible(isExpanded);
        Q_EMIT expandedChanged(isExpanded);
    });
}

Card &CollapsibleSection::card()
{
    return *m_card;
}

bool CollapsibleSection::isExpanded() const
{
    return m_title->isChecked();
}

void CollapsibleSection::setSign(const std::optional<SectionSign> &sign)
{
    m_title->setSign(sign);
}

void CollapsibleSection::setExpanded(bool isExpanded)
{
    m_title->setChecked(isExpanded);
}

} // namespace tallyfold
