#include "Platform/Linux/Process/SingleInstance.h"
#include "Support/TestFolder.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <array>

class SingleInstanceTest : public QObject {
    Q_OBJECT

private slots:
    void leavesFoldersThatOthersWriteTo()
    {
        const TestFolder folder;
        folder.shell("mkdir -m 777 open");
        qputenv("XDG_RUNTIME_DIR", folder.at("open").toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", folder.at("config").toLocal8Bit());
        std::array<SingleInstance, 2> instances; // of two displays
        for (SingleInstance &each : instances) {
            qputenv("DISPLAY", &each == instances.begin() ? ":7" : ":8");
            QCOMPARE(each.claim(), ProgramHost::Claim::First);
        }
        QCOMPARE(folder.shell("ls open"), QByteArray());
        for (const char *variable : {"XDG_RUNTIME_DIR", "DISPLAY", "XDG_CONFIG_HOME"})
            qunsetenv(variable);
    }
};

METERKIN_TEST(SingleInstanceTest);
#include "SingleInstanceTest.moc"
