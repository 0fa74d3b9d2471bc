#include "Updates/UpdaterController.h"
#include "Support/ScriptedHttpServer.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QNetworkProxyFactory>
#include <QPointer>
#include <QSemaphore>
#include <QThread>
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

/// A system that takes its time to name the proxy, and names one that refuses everything.
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

const QByteArray unending = "HTTP/1.1 200 OK\r\n\r\n<item>";

} // namespace

class UpdaterControllerTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QNetworkProxyFactory::setUseSystemConfiguration(false); }

    void init()
    {
        m_framework.calls.clear();
        m_framework.isItsOwnFeed = false;
        m_alert.texts.clear();
        m_server.requests.clear();
        m_server.answers = {{"/item", {reply("<rss><item></item></rss>")}},
                            {"/loop", {redirection("/loop")}}};
    }

    void judgesTheFeed_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Then>("then");
        QTest::addColumn<bool>("hasUpdates");
        const auto row = [](const char *name, const QByteArray &bytes, bool hasUpdates = false,
                            Then then = Then::Close) {
            QTest::newRow(name) << bytes << then << hasUpdates;
        };
        const QByteArray item = "<item>";
        const QByteArray mebibyte = item + QByteArray(UpdateFeedProbe::MostBytes - 6, ' ');
        row("item", reply("<rss><channel><item></item></channel></rss>"), true);
        row("item with attributes", reply("<rss><item id=\"1\"/></rss>"), true);
        row("no item", reply("<rss><channel></channel></rss>"));
        row("items", reply("<items></items><item/>"));
        row("empty", reply({}));
        row("no UTF-8", reply(item + "\xFF"));
        row("UTF-8 cut off", reply(item + "\xC3"));
        row("not modified", reply({}, "304 Not Modified"));
        row("not found", reply(item, "404 Not Found"));
        row("other success", reply(item, "203 Non-Authoritative Information"));
        row("redirected", redirection("/item"), true);
        row("redirected to a file", redirection("file:///etc/passwd"));
        row("redirected for ever", redirection("/loop"));
        row("as large as can be", reply(mebibyte), true);
        row("too large", reply(mebibyte + ' '));
        row("without an end", unending, false, Then::Flood);
        row("slow", unending, false, Then::Drip);
        row("silent", {}, false, Then::Wait);
        row("hangs up amid the body", reply(mebibyte).first(1000));
    }
    void judgesTheFeed()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const Then, then);
        m_server.answers["/feed"] = {bytes, then};
        const bool endsByTime = then == Then::Drip || then == Then::Wait;
        UpdaterController controller(m_framework, m_store,
                                     {{u"SUFeedURL"_s, m_server.address(u"/feed"_s)}}, m_alert,
                                     endsByTime ? 200ms : UpdateFeedProbe::TimeLimit);
        m_framework.calls.clear();
        controller.checkForUpdates();
        QVERIFY2(outcomes() == 0, "it has waited for the network");
        QTRY_COMPARE_WITH_TIMEOUT(outcomes(), 1, 12'000);
        QTEST(m_framework.calls == QStringList{u"check"_s}, "hasUpdates");
        QTRY_VERIFY2(controller.children().isEmpty(), "the network is kept");
    }

    void tellsWithoutTheNetwork_data()
    {
        QTest::addColumn<QVariant>("feed");
        QTest::addColumn<bool>("isHandedOver"); // where the framework is its own feed
        QTest::newRow("none") << QVariant() << true;
        QTest::newRow("not a text") << QVariant(QUrl(m_server.address(u"/item"_s))) << true;
        QTest::newRow("no address") << QVariant(u"http://[item"_s) << false;
        QTest::newRow("no host") << QVariant(u"http:///item"_s) << false;
        QTest::newRow("a blank in it") << QVariant(m_server.address(u"/item "_s)) << false;
        QTest::newRow("file") << QVariant(u"file://"_s + QString::fromUtf8(__FILE__)) << false;
    }
    void tellsWithoutTheNetwork()
    {
        QFETCH(const QVariant, feed);
        UpdaterController controller(m_framework, m_store, {{u"SUFeedURL"_s, feed}}, m_alert);
        m_framework.calls.clear();
        controller.checkForUpdates();
        QCOMPARE(m_alert.texts.size(), 1);
        m_framework.isItsOwnFeed = true;
        controller.checkForUpdates();
        QTEST(m_framework.calls == QStringList{u"check"_s}, "isHandedOver");
        QCOMPARE(outcomes(), 2);
        QVERIFY(m_server.requests.isEmpty());
    }

    void namesTheVersion()
    {
        const QString name = u"CFBundleName"_s;
        const QString version = u"CFBundleShortVersionString"_s;
        const std::pair<QVariantMap, QString> expected[] = {
            {{}, u"This app 1.0"_s},
            {{{name, u"Meterkin"_s}, {version, 1.2}}, u"Meterkin 1.0"_s},
            {{{name, QVariant()}, {version, u"1.2"_s}}, u"This app 1.2"_s}};
        for (const auto &[dictionary, text] : expected) {
            UpdaterController(m_framework, m_store, dictionary, m_alert).checkForUpdates();
            QCOMPARE(m_alert.texts.takeLast(),
                     u"You're up to date!|"_s + text + u" is the latest version."_s);
        }
    }

    void endsEachCheckByItself()
    {
        // Cut off, or what comes before the end would count.
        m_server.answers["/feed"] = {reply(QByteArray(9, ' ')).chopped(1), Then::Wait};
        const QVariantMap dictionary{{u"SUFeedURL"_s, m_server.address(u"/feed"_s)}};
        auto gone = std::make_unique<UpdaterController>(m_framework, m_store, dictionary, m_alert);
        gone->checkForUpdates();
        QTRY_COMPARE(m_server.requests.size(), 1);
        gone.reset();

        UpdaterController controller(m_framework, m_store, dictionary, m_alert);
        m_framework.calls.clear();
        controller.checkForUpdates();
        controller.checkForUpdates();
        QTRY_COMPARE(m_server.requests.size(), 3);
        m_server.answers["/feed"] = {reply("<item>")};
        controller.checkForUpdates();
        QTRY_COMPARE(m_framework.calls, QStringList{u"check"_s});
        QCOMPARE(m_alert.texts.size(), 0);
        for (QTcpSocket *waiting : m_server.findChildren<QTcpSocket *>())
            waiting->abort();
        QTRY_COMPARE(m_alert.texts.size(), 2);

        m_server.close();
        controller.checkForUpdates();
        QTRY_COMPARE(m_alert.texts.size(), 3);
        QVERIFY(m_server.listen(QHostAddress::LocalHost));
    }

    void doesNotWaitForTheProxy()
    {
        QNetworkProxyFactory::setApplicationProxyFactory(new HangingProxies);
        const QVariantMap dictionary{{u"SUFeedURL"_s, u"http://example.invalid/"_s}};
        for (const std::chrono::milliseconds limit : {50ms, 15'000ms}) {
            {
                UpdaterController controller(m_framework, m_store, dictionary, m_alert, limit);
                controller.checkForUpdates();
                QVERIFY(HangingProxies::asked.tryAcquire(1, 5000));
                QTRY_VERIFY(limit > 1s || m_alert.texts.size() == 1);
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
        UpdaterController controller(m_framework, store, {}, m_alert);
        QCOMPARE(m_framework.calls, (QStringList{u"start"_s, u"automatic"_s, u"observe"_s}));
        QSignalSpy changes(&controller, &UpdaterController::automaticallyDownloadsUpdatesChanged);
        controller.setAutomaticallyDownloadsUpdates(false);
        QCOMPARE(m_framework.calls.last(), u"manual"_s);
        QCOMPARE(store.writes, (QList<ScriptedStore::Write>{{key, true}, {key, false}}));
        QCOMPARE(changes.size(), 1);
        UpdaterController next(m_framework, store, {}, m_alert);
        QVERIFY(!next.automaticallyDownloadsUpdates());

        QVERIFY(!controller.canCheckForUpdates());
        emit m_framework.canCheckForUpdatesChanged(false);
        QCoreApplication::processEvents();
        QVERIFY(!controller.canCheckForUpdates());
        emit m_framework.canCheckForUpdatesChanged(true);
        QTRY_VERIFY(controller.canCheckForUpdates());
    }

private:
    qsizetype outcomes() const { return m_framework.calls.size() + m_alert.texts.size(); }

    ScriptedHttpServer m_server;
    ScriptedStore m_store;
    ScriptedUpdateFramework m_framework;
    ScriptedInformationAlert m_alert;
};

METERKIN_TEST(UpdaterControllerTest);
#include "UpdaterControllerTest.moc"
