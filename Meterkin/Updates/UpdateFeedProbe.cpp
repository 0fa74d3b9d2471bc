#include "Updates/UpdateFeedProbe.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QThread>
#include <QUtf8StringView>

#include <memory>

namespace {

constexpr int MostRedirections = 5;
constexpr int StatusOk = 200;
constexpr qint64 BufferBytes = 64 * 1024;
constexpr int MomentMilliseconds = 100;

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

/// Waits for the feed, or for the end of the thread that it runs on.
bool listsItems(const QUrl &feed)
{
    QNetworkAccessManager network;
    const std::unique_ptr<QNetworkReply> reply(network.get(requestFor(feed)));
    reply->setReadBufferSize(BufferBytes); // what comes faster than it is read waits outside
    QByteArray body;
    const auto receive = [&] {
        body += reply->read(UpdateFeedProbe::MostBytes + 1 - body.size());
        if (body.size() > UpdateFeedProbe::MostBytes)
            reply->abort();
    };
    QEventLoop exchange;
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &exchange, receive);
    QObject::connect(reply.get(), &QNetworkReply::finished, &exchange, &QEventLoop::quit);
    exchange.exec();
    if (reply->isOpen()) // not after an abort
        receive();
    return reply->isFinished() && reply->error() == QNetworkReply::NoError
        && reply->attribute(QNetworkRequest::HttpStatusCodeAttribute) == StatusOk
        && body.size() <= UpdateFeedProbe::MostBytes && listsItems(body);
}

} // namespace

bool UpdateFeedProbe::canAsk(const QUrl &feed)
{
    return feed.isValid() && !feed.host().isEmpty()
        && (feed.scheme() == u"https" || feed.scheme() == u"http");
}

// On a thread of its own, because the system may have to fetch a script over the network before it
// can name the proxy, and Qt waits for that where it asks.
UpdateFeedProbe::UpdateFeedProbe(const QUrl &feed, std::chrono::milliseconds timeLimit,
                                 QObject *parent)
    : QObject(parent)
{
    const auto answer = std::make_shared<bool>(false);
    m_thread = QThread::create([feed, answer] { *answer = listsItems(feed); });
    connect(m_thread, &QThread::finished, this, [this, answer] {
        if (!m_timeLimit.isActive())
            return; // given up already
        m_timeLimit.stop();
        emit answered(*answer);
    });
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    m_timeLimit.setSingleShot(true);
    connect(&m_timeLimit, &QTimer::timeout, this, &UpdateFeedProbe::giveUp);
    m_timeLimit.start(timeLimit);
    m_thread->start();
}

UpdateFeedProbe::~UpdateFeedProbe()
{
    if (!m_thread)
        return;
    m_thread->quit();
    if (m_thread->wait(MomentMilliseconds))
        delete m_thread;
}

void UpdateFeedProbe::giveUp()
{
    m_thread->quit();
    emit answered(false);
}
