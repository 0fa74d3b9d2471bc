#include "Platform/Linux/SingleInstance.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <future>

#include <sys/stat.h>

using Claim = ProgramHost::Claim;

class SingleInstanceTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        qputenv("XDG_RUNTIME_DIR", m_folder.path().toLocal8Bit());
        qputenv("DISPLAY", ":7");
    }
    void cleanup()
    {
        qunsetenv("XDG_RUNTIME_DIR");
        qunsetenv("DISPLAY");
        qunsetenv("XDG_CONFIG_HOME");
    }

    void runsOnceADisplay()
    {
        auto first = std::make_unique<SingleInstance>();
        QCOMPARE(first->claim(), Claim::First);
        QSignalSpy again(first.get(), &SingleInstance::startedAgain);
        for (const char *same : {":7.0", "unix:7"}) {
            qputenv("DISPLAY", same);
            auto second = std::async(std::launch::async, [] { return SingleInstance().claim(); });
            QTRY_COMPARE(second.wait_for(std::chrono::seconds(0)), std::future_status::ready);
            QCOMPARE(second.get(), Claim::Told);
        }
        QCOMPARE(again.count(), 2);
        qputenv("DISPLAY", ":8");
        QCOMPARE(SingleInstance().claim(), Claim::First); // another display has a panel of its own
        qputenv("DISPLAY", ":7");
        first.reset();
        QCOMPARE(SingleInstance().claim(), Claim::First);
    }

    void leavesFoldersThatOthersWriteTo()
    {
        const QString open = m_folder.filePath(QStringLiteral("open"));
        const QString config = m_folder.filePath(QStringLiteral("config"));
        QCOMPARE(mkdir(qPrintable(open), 0777) + chmod(qPrintable(open), 0777), 0);
        qputenv("XDG_RUNTIME_DIR", open.toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", config.toLocal8Bit());
        QCOMPARE(SingleInstance().claim(), Claim::First);
        QVERIFY(QDir(open).isEmpty());
    }

private:
    QTemporaryDir m_folder;
};

METERKIN_TEST(SingleInstanceTest);
#include "SingleInstanceTest.moc"
