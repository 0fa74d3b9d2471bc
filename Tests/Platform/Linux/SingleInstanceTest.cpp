#include "Platform/Linux/SingleInstance.h"
#include "Support/TestFolder.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <future>

using Claim = ProgramHost::Claim;

class SingleInstanceTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        for (const char *variable : {"XDG_RUNTIME_DIR", "DISPLAY", "XDG_CONFIG_HOME"})
            qunsetenv(variable);
    }

    void runsOnceForADisplay()
    {
        qputenv("XDG_RUNTIME_DIR", m_folder.path().toLocal8Bit());
        qputenv("DISPLAY", ":7");
        auto first = std::make_unique<SingleInstance>();
        QCOMPARE(first->claim(), Claim::First);
        QSignalSpy again(first.get(), &SingleInstance::startedAgain);
        qputenv("DISPLAY", "unix:7.0");
        auto second = std::async(std::launch::async, [] { return SingleInstance().claim(); });
        QVERIFY(again.wait());
        QCOMPARE(second.get(), Claim::Told);
        qputenv("DISPLAY", ":8");
        QCOMPARE(SingleInstance().claim(), Claim::First);
        qputenv("DISPLAY", ":7");
        first.reset();
        QCOMPARE(SingleInstance().claim(), Claim::First);
    }

    void leavesFoldersThatOthersWriteTo()
    {
        m_folder.shell("mkdir -m 777 open");
        qputenv("XDG_RUNTIME_DIR", m_folder.at("open").toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", m_folder.at("config").toLocal8Bit());
        QCOMPARE(SingleInstance().claim(), Claim::First);
        QCOMPARE(m_folder.shell("ls open"), QByteArray());
    }

private:
    TestFolder m_folder;
};

METERKIN_TEST(SingleInstanceTest);
#include "SingleInstanceTest.moc"
