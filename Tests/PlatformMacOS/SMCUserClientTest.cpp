#include "Platform/macOS/SMCUserClient.h"
#include "Fakes/CallLog.h"
#include "Fakes/FakeController.h"
#include "Sampling/SMCReader.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

const QString Matching = QStringLiteral("IOServiceMatching AppleSMC");
const QString Getting = QStringLiteral("IOServiceGetMatchingService 12");
const QString Opening = QStringLiteral("IOServiceOpen 55 77 0");
const QString Releasing = QStringLiteral("IOObjectRelease 55");
const QString Closing = QStringLiteral("IOServiceClose 99");

} // namespace

class SMCUserClientTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        FakeController::driver() = {};
        FakeController::driver().keys = {{"F0Ac", {"flt ", 4, {0, 0, 150, 68}}}};
        CallLog::take();
    }

    void whatIsTakenIsGivenBack_data()
    {
        QTest::addColumn<bool>("hasDictionary");
        QTest::addColumn<bool>("hasService");
        QTest::addColumn<int>("openStatus");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("no dictionary") << false << true << 0 << QStringList{Matching};
        QTest::newRow("no service") << true << false << 0 << QStringList{Matching, Getting};
        QTest::newRow("refused") << true << true << KERN_FAILURE
                                 << QStringList{Matching, Getting, Opening, Releasing};
        QTest::newRow("open") << true << true << 0
                              << QStringList{Matching, Getting, Opening, Releasing, Closing};
    }
    void whatIsTakenIsGivenBack()
    {
        QFETCH(const QStringList, calls);
        QFETCH(const bool, hasDictionary);
        QFETCH(const bool, hasService);
        QFETCH(const int, openStatus);
        FakeController &driver = FakeController::driver();
        driver.hasDictionary = hasDictionary;
        driver.hasService = hasService;
        driver.openStatus = openStatus;
        {
            SMCReader reader(std::make_unique<SMCUserClient>());
            QCOMPARE(reader.isConnected(), calls.contains(Closing));
            if (!reader.isConnected())
                QVERIFY(!reader.readRaw("F0Ac"));
        }
        QCOMPARE(CallLog::take(), calls);
    }

    void exchanges_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<int>("refusedCommand");
        QTest::addColumn<double>("value"); // negative: none
        QTest::addColumn<QStringList>("calls");
        const auto info = QStringLiteral("call 99 2 80 80: F0Ac 9 0");
        const auto bytes = QStringLiteral("call 99 2 80 80: F0Ac 5 4");
        QTest::newRow("read") << QByteArray("F0Ac") << 0 << 1200.0 << QStringList{info, bytes};
        QTest::newRow("unknown") << QByteArray("F9Ac") << 0 << -1.0
                                 << QStringList{QStringLiteral("call 99 2 80 80: F9Ac 9 0")};
        QTest::newRow("no info") << QByteArray("F0Ac") << 9 << -1.0 << QStringList{info};
        QTest::newRow("no bytes") << QByteArray("F0Ac") << 5 << -1.0 << QStringList{info, bytes};
    }
    void exchanges()
    {
        QFETCH(const QByteArray, key);
        QFETCH(const int, refusedCommand);
        FakeController::driver().refusedCommand = refusedCommand;
        SMCReader reader(std::make_unique<SMCUserClient>());
        reader.loggedFanType = true;
        CallLog::take();
        QTEST(reader.readValue(key.toStdString()).value_or(-1.0), "value");
        QTEST(CallLog::take(), "calls");
    }

    void refusalLeavesReply()
    {
        SMCUserClient client;
        QVERIFY(client.open());
        ControllerRecord reply;
        reply.dataSize = 4;
        QVERIFY(!client.call({}, reply));
        QCOMPARE(reply.dataSize, 4U);
        QCOMPARE(reply.data[0], std::uint8_t(0));
        client.close();
    }
};

METERKIN_TEST(SMCUserClientTest);
#include "SMCUserClientTest.moc"
