#pragma once

#include "ui/controls/Card.h"
#include "ui/controls/SectionTitle.h"

#include <QWidget>

namespace tallyfold {

/// A numbered section that can be closed: a title, a card of rows, and perhaps an explanation under it.
class CollapsibleSection : public QWidget {
    Q_OBJECT
public:
    /// No explanation is shown when `footer` is empty.
    CollapsibleSection(std::int64_t number, const QString &title, const QString &footer,
                       QWidget *parent = nullptr);

    [[nodiscard]] Card &card();
    [[nodiscard]] bool isExpanded() const;
    void setExpanded(bool isExpanded);
    /// Lets the title bear `sign` while the section is closed.
    void setSign(const std::optional<SectionSign> &sign);

Q_SIGNALS:
    void expandedChanged(bool isExpanded);

private:
    SectionTitle *m_title;
    QWidget *m_body;
    Card *m_card;
};

} // namespace tallyfold
