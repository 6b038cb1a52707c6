#pragma once

#include "ui/controls/Card.h"
#include "ui/controls/SectionTitle.h"

#include <QWidget>

namespace tallyfold {

/// A numbered section that can be collapsed: a title, a card of rows and an optional explanation below.
class CollapsibleSection : public QWidget {
    Q_OBJECT
public:
    /// `footer` is the explanation; empty for none.
    CollapsibleSection(std::int64_t number, const QString &title, const QString &footer,
                       QWidget *parent = nullptr);

    [[nodiscard]] Card &card();
    [[nodiscard]] bool isExpanded() const;
    void setExpanded(bool isExpanded);
    /// Shows `sign` in the title while the section is collapsed.
    void setSign(const std::optional<SectionSign> &sign);

Q_SIGNALS:
    void expandedChanged(bool isExpanded);

private:
    SectionTitle *m_title;
    QWidget *m_body;
    Card *m_card;
};

} // namespace tallyfold
