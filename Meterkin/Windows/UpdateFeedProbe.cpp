#include "Windows/UpdateFeedProbe.h"

#include "Platform/Log.h"

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
constexpr int EndMilliseconds = 100;

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

/// Why the feed cannot be judged; empty when it can.
QString problemOf(const QNetworkReply &reply, const QByteArray &body)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (body.size() > UpdateFeedProbe::SizeLimit)
        return QStringLiteral("it is larger than 1 MiB");
    if (reply.error() != QNetworkReply::NoError)
        return reply.errorString();
    if (status != StatusOk)
        return QStringLiteral("HTTP status %1").arg(status);
    return QUtf8StringView(body).isValidUtf8() ? QString() : QStringLiteral("it is not UTF-8");
}

void warn(const QUrl &feed, const QString &problem)
{
    qCWarning(logUpdates, "feed %s: %s; counts as up to date", qPrintable(feed.toDisplayString()),
              qPrintable(problem));
}

/// Waits for the feed, or for the end of the thread.
bool listsItems(const QUrl &feed)
{
    QNetworkAccessManager network;
    const std::unique_ptr<QNetworkReply> reply(network.get(requestFor(feed)));
    reply->setReadBufferSize(BufferBytes); // no more than that is held unread
    QByteArray body;
    const auto receive = [&] {
        body += reply->read(UpdateFeedProbe::SizeLimit + 1 - body.size());
        if (body.size() > UpdateFeedProbe::SizeLimit)
            reply->abort();
    };
    QEventLoop exchange;
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &exchange, receive);
    QObject::connect(reply.get(), &QNetworkReply::finished, &exchange, &QEventLoop::quit);
    exchange.exec();
    if (reply->isOpen()) // not after an abort
        receive();
    if (!reply->isFinished())
        return false;
    const QString problem = problemOf(*reply, body);
    if (!problem.isEmpty())
        warn(feed, problem);
    return problem.isEmpty() && (body.contains("<item>") || body.contains("<item "));
}

} // namespace

void UpdateFeedProbe::start(const QUrl &feed, QObject *receiver,
                            std::function<void(bool listsItems)> done,
                            std::chrono::milliseconds timeout)
{
    auto *probe = new UpdateFeedProbe(feed, timeout, receiver);
    connect(probe, &UpdateFeedProbe::finished, receiver,
            [probe, done = std::move(done)](bool listsItems) {
                probe->deleteLater();
                done(listsItems);
            });
}

// On a thread of its own, because Qt waits for the system to name the proxy, and the system may
// have to fetch a script over the network for that.
UpdateFeedProbe::UpdateFeedProbe(const QUrl &feed, std::chrono::milliseconds timeout,
                                 QObject *parent)
    : QObject(parent)
{
    const auto answer = std::make_shared<bool>(false);
    m_thread = QThread::create([feed, answer] { *answer = listsItems(feed); });
    connect(m_thread, &QThread::finished, this, [this, answer] {
        if (!m_timeout.isActive())
            return; // after the timeout
        m_timeout.stop();
        emit finished(*answer);
    });
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    m_timeout.setSingleShot(true);
    connect(&m_timeout, &QTimer::timeout, this, [this, feed] {
        warn(feed, QStringLiteral("no answer in time"));
        m_thread->quit();
        emit finished(false);
    });
    m_timeout.start(timeout);
    m_thread->start();
}

UpdateFeedProbe::~UpdateFeedProbe()
{
    if (!m_thread)
        return;
    m_thread->quit();
    if (m_thread->wait(EndMilliseconds))
        delete m_thread;
}
