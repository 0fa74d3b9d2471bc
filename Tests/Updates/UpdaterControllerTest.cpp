#include "Updates/UpdaterController.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"
#include "Updates/ScriptedHttpServer.h"

#include <QNetworkProxyFactory>
#include <QPointer>
#include <QSemaphore>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Then = ScriptedHttpServer::Then;

namespace {

QByteArray reply(const QByteArray &body, const QByteArray &status = "200 OK")
{
    return "HTTP/1.1 " + status + "\r\nContent-Type: application/rss+xml\r\nConnection: close\r\n"
        + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}
QByteArray redirection(const QByteArray &to)
{
    return "HTTP/1.1 302 Found\r\nLocation: " + to + "\r\nContent-Length: 0\r\n\r\n";
}

/// A system that takes its time to name the proxy.
struct HangingProxies : QNetworkProxyFactory {
    inline static QSemaphore asked{0}, released{0};
    inline static QPointer<QThread> thread; ///< the last that has asked

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &) override
    {
        thread = QThread::currentThread();
        asked.release();
        released.acquire();
        return {QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, 1)};
    }
};

} // namespace

class UpdaterControllerTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QNetworkProxyFactory::setUseSystemConfiguration(false); }

    void judgesTheFeed()
    {
        const QByteArray item = "<item>";
        const QByteArray mebibyte = item + QByteArray(UpdateFeedProbe::SizeLimit - 6, ' ');
        const QByteArray unending = "HTTP/1.1 200 OK\r\n\r\n<item>";
        for (const auto &[name, bytes, hasUpdates, then] :
             {std::tuple("item with attributes", reply("<rss><item id=\"1\"/></rss>"), true,
                         Then::Close),
              {"items", reply("<items></items><item/>"), false, Then::Close},
              {"no UTF-8", reply(item + "\xFF"), false, Then::Close},
              {"not found", reply(item, "404 Not Found"), false, Then::Close},
              {"other success", reply(item, "203 Other"), false, Then::Close},
              {"redirected", redirection("/item"), true, Then::Close},
              {"redirected to a file", redirection("file:///etc/passwd"), false, Then::Close},
              {"redirected for ever", redirection("/loop"), false, Then::Close},
              {"as large as can be", reply(mebibyte), true, Then::Close},
              {"too large", reply(mebibyte + ' '), false, Then::Close},
              {"without an end", unending, false, Then::Flood},
              {"slow", unending, false, Then::Drip},
              {"hangs up amid the body", reply(mebibyte).first(1000), false, Then::Close}}) {
            m_server.answers = {{"/feed", {bytes, then}},
                                {"/item", {reply("<item>")}},
                                {"/loop", {redirection("/loop")}}};
            UpdaterController controller(m_framework, m_store, feed(), m_alert,
                                         then == Then::Drip ? 200ms : UpdateFeedProbe::Timeout);
            startCounting();
            controller.checkForUpdates();
            QVERIFY2(outcomes() == 0, "it has waited for the network");
            QTRY_VERIFY2_WITH_TIMEOUT(outcomes() == 1, name, 12'000);
            QVERIFY2((m_framework.calls == QStringList{u"check"_s}) == hasUpdates, name);
            QTRY_VERIFY2(controller.children().isEmpty(), "the network is kept");
        }
    }

    void needsAnAddress()
    {
        m_server.requests.clear();
        const QVariantMap named{{u"CFBundleName"_s, u"Tool"_s},
                                {u"CFBundleShortVersionString"_s, u"1.2"_s}};
        for (const auto &[address, isHandedOver] : // to a framework that needs none
             {std::pair(QVariant(), true),
              {QUrl(m_server.address(u"/item"_s)), true},
              {u"http:///item"_s, false},
              {m_server.address(u"/item "_s), false},
              {u"file:///etc/passwd"_s, false}}) {
            for (const QVariantMap &names : {QVariantMap(), named}) {
                QVariantMap dictionary = names;
                dictionary.insert(u"SUFeedURL"_s, address);
                UpdaterController controller(m_framework, m_store, dictionary, m_alert);
                startCounting();
                controller.checkForUpdates();
                QCOMPARE(m_alert.texts,
                         QStringList(u"You're up to date!|%1 is the latest version."_s.arg(
                             names.isEmpty() ? u"This app 1.0"_s : u"Tool 1.2"_s)));
                m_framework.isItsOwnFeed = true;
                controller.checkForUpdates();
                m_framework.isItsOwnFeed = false;
                QCOMPARE(m_framework.calls, QStringList(isHandedOver ? 1 : 0, u"check"_s));
            }
        }
        QVERIFY(m_server.requests.isEmpty());
    }

    void doesNotWaitForTheProxy()
    {
        QNetworkProxyFactory::setApplicationProxyFactory(new HangingProxies);
        startCounting();
        const QVariantMap remote{{u"SUFeedURL"_s, u"http://example.invalid/"_s}};
        for (const std::chrono::milliseconds timeout : {50ms, 15'000ms}) {
            {
                UpdaterController controller(m_framework, m_store, remote, m_alert, timeout);
                controller.checkForUpdates();
                QVERIFY(HangingProxies::asked.tryAcquire(1, 5000));
                QTRY_VERIFY(timeout > 1s || m_alert.texts.size() == 1);
            }
            QVERIFY(HangingProxies::thread);
            HangingProxies::released.release();
            QTRY_VERIFY2(!HangingProxies::thread, "the network is kept");
        }
        QCOMPARE(m_alert.texts.size(), 1);
        QNetworkProxyFactory::setUseSystemConfiguration(false);
    }

    void mirrorsTheFramework()
    {
        const QString key = u"SUAutomaticallyUpdate"_s;
        ScriptedStore store;
        m_framework.calls.clear();
        UpdaterController controller(m_framework, store, {}, m_alert);
        QCOMPARE(m_framework.calls, (QStringList{u"start"_s, u"automatic"_s, u"observe"_s}));
        controller.setAutomaticallyDownloadsUpdates(false);
        QCOMPARE(m_framework.calls.last(), u"manual"_s);
        QCOMPARE(store.writes, (QList<ScriptedStore::Write>{{key, true}, {key, false}}));
        UpdaterController next(m_framework, store, {}, m_alert);
        QVERIFY(!next.automaticallyDownloadsUpdates());
        for (const bool canCheck : {false, true}) {
            emit m_framework.canCheckForUpdatesChanged(canCheck);
            QCoreApplication::processEvents();
            QCOMPARE(controller.canCheckForUpdates(), canCheck);
        }
    }

private:
    QVariantMap feed() const { return {{u"SUFeedURL"_s, m_server.address(u"/feed"_s)}}; }
    void startCounting()
    {
        m_framework.calls.clear();
        m_alert.texts.clear();
    }
    qsizetype outcomes() const { return m_framework.calls.size() + m_alert.texts.size(); }

    ScriptedHttpServer m_server;
    ScriptedStore m_store;
    ScriptedUpdateFramework m_framework;
    ScriptedInformationAlert m_alert;
};

METERKIN_TEST(UpdaterControllerTest);
#include "UpdaterControllerTest.moc"
