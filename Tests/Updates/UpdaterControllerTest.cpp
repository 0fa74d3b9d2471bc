#include "Updates/UpdaterController.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"
#include "Windows/UpdateFeedProbe.h"

#include <QNetworkProxyFactory>
#include <QPointer>
#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QByteArray reply(const QByteArray &body, const QByteArray &status = "200 OK")
{
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\n"
        + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

/// A web server on this machine.
struct ScriptedHttpServer : QTcpServer {
    QHash<QByteArray, QByteArray> answers; ///< by path; one without a length never ends

    ScriptedHttpServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *client = nextPendingConnection();
            connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
            connect(client, &QTcpSocket::readyRead, this, [this, client] {
                const QByteArray answer = answers.value(client->readAll().split(' ').value(1));
                client->write(answer);
                if (answer.contains("Length"))
                    client->disconnectFromHost();
                else
                    connect(client, &QTcpSocket::bytesWritten, client,
                            [client] { client->write(QByteArray(100'000, '.')); });
            });
        });
    }
};

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
    void init()
    {
        m_framework.calls.clear();
        m_alert.texts.clear();
    }

    void judgesTheFeed()
    {
        const QString feed = u"http://127.0.0.1:%1/feed"_s.arg(m_server.serverPort());
        const QByteArray item = "<item>";
        const QByteArray mebibyte = item + QByteArray(UpdateFeedProbe::SizeLimit - 6, ' ');
        const QByteArray redirection = "302 Found\r\nLocation: ";
        for (const auto &[name, bytes, hasUpdates] :
             {std::tuple("item with attributes", reply("<rss><item id=\"1\"/></rss>"), true),
              {"items", reply("<items></items><item/>"), false},
              {"no UTF-8", reply(item + "\xFF"), false},
              {"not found", reply(item, "404 Not Found"), false},
              {"redirected", reply("", redirection + "/item"), true},
              {"redirected to a file", reply("", redirection + "file:///etc/passwd"), false},
              {"redirected forever", reply("", redirection + "/feed"), false},
              {"as large as can be", reply(mebibyte), true},
              {"without an end", "HTTP/1.1 200 OK\r\n\r\n<item>", false},
              {"hangs up amid the body", reply(mebibyte).first(1000), false}}) {
            m_server.answers = {{"/feed", bytes}, {"/item", reply(item)}};
            UpdaterController controller(m_framework, m_store, {{u"SUFeedURL"_s, feed}},
                                         services());
            init();
            controller.checkForUpdates();
            QTRY_VERIFY2(m_framework.calls.size() + m_alert.texts.size() == 1, name);
            QCOMPARE(m_framework.calls.size(), hasUpdates ? 1 : 0);
            QTRY_VERIFY2(controller.children().isEmpty(), "the network is kept");
        }
    }

    void needsAnAddress()
    {
        for (const QVariant &address : {QVariant(), QVariant(u"file:///etc/passwd"_s)}) {
            UpdaterController controller(
                m_framework, m_store, {{u"SUFeedURL"_s, address}, {u"CFBundleName"_s, u"Tool"_s}},
                services());
            init();
            controller.checkForUpdates();
            QCOMPARE(m_alert.texts,
                     QStringList(u"You're up to date!|Tool 1.0 is the latest version."_s));
            m_framework.isItsOwnFeed = true;
            controller.checkForUpdates();
            m_framework.isItsOwnFeed = false;
            QCOMPARE(m_framework.calls.size(), address.isNull() ? 1 : 0);
        }
    }

    void doesNotWaitForTheProxy()
    {
        QNetworkProxyFactory::setApplicationProxyFactory(new HangingProxies);
        const QVariantMap remote{{u"SUFeedURL"_s, u"http://example.invalid/"_s}};
        for (const std::chrono::milliseconds timeout : {50ms, 15'000ms}) {
            {
                UpdaterController controller(m_framework, m_store, remote, services(timeout));
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

    void remembersTheChoice()
    {
        UpdaterController controller(m_framework, m_store, {}, services());
        QVERIFY(controller.automaticallyDownloadsUpdates());
        controller.setAutomaticallyDownloadsUpdates(false);
        QCOMPARE(m_framework.calls.last(), u"manual"_s);
        UpdaterController next(m_framework, m_store, {}, services());
        QVERIFY(!next.automaticallyDownloadsUpdates());
        emit m_framework.canCheckForUpdatesChanged(true);
        QTRY_VERIFY(next.canCheckForUpdates());
    }

private:
    UpdaterController::CheckServices
    services(std::chrono::milliseconds timeout = UpdateFeedProbe::Timeout)
    {
        return {.readFeed =
                    [timeout](const QUrl &feed, QObject *receiver, std::function<void(bool)> done) {
                        UpdateFeedProbe::start(feed, receiver, std::move(done), timeout);
                    },
                .showAlert = [this](const QString &text,
                                    const QString &details) { m_alert.run(text, details); }};
    }

    ScriptedHttpServer m_server;
    ScriptedStore m_store;
    ScriptedUpdateFramework m_framework;
    ScriptedInformationAlert m_alert;
};

METERKIN_TEST(UpdaterControllerTest);
#include "UpdaterControllerTest.moc"
