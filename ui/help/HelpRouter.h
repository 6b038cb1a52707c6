#pragma once

#include <QObject>
#include <QString>

namespace tallyfold {

/// The topic that the help shows; kept while its window is closed.
class HelpRouter final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The identifier of a topic.
    [[nodiscard]] const QString &topic() const;
    void setTopic(const QString &topic);

Q_SIGNALS:
    void topicChanged();

private:
    QString m_topic = QStringLiteral("start");
};

} // namespace tallyfold
