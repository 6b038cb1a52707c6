#pragma once

#include "ui/Desktop.h"
#include "ui/help/HelpRouter.h"
#include "ui/text/HelpTopics.h"

#include <QListWidget>
#include <QScrollArea>
#include <QWidget>

namespace tallyfold {

/// The help window: a list of topics and the text of the selected one.
class HelpView final : public QWidget {
    Q_OBJECT
public:
    using Topic = HelpTopic;

    HelpView(HelpRouter &router, Desktop &desktop, QWidget *parent = nullptr);

private:
    void showTopic();
    [[nodiscard]] QWidget *pageOf(const Topic &topic);

    HelpRouter *m_router;
    Desktop *m_desktop;
    QListWidget *m_topics;
    QScrollArea *m_detail;
};

} // namespace tallyfold
