#include "ui/updates/FeedClient.h"

#include <QNetworkRequest>
#include <QVariant>

#include <utility>

namespace tallyfold {

namespace {

constexpr qint64 readAhead = 65'536; // Bytes that may wait to be received.
constexpr int ok = 200;

QNetworkRequest requestOf(const QUrl &url, const QString &userAgent)
{
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, userAgent);
    // What is not packed cannot grow when it is unpacked.
    request.setRawHeader(QByteArrayLiteral("Accept-Encoding"), QByteArrayLiteral("identity"));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    return request;
}

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

} // namespace

void FeedClient::DeleteLater::operator()(QNetworkReply *reply) const
{
    reply->deleteLater();
}

FeedClient::FeedClient(const QString &version, Transport transport, FeedLimits limits, QObject *parent)
    : QObject(parent),
      m_userAgent(QStringLiteral("Tallyfold/") + version),
      m_transport(transport),
      m_limits(limits)
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] {
        fail(m_reply ? UpdateCheckFailed::Reason::tooSlow : UpdateCheckFailed::Reason::noFeed);
    });
}

FeedClient::~FeedClient()
{
    leave();
}

void FeedClient::fetch(const QUrl &feed)
{
    if (m_isFetching) {
        return;
    }
    m_isFetching = true;
    m_redirects = 0;
    if (!mayAsk(feed, m_transport)) {
        m_deadline.start(0); // There is nothing to wait for, but this has to return first.
        return;
    }
    m_deadline.start(m_limits.time);
    ask(feed);
}

bool FeedClient::isFetching() const
{
    return m_isFetching;
}

void FeedClient::ask(const QUrl &url)
{
    m_feed.clear();
    m_reply.reset(m_network.get(requestOf(url, m_userAgent)));
    m_reply->setReadBufferSize(readAhead);
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &FeedClient::check);
    connect(m_reply.get(), &QNetworkReply::finished, this, &FeedClient::settle);
}

void FeedClient::receive()
{
    const QByteArray received = m_reply->readAll();
    if (statusOf(*m_reply) == ok) { // Other pages only go with an error or a redirect.
        m_feed += received;
    }
}

void FeedClient::check()
{
    receive();
    if (m_feed.size() > m_limits.bytes) {
        fail(UpdateCheckFailed::Reason::tooLarge);
    }
}

void FeedClient::settle()
{
    receive();
    const int status = statusOf(*m_reply);
    if (m_feed.size() > m_limits.bytes) {
        fail(UpdateCheckFailed::Reason::tooLarge);
    } else if (status == 0 || (status == ok && m_reply->error() != QNetworkReply::NoError)) {
        fail(UpdateCheckFailed::Reason::noConnection); // Never made, or broken off in the middle.
    } else if (isRedirect(status)) {
        follow(m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl());
    } else if (status != ok) {
        fail(UpdateCheckFailed::Reason::serverError);
    } else {
        end(std::exchange(m_feed, {}));
    }
}

void FeedClient::follow(const QUrl &target)
{
    const std::optional<QUrl> next = nextHop(m_reply->url(), target, m_transport);
    if (!next || ++m_redirects > m_limits.redirects) {
        fail(UpdateCheckFailed::Reason::refusedRedirect);
        return;
    }
    leave();
    ask(*next);
}

void FeedClient::leave()
{
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply.reset();
    }
}

void FeedClient::end(const FeedAnswer &answer)
{
    m_deadline.stop();
    leave();
    m_feed.clear();
    m_isFetching = false;
    Q_EMIT finished(answer);
}

void FeedClient::fail(UpdateCheckFailed::Reason reason)
{
    end(UpdateCheckFailed{reason});
}

} // namespace tallyfold
