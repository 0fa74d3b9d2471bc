#include "UpdateFeedProbe.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUtf8StringView>

namespace {

constexpr int MostRedirections = 5;
constexpr int StatusOk = 200;
constexpr qint64 BufferBytes = 64 * 1024;

QNetworkRequest requestFor(const QUrl &feed)
{
    QNetworkRequest request(feed);
    request.setMaximumRedirectsAllowed(MostRedirections);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    for (const QNetworkRequest::Attribute attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(attribute, QNetworkRequest::Manual);
    return request;
}

bool listsItems(const QByteArray &body)
{
    return QUtf8StringView(body).isValidUtf8()
        && (body.contains("<item>") || body.contains("<item "));
}

} // namespace

bool UpdateFeedProbe::canAsk(const QUrl &feed)
{
    return feed.isValid() && !feed.host().isEmpty()
        && (feed.scheme() == u"https" || feed.scheme() == u"http");
}

UpdateFeedProbe::UpdateFeedProbe(const QUrl &feed, std::chrono::milliseconds timeLimit,
                                 QObject *parent)
    : QObject(parent)
    , m_reply(m_network.get(requestFor(feed)))
{
    m_reply->setReadBufferSize(BufferBytes); // what comes faster than it is read waits outside
    connect(m_reply, &QNetworkReply::readyRead, this, &UpdateFeedProbe::receive);
    connect(m_reply, &QNetworkReply::finished, this, &UpdateFeedProbe::finish);
    // Not the request's own limit: that one starts anew with every byte.
    m_timeLimit.setSingleShot(true);
    connect(&m_timeLimit, &QTimer::timeout, m_reply, &QNetworkReply::abort);
    m_timeLimit.start(timeLimit);
}

void UpdateFeedProbe::receive()
{
    m_body += m_reply->read(MostBytes + 1 - m_body.size());
    if (m_body.size() > MostBytes)
        m_reply->abort();
}

void UpdateFeedProbe::finish()
{
    m_timeLimit.stop();
    if (m_reply->isOpen()) // not after an abort
        receive();
    emit answered(m_reply->error() == QNetworkReply::NoError
                  && m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute) == StatusOk
                  && m_body.size() <= MostBytes && listsItems(m_body));
}
