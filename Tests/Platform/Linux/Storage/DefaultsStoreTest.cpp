#include "Platform/Linux/Storage/DefaultsStore.h"
#include "Model/SettingsViewModel.h"
#include "Support/TestMain.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

using Limits = std::numeric_limits<double>;

constexpr qint64 Lowest = std::numeric_limits<qint64>::min();
constexpr qint64 Highest = std::numeric_limits<qint64>::max();

// What this program does, instead of testing, when a test of it starts it once more.
constexpr char RoleVariable[] = "METERKIN_TEST_ROLE";

const QString fileName = QStringLiteral("settings/meterkin.conf"); // in the working folder
const QString key = QStringLiteral("key");
const QString other = QStringLiteral("other");

std::atomic<int> syncTime; // milliseconds
std::atomic<int> syncs;

constexpr int BurstSize = 3; // numbers written in the life of one store

void play(const QByteArray &role)
{
    // The superuser may write anywhere.
    if (role == "nobody" && geteuid() == 0 && setuid(65534) != 0)
        std::_Exit(2);
    if (role == "full disk") {
        const rlimit limit{12, 12}; // bytes a file may have
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    if (role == "hanging disk")
        syncTime = 60'000;
    if (role == "hotkey") {
        LinuxDefaultsStore store(fileName);
        std::printf("%u\n", SettingsViewModel(store).hotkeyKeyCode());
    }
    for (int last = BurstSize; role == "forever"; last += BurstSize) {
        for (LinuxDefaultsStore store(fileName); const int step : {2, 1, 0})
            store.setInteger(key, last - step);
        std::printf("%d\n", last);
        std::fflush(stdout);
    }
    if (role != "hotkey") {
        LinuxDefaultsStore store(fileName);
        store.setInteger(key, 1);
        store.setInteger(other, 2);
        store.setInteger(key, 11);
        std::printf("%g %g %g\n", store.number(key), store.number(other),
                    store.number(QStringLiteral("third")));
    }
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);
}

void playRole()
{
    if (const QByteArray role = qgetenv(RoleVariable); !role.isEmpty())
        play(role);
}
Q_COREAPP_STARTUP_FUNCTION(playRole)

} // namespace

// In the place of the system's.
int fdatasync(int)
{
    ++syncs;
    std::this_thread::sleep_for(std::chrono::milliseconds(syncTime));
    return 0;
}

/// The settings file as a store of typed values, and its manners on the disk.
class LinuxDefaultsStoreTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid() && QDir(m_folder->path()).mkdir(QStringLiteral("settings")));
        m_path = m_folder->filePath(fileName);
    }

    void reads_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QVariant>("expected"); // its type says how to read; invalid: no text
        const auto row = [](const QByteArray &content, const QVariant &expected) {
            QTest::newRow(content.toPercentEncoding(" =#\"\\").constData()) << content << expected;
        };
        row("key=-2.9", -2.9);
        row("key=\"7\"", 7.0);
        row("key=1e400", Limits::infinity());
        for (const char *text : {"nan", "12abc", "3,5", ""})
            row(QByteArray("key=") + text, 0.0);
        row("key=-2.9", qint64{-2});
        row("key=9007199254740993", qint64{9007199254740993});
        row("key=99999999999999999999", Highest);
        row("key=-inf", Lowest);
        for (const char *text : {"TRUE", "yes", "On", "1"})
            row(QByteArray("key=") + text, true);
        for (const char *text : {"off", "", "ture", "2"})
            row(QByteArray("key=") + text, false);
        row("\t key =  two words \r\nother=b", QStringLiteral("two words"));
        row("key=1\nkey=2\nother=3\n", QStringLiteral("2"));
        row("key=\"", QStringLiteral("\""));
        row("key=a\\nb\\\\n\\x\\", QStringLiteral("a\nb\\n\\x\\"));
        row(QByteArray("\0\0==\n=\n\xfe\nkey=a\xff\n\0", 17), QStringLiteral("a\uFFFD"));
        row("#key=1\n # key=2\nkeys=1\nmykey=2\nkey\n", {});
    }
    void reads()
    {
        QFETCH(QByteArray, content);
        QFETCH(QVariant, expected);
        fill(content);
        const LinuxDefaultsStore store(m_path);
        if (expected.typeId() == QMetaType::Double)
            QVERIFY(store.number(key) == expected.toDouble());
        else if (expected.typeId() == QMetaType::LongLong)
            QCOMPARE(store.integer(key), expected.toLongLong());
        else if (expected.typeId() == QMetaType::Bool)
            QCOMPARE(store.boolean(key), expected.toBool());
        else
            QCOMPARE(store.text(key),
                     expected.isValid() ? std::optional(expected.toString()) : std::nullopt);
    }

    void keepsHandEdits()
    {
        fill("key=0\nby=hand\n");
        LinuxDefaultsStore store(m_path);
        fill(QByteArray("# b\n key = 1\na=1\nkey=2\n???\n\xff\0#\nb=2", 34));
        store.setInteger(key, 5);
        QTRY_COMPARE(content(), QByteArray("# b\na=1\nkey=5\n???\n\xff\0#\nb=2", 25));
        store.setInteger(other, 6);
        QTRY_VERIFY(content().endsWith("\nb=2\nother=6\n"));
    }

    void everyValueComesBack()
    {
        for (const char *bytes : {"", " a", "\"", "\"a\"", "a\nb\r", "\\n", "#", "a=b", "ü"}) {
            const QString text = QString::fromUtf8(bytes);
            LinuxDefaultsStore(m_path).setText(key, text);
            QCOMPARE(LinuxDefaultsStore(m_path).text(key), std::optional(text));
        }
        for (const double number :
             {0.1, Limits::max(), Limits::denorm_min(), -Limits::infinity()}) {
            LinuxDefaultsStore(m_path).setNumber(key, number);
            QVERIFY(LinuxDefaultsStore(m_path).number(key) == number);
        }
        LinuxDefaultsStore(m_path).setBoolean(key, true);
        QCOMPARE(content(), QByteArray("key=true\n"));
    }

    void defaultsStandInAndAreNotWritten()
    {
        fill("other=false\n");
        LinuxDefaultsStore store(m_path);
        store.registerDefaults({{other, true}, {QStringLiteral("number"), 2.5}});
        store.registerDefaults({{QStringLiteral("flag"), true}});
        QCOMPARE(store.boolean(other), false);
        QCOMPARE(store.number(QStringLiteral("number")), 2.5);
        QCOMPARE(store.boolean(QStringLiteral("flag")), true);
        store.setInteger(key, 1);
        QTRY_COMPARE(content(), QByteArray("other=false\nkey=1\n"));
    }

    void anEqualWriteLeavesTheFile()
    {
        fill("key=1\n");
        QFile held(m_path);
        QVERIFY(held.open(QIODevice::ReadWrite | QIODevice::Append));
        LinuxDefaultsStore(m_path).setInteger(key, 1);
        held.write("other=2\n"); // a replaced file would not get this
        held.close();
        QCOMPARE(content(), QByteArray("key=1\nother=2\n"));
    }

    void survivesBeingKilled()
    {
        const QByteArray before("# by hand\nmenuBarMetric=CPU Usage\nkey=");
        const QByteArray after("\nfuture=setting\n" + QByteArray(3000, '#') + "\n");
        for (int kills = 0; kills < 120; ++kills) {
            fill(before + "0" + after);
            QProcess writer;
            start(writer, "forever");
            QVERIFY(writer.waitForReadyRead());
            // Anywhere within a few writes.
            usleep(QRandomGenerator::global()->bounded(3000U));
            writer.kill();
            QVERIFY(writer.waitForFinished());
            const QByteArray said = writer.readAllStandardOutput().trimmed();
            const int last = said.sliced(said.lastIndexOf('\n') + 1).toInt();
            QVERIFY(last > 0);
            const QByteArray left = content();
            QVERIFY(left.startsWith(before) && left.endsWith(after));
            const int stored = left.sliced(before.size()).chopped(after.size()).toInt();
            QVERIFY(stored >= last && stored <= last + BurstSize);
        }
    }

    void worksOnWithoutTheDisk_data()
    {
        QTest::addColumn<QByteArray>("role");
        QTest::addColumn<QByteArray>("values");
        QTest::addColumn<QByteArray>("reason"); // empty: all is well
        // The name of each is a command of the shell, in the folder of the file.
        const auto row = [](const QByteArray &role, const char *command, const QByteArray &values,
                            const QByteArray &reason) {
            QTest::newRow(command) << role << values << reason;
        };
        const QByteArray all("11 2 33");
        const QByteArray own("11 2 0");
        row("plain", "echo 1 > $f.lock", all, "");
        row("plain", ": > $f", own, "");
        row("plain", "printf '\\0\\377==\\n=\\n' > $f", own, "");
        row("plain", "rm -r ../settings; echo precious > ../settings", own, "folder");
        row("plain", "rm $f; mkdir $f", own, "not a regular file");
        row("plain", "rm $f; mkfifo $f", own, "not a regular file");
        row("plain", "rm $f; ln -s $f back; ln -s back $f", own, "link");
        // Beyond the limit, which cuts the number.
        row("plain", "(yes '#' | head -c 1048550; echo third=123456789012345678901) >> $f", all,
            "too large");
        row("full disk", ":", all, "File too large");
        row("hanging disk", "true", all, "does not answer");
        row("nobody", "chmod 755 ..; chmod 777 .; chmod 444 $f", all, "write-protected");
        row("nobody", "chmod 755 ..; chmod 555 .; chmod 666 $f", all, "denied");
        row("nobody", "chmod 755 ..; chmod 777 .; chmod 000 $f", own, "denied");
    }
    void worksOnWithoutTheDisk()
    {
        QFETCH(QByteArray, role);
        QFETCH(QByteArray, reason);
        fill("third=33\n");
        QCOMPARE(shell(QTest::currentDataTag()), QByteArray());
        const QByteArray before = content();
        QProcess process;
        start(process, role);
        QVERIFY(process.waitForFinished());
        QTEST(process.readAllStandardOutput().trimmed(), "values");
        const QByteArray complaint = process.readAllStandardError();
        QCOMPARE(complaint.count('\n'), reason.isEmpty() ? 0 : 1);
        QVERIFY2(complaint.contains(reason), complaint.constData());
        QCOMPARE(content(), reason.isEmpty() ? before + "key=11\nother=2\n" : before);
        if (role != "hanging disk")
            QCOMPARE(shell("chmod 700 .; ls -A | grep part"), QByteArray());
    }

    void catchesUpWhenTheDiskIsBack()
    {
        LinuxDefaultsStore store(m_path);
        QVERIFY(QDir().mkdir(m_path));
        store.setInteger(key, 1);
        QTRY_COMPARE(store.storageProblem().value(), QStringLiteral("not a regular file"));
        QVERIFY(QDir().rmdir(m_path));
        store.retryStorage();
        QTRY_COMPARE(store.storageProblem().value(), QString());
        QCOMPARE(content(), QByteArray("key=1\n"));
    }

    void doesNotWaitForASlowDisk()
    {
        syncs = 0;
        syncTime = 300;
        {
            LinuxDefaultsStore store(m_path);
            QElapsedTimer timer;
            timer.start();
            for (int value = 1; value <= 1000; ++value) {
                store.setInteger(key, value);
                QCOMPARE(store.integer(key), value);
            }
            QVERIFY(timer.elapsed() < 300);
        }
        syncTime = 0;
        QCOMPARE(content(), QByteArray("key=1000\n"));
        QVERIFY(syncs <= 2);
    }

    void keepsModesAndLinksAndClearsLeftovers()
    {
        shell("ln -s a/b/next meterkin.conf; mkdir a");
        const mode_t mask = umask(0);
        LinuxDefaultsStore(m_path).setInteger(key, 1); // to where there is nothing yet
        umask(mask);
        QCOMPARE(shell("stat -c '%F %a' meterkin.conf a/b a/b/next"),
                 QByteArray("symbolic link 777\ndirectory 700\nregular file 600\n"));
        // One link after the other, and what a killed writer left an hour ago.
        shell("cd a/b; mv next real; ln -s real next; chmod 640 real; "
              "touch -d '1 hour ago' .real.aBcDeF.part .real.tooLong.part; "
              "touch .real.youngA.part");
        LinuxDefaultsStore(m_path).setInteger(key, 2);
        QCOMPARE(content(), QByteArray("key=2\n"));
        QCOMPARE(shell("cd a/b; stat -c '%n %a' next real .*.part"),
                 QByteArray("next 777\nreal 640\n.real.tooLong.part 644\n.real.youngA.part 644\n"));
    }

    void wrongHotkeysEndTheProgram()
    {
        for (const auto &[line, said] : {std::pair("hotkeyKeyCode=-1", ""),
                                         {"hotkeyKeyCode=4294967296", ""},
                                         {"hotkeyModifiers=inf", ""},
                                         {"hotkeyKeyCode=4294967295", "4294967295\n"}}) {
            fill(line);
            QProcess process;
            start(process, "hotkey");
            QVERIFY(process.waitForFinished());
            const QByteArray complaint = process.readAllStandardError();
            QCOMPARE(process.readAllStandardOutput(), QByteArray(said));
            QCOMPARE(process.exitCode(), complaint.isEmpty() ? 0 : 1);
            QCOMPARE(complaint.count(fileName.toUtf8()), complaint.isEmpty() ? 0 : 1);
            QCOMPARE(content(), QByteArray(line));
        }
    }

private:
    void fill(const QByteArray &content) const
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray content() const
    {
        QFile file(m_path);
        return QFileInfo(m_path).isFile() && file.open(QIODevice::ReadOnly) ? file.readAll()
                                                                            : QByteArray();
    }
    /// Starts this program in the role.
    void start(QProcess &process, const char *role) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1StringView(RoleVariable), QLatin1StringView(role));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder->path());
        process.start(QCoreApplication::applicationFilePath(), QStringList());
    }
    /// What the command says, run in the folder of the file.
    QByteArray shell(const char *command) const
    {
        QProcess process;
        process.setWorkingDirectory(QFileInfo(m_path).path());
        process.start(
            QStringLiteral("sh"),
            {QStringLiteral("-c"),
             QStringLiteral("umask 022; f=meterkin.conf; %1").arg(QLatin1StringView(command))});
        process.waitForFinished();
        return process.readAllStandardOutput() + process.readAllStandardError();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

METERKIN_TEST(LinuxDefaultsStoreTest);
#include "DefaultsStoreTest.moc"
