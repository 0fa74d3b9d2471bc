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
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
        qputenv("DISPLAY", ":7");
    }
    void cleanup()
    {
        qunsetenv("XDG_RUNTIME_DIR");
        qunsetenv("DISPLAY");
        qunsetenv("XDG_CONFIG_HOME");
    }

    void tellsTheFirstOfASecondStart()
    {
        // A socket that a killed instance has left does not count.
        sockaddr_un address{AF_UNIX, {}};
        qstrncpy(address.sun_path, QFile::encodeName(m_socket), sizeof address.sun_path);
        const int dead = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        QCOMPARE(bind(dead, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        close(dead);
        QVERIFY(QFile::exists(m_socket));

        auto first = std::make_unique<SingleInstance>();
        QVERIFY(first->claim());
        QVERIFY(!(QFile::permissions(m_socket)
                  & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther)));
        QSignalSpy again(first.get(), &SingleInstance::startedAgain);
        for (int start = 1; start <= 2; ++start) {
            QVERIFY(!SingleInstance().claim());
            QTRY_COMPARE(again.count(), start);
        }
        qputenv("DISPLAY", ":8");
        QVERIFY(SingleInstance().claim()); // another display has a panel of its own
        qputenv("DISPLAY", ":7");
        first.reset();
        QVERIFY(SingleInstance().claim());
    }

    void runsWithoutARuntimeFolder()
    {
        qputenv("XDG_RUNTIME_DIR", "/nonexistent/folder");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path()));
        SingleInstance instance;
        QVERIFY(instance.claim());
        QVERIFY(!SingleInstance().claim());
    }

private:
    QTemporaryDir m_folder;
    const QString m_socket = m_folder.filePath(QStringLiteral("org.meterkin.Meterkin:7"));
};

METERKIN_TEST(SingleInstanceTest);
#include "SingleInstanceTest.moc"
