#include "ui/help/HelpRouter.h"

namespace tallyfold {

const QString &HelpRouter::topic() const
{
    return m_topic;
}

void HelpRouter::setTopic(const QString &topic)
{
    if (topic != m_topic) {
        m_topic = topic;
        Q_EMIT topicChanged();
    }
}

} // namespace tallyfold
