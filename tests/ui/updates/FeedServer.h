#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <functional>
#include <map>

namespace tallyfold::tests {

/// Answers requests on this computer with what a test put ready, and notes what it was asked. Paths that
/// nothing was put ready for are never answered.
class FeedServer final : public QObject {
    Q_OBJECT
public:
    FeedServer();

    /// Puts `response`, headers and all, ready for `path`.
    void answer(const QString &path, const QByteArray &response);
    /// The same, and then nothing: the connection stays.
    void stall(const QString &path, const QByteArray &response);
    /// Puts a feed with `body` ready.
    void serve(const QString &path, const QByteArray &body);
    /// Puts a redirect to `target` ready.
    void redirect(const QString &path, const QByteArray &target);

    [[nodiscard]] QUrl url(const QString &path) const;
    /// Every request so far, as it came.
    [[nodiscard]] const QStringList &requests() const;
    /// Nobody listens any more.
    void stop();

private:
    void accept();
    void read(QTcpSocket *socket);

    QTcpServer m_server;
    quint16 m_port = 0;
    struct Answer {
        QByteArray response;
        bool stalls = false;
    };

    std::map<QString, Answer> m_answers;
    std::map<QTcpSocket *, QByteArray> m_received;
    QStringList m_requests;
};

/// A feed with `items` in it.
[[nodiscard]] QByteArray feedWith(const QByteArray &items);
/// A release of `version`.
[[nodiscard]] QByteArray release(const QByteArray &version);

} // namespace tallyfold::tests
