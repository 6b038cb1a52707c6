#include "ui/updates/FeedClient.h"

#include "ui/Log.h"

#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <utility>

namespace tallyfold {

namespace {

using Reason = UpdateCheckFailed::Reason;

bool mayAsk(const QUrl &url, Transport transport)
{
    const bool isPlainLocal = transport == Transport::alsoPlainLocal &&
                              url.scheme() == QStringLiteral("http") && QHostAddress(url.host()).isLoopback();
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QStringLiteral("https") || isPlainLocal);
}

/// A request in progress. Owned by its parent until it has reported its result; owns its connections.
class Fetch final : public QObject {
public:
    Fetch(FeedRequest request, std::function<void(const FeedAnswer &)> finished, QObject &parent)
        : QObject(&parent), m_request(std::move(request)), m_finished(std::move(finished))
    {
        const bool may = mayAsk(m_request.feed, m_request.transport);
        QTimer::singleShot(may ? m_request.limits.time : std::chrono::milliseconds(0), this,
                           [this, may] { fail(may ? Reason::tooSlow : Reason::noFeed); });
        if (may) {
            ask(m_request.feed);
        }
    }

private:
    void ask(const QUrl &url)
    {
        QNetworkRequest request(url);
        request.setHeader(QNetworkRequest::UserAgentHeader,
                          QString(QStringLiteral("Tallyfold/") + m_request.version));
        // Uncompressed, so that the answer cannot grow when it is decoded.
        request.setRawHeader(QByteArrayLiteral("Accept-Encoding"), QByteArrayLiteral("identity"));
        // After a redirect Qt 6.4 reuses a connection that the server has closed.
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
        QNetworkReply *const reply = m_network.get(request);
        const qsizetype most = m_request.limits.bytes;
        reply->setReadBufferSize(most + 1);
        connect(reply, &QNetworkReply::readyRead, this, [this, reply, most] {
            if (reply->bytesAvailable() > most) {
                fail(Reason::tooLarge);
            }
        });
        connect(reply, &QNetworkReply::finished, this, [this, reply] { settle(*reply); });
    }

    void settle(QNetworkReply &reply)
    {
        constexpr int ok = 200;
        const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (reply.error() != QNetworkReply::NoError) {
            qCInfo(uiLog) << "asking for updates failed:" << reply.error() << "status" << status;
        }
        if (status == 0 || (status == ok && reply.error() != QNetworkReply::NoError)) {
            fail(Reason::noConnection); // Not established, or interrupted.
        } else if (status == 301 || status == 302 || status == 303 || status == 307 || status == 308) {
            follow(reply.url(), reply.attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl());
        } else if (status != ok) {
            fail(Reason::serverError);
        } else {
            end(reply.readAll());
        }
    }

    void follow(const QUrl &from, const QUrl &target)
    {
        const QUrl next = from.resolved(target);
        if (target.isEmpty() || !mayAsk(next, m_request.transport) ||
            ++m_redirects > m_request.limits.redirects) {
            fail(Reason::refusedRedirect);
        } else {
            ask(next);
        }
    }

    void fail(Reason reason)
    {
        end(UpdateCheckFailed{reason});
    }

    void end(const FeedAnswer &answer)
    {
        if (const auto finished = std::exchange(m_finished, nullptr)) {
            deleteLater();
            finished(answer);
        }
    }

    FeedRequest m_request;
    std::function<void(const FeedAnswer &)> m_finished; ///< Empty after the call.
    int m_redirects = 0;
    QNetworkAccessManager m_network;
};

} // namespace

void fetchFeed(const FeedRequest &request, QObject &parent, std::function<void(const FeedAnswer &)> finished)
{
    new Fetch(request, std::move(finished), parent);
}

} // namespace tallyfold
