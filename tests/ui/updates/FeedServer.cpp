#include "tests/ui/updates/FeedServer.h"

#include <QHostAddress>

namespace tallyfold::tests {

FeedServer::FeedServer()
{
    connect(&m_server, &QTcpServer::newConnection, this, &FeedServer::accept);
    m_server.listen(QHostAddress::LocalHost);
    m_port = m_server.serverPort();
}

void FeedServer::answer(const QString &path, const QByteArray &response)
{
    m_answers[path] = {response, false};
}

void FeedServer::stall(const QString &path, const QByteArray &response)
{
    m_answers[path] = {response, true};
}

void FeedServer::serve(const QString &path, const QByteArray &body)
{
    answer(path, QByteArrayLiteral("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: ") +
                     QByteArray::number(body.size()) + QByteArrayLiteral("\r\n\r\n") + body);
}

void FeedServer::redirect(const QString &path, const QByteArray &target)
{
    answer(path,
           QByteArrayLiteral("HTTP/1.1 302 Found\r\nConnection: close\r\nContent-Length: 5\r\nLocation: ") +
               target + QByteArrayLiteral("\r\n\r\nthere"));
}

QUrl FeedServer::url(const QString &path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(QString::number(m_port), path));
}

const QStringList &FeedServer::requests() const
{
    return m_requests;
}

void FeedServer::stop()
{
    m_server.close();
}

void FeedServer::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
    }
}

void FeedServer::read(QTcpSocket *socket)
{
    QByteArray &received = m_received[socket];
    received += socket->readAll();
    if (!received.endsWith("\r\n\r\n")) {
        return;
    }
    const QString request = QString::fromLatin1(received);
    m_requests.append(request);
    const auto found = m_answers.find(request.section(u' ', 1, 1));
    if (found != m_answers.end()) {
        socket->write(found->second.response);
        if (!found->second.stalls) {
            socket->disconnectFromHost();
        }
    }
}

QByteArray feedWith(const QByteArray &items)
{
    return QByteArrayLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                             "<rss version=\"2.0\" "
                             "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">"
                             "<channel><title>Tallyfold</title>") +
           items + QByteArrayLiteral("</channel></rss>\n");
}

QByteArray release(const QByteArray &version)
{
    return QByteArrayLiteral("<item><title>Version ") + version +
           QByteArrayLiteral("</title><sparkle:version>") + version +
           QByteArrayLiteral("</sparkle:version><link>https://example.org/") + version +
           QByteArrayLiteral("</link><description>What is new in ") + version +
           QByteArrayLiteral("</description></item>");
}

} // namespace tallyfold::tests
