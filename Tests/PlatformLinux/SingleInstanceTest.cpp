#include "Platform/Linux/SingleInstance.h"
#include "Support/TestMain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

class SingleInstanceTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("XDG_RUNTIME_DIR", m_folder->path().toLocal8Bit());
        qputenv("DISPLAY", QByteArrayLiteral(":7"));
    }
    void cleanup()
    {
        qunsetenv("XDG_RUNTIME_DIR");
        qunsetenv("DISPLAY");
    }

    void tellsTheFirstOfASecondStart()
    {
        auto first = std::make_unique<SingleInstance>();
        QVERIFY(first->claim());
        QSignalSpy again(first.get(), &SingleInstance::startedAgain);
        for (int start = 1; start <= 3; ++start) {
            QVERIFY(!SingleInstance().claim());
            QTRY_COMPARE(again.count(), start);
        }
        qputenv("DISPLAY", QByteArrayLiteral(":8"));
        QVERIFY(SingleInstance().claim()); // another display has a panel of its own
        qputenv("DISPLAY", QByteArrayLiteral(":7"));
        first.reset();
        QVERIFY(SingleInstance().claim());
    }

    void onlyTheUserReachesTheSocket()
    {
        SingleInstance instance;
        QVERIFY(instance.claim());
        const QFileInfo socket(m_folder->filePath(QStringLiteral("org.meterkin.Meterkin:7")));
        QVERIFY(socket.exists());
        QVERIFY(!(socket.permissions()
                  & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther)));
    }

    void takesOverFromOneThatWasKilled()
    {
        const QByteArray path =
            QFile::encodeName(m_folder->filePath(QStringLiteral("org.meterkin.Meterkin:7")));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
        const int dead = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        QCOMPARE(bind(dead, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        close(dead);
        QVERIFY(QFile::exists(QFile::decodeName(path)));

        SingleInstance instance;
        QVERIFY(instance.claim());
        QVERIFY(!SingleInstance().claim());
    }

    void runsWithoutARuntimeFolder()
    {
        qputenv("XDG_RUNTIME_DIR", QByteArrayLiteral("/nonexistent/folder"));
        qputenv("XDG_CONFIG_HOME", m_folder->path().toLocal8Bit());
        SingleInstance instance;
        QVERIFY(instance.claim());
        QVERIFY(!SingleInstance().claim());
        qunsetenv("XDG_CONFIG_HOME");
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

METERKIN_TEST(SingleInstanceTest);
#include "SingleInstanceTest.moc"
