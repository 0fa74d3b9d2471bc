#include "Platform/Linux/Storage/DefaultsStore.h"
#include "Model/SettingsViewModel.h"
#include "Support/Files.h"
#include "Support/TestFolder.h"
#include "Support/TestMain.h"

#include <QRandomGenerator>
#include <QtTest>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <optional>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString fileName = u"settings/meterkin.conf"_s; // in the working folder
const QString key = u"key"_s;
const QString other = u"other"_s;
constexpr int BurstSize = 3; // numbers written in the life of one store
std::atomic<int> syncTime; // milliseconds

/// What this program does when a test starts it once more.
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
    for (int last = BurstSize; role == "forever"; last += BurstSize) {
        for (LinuxDefaultsStore store(fileName); const int step : {2, 1, 0})
            store.setInteger(key, last - step);
        std::printf("%d\n", last);
        std::fflush(stdout);
    }
    {
        LinuxDefaultsStore store(fileName);
        for (int value = 1; value <= 11 && role != "reader"; value += 10)
            store.setInteger(key, value);
        std::printf("%g %g %u\n", store.number(key), store.number(other),
                    SettingsViewModel(store).hotkeyKeyCode());
    }
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);
}
void playRole()
{
    if (const QByteArray role = qgetenv("METERKIN_TEST_ROLE"); !role.isEmpty())
        play(role);
}
Q_COREAPP_STARTUP_FUNCTION(playRole)

} // namespace

// Replaces the C library's.
int fdatasync(int)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(syncTime));
    return 0;
}

class LinuxDefaultsStoreTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder.emplace();
        m_path = m_folder->path() + u'/' + fileName;
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
    }

    void reads()
    {
        // How to read: as a number, an integer or a boolean; the value; what is read.
        const QByteArray rows = "n|\"7\"|7 n|1e400|inf n|nan|0 n|3,5|0 i|-2.9|-2 "
                                "i|9007199254740993|9007199254740993 i|-inf|-9223372036854775808 "
                                "b|TRUE|1 b|yes|1 b|On|1 b|1|1 b|off|0 b|2|0";
        for (const QByteArray &row : rows.split(' ')) {
            const QList<QByteArray> cells = row.split('|');
            fill("key=" + cells[1]);
            const LinuxDefaultsStore store(m_path);
            const QVariant found = cells[0] == "n" ? QVariant(store.number(key))
                : cells[0] == "i"                  ? QVariant(store.integer(key))
                                                   : QVariant(int(store.boolean(key)));
            QVERIFY2(found.toString() == QString::fromUtf8(cells[2]), row);
        }
    }

    void readsWhatItHasWritten()
    {
        for (const char *bytes : {"", " a", "\"", "a\nb\r", "\\n", "#", "a=b", "ü"}) {
            const QString text = QString::fromUtf8(bytes);
            LinuxDefaultsStore(m_path).setText(key, text);
            QCOMPARE(LinuxDefaultsStore(m_path).text(key), std::optional(text));
        }
        LinuxDefaultsStore(m_path).setNumber(key, 1 / 3.0);
        QVERIFY(LinuxDefaultsStore(m_path).number(key) == 1 / 3.0);
    }

    void changesNothingElse()
    {
        for (const auto &[before, value, after] : // -1: absent
             {std::tuple("a=1", -1, "a=1\nkey=5\n"),
              {"a=1\r\n", -1, "a=1\r\nkey=5\r\n"},
              {"\t key \t=  3 \r\nb=2", 3, "\t key \t=  5 \r\nb=2"},
              {"key=1\nother\nkey=2", 2, "key=5\nother\nkey=5"},
              {"#key=1\nkeys=1\nmykey=2\nkey\n=key\n", -1,
               "#key=1\nkeys=1\nmykey=2\nkey\n=key\nkey=5\n"}}) {
            fill("");
            LinuxDefaultsStore store(m_path);
            fill(before); // while the program runs
            LinuxDefaultsStore next(m_path);
            next.registerDefaults({{key, -1}});
            QCOMPARE(next.integer(key), value);
            store.setInteger(key, 5);
            QTRY_COMPARE(content(), QByteArray(after));
        }
    }

    void survivesBeingKilled()
    {
        const QByteArray before("# by hand\nmenuBarMetric=CPU Usage\nkey=");
        const QByteArray after("\nfuture=setting\n" + QByteArray(3000, '#') + "\n");
        for (int kills = 0; kills < 40; ++kills) {
            fill(before + "0" + after);
            QProcess writer;
            start(writer, "forever");
            QVERIFY(writer.waitForReadyRead());
            usleep(QRandomGenerator::global()->bounded(3000U)); // anywhere within a few writes
            writer.kill();
            QVERIFY(writer.waitForFinished());
            const QByteArray said = writer.readAllStandardOutput().trimmed();
            const int last = said.sliced(said.lastIndexOf('\n') + 1).toInt();
            const QByteArray left = content();
            QVERIFY(last > 0 && left.startsWith(before) && left.endsWith(after));
            const int stored = left.sliced(before.size()).chopped(after.size()).toInt();
            QVERIFY(stored >= last && stored <= last + BurstSize);
        }
    }

    void worksOnWithoutTheDisk()
    {
        // Without a reason the value is stored.
        for (const auto &[role, command, values, reason] :
             {std::tuple("plain", "printf '\\0\\377==\\n=\\n' > $f", "11 0 0", ""),
              {"plain", "echo hotkeyKeyCode=4294967295 >> $f", "11 2 4294967295", ""},
              {"reader", "echo hotkeyKeyCode=-1 >> $f", "", "settings/meterkin.conf"},
              {"plain", "rm $f; mkfifo $f", "11 0 0", "not a regular file"},
              {"plain", "rm $f; ln -s $f back; ln -s back $f", "11 0 0", "link"},
              // Beyond the limit, which cuts the number.
              {"plain", "(yes '#' | head -c 1048550; echo other=12345678901234567890) >> $f",
               "11 2 0", "too large"},
              {"full disk", ":", "11 2 0", "File too large"},
              {"hanging disk", "true", "11 2 0", "does not answer"},
              {"nobody", "chmod 755 ..; chmod 777 .; chmod 444 $f", "11 2 0", "write-protected"},
              {"nobody", "chmod 755 ..; chmod 777 .; chmod 000 $f", "11 0 0", "denied"}}) {
            init();
            fill("other=2\n");
            QCOMPARE(shell(command), QByteArray());
            const QByteArray before = content();
            QProcess process;
            start(process, role);
            QVERIFY2(process.waitForFinished(), command);
            QCOMPARE(process.readAllStandardOutput().trimmed(), QByteArray(values));
            const QByteArray complaint = process.readAllStandardError();
            const bool works = qstrlen(reason) == 0;
            QVERIFY2(complaint.count('\n') == (works ? 0 : 1), command + complaint);
            QVERIFY2(complaint.contains(reason), complaint);
            QVERIFY2(content() == (works ? before + "key=11\n" : before), command);
            if (role != QByteArray("hanging disk"))
                QCOMPARE(shell("chmod 700 .; ls -A | grep part"), QByteArray());
        }
    }

    void catchesUpWhenTheDiskWorksAgain()
    {
        LinuxDefaultsStore store(m_path);
        QVERIFY(QDir().mkdir(m_path));
        store.setInteger(key, 1);
        QTRY_COMPARE(store.storageProblem().value(), u"not a regular file"_s);
        QVERIFY(QDir().rmdir(m_path));
        store.retryStorage();
        QTRY_COMPARE(store.storageProblem().value(), QString());
        QCOMPARE(content(), QByteArray("key=1\n"));
    }

    void keepsModesAndLinksAndRemovesLeftovers()
    {
        shell("ln -s a/b/next meterkin.conf; mkdir a");
        const mode_t mask = umask(0);
        LinuxDefaultsStore(m_path).setInteger(key, 1); // at a place that does not exist yet
        umask(mask);
        QCOMPARE(shell("stat -c '%F %a' meterkin.conf a/b a/b/next"),
                 QByteArray("symbolic link 777\ndirectory 700\nregular file 600\n"));
        // A chain of links, and what a killed writer left an hour ago.
        shell("cd a/b; mv next real; ln -s real next; chmod 640 real; "
              "touch -d '1 hour ago' .real.aBcDeF.part .real.tooLong.part; "
              "touch .real.youngA.part");
        LinuxDefaultsStore(m_path).setInteger(key, 2);
        QCOMPARE(content(), QByteArray("key=2\n"));
        QCOMPARE(shell("cd a/b; stat -c '%n %a' next real .*.part"),
                 QByteArray("next 777\nreal 640\n.real.tooLong.part 644\n.real.youngA.part 644\n"));
    }

private:
    void fill(const QByteArray &content) const { QVERIFY(write(m_path, content)); }
    QByteArray content() const // opening a pipe would wait
    {
        return QFileInfo(m_path).isFile() ? contents(m_path) : QByteArray();
    }
    /// Starts this program in the role.
    void start(QProcess &process, const char *role) const
    {
        process.setWorkingDirectory(m_folder->path());
        process.start(u"env"_s,
                      {u"METERKIN_TEST_ROLE="_s + QLatin1StringView(role),
                       u"XDG_RUNTIME_DIR="_s + m_runtime.path(), // or Qt warns
                       QCoreApplication::applicationFilePath()});
    }
    /// Run in the folder of the file, whose name is $f.
    QByteArray shell(const QByteArray &command) const
    {
        return m_folder->shell("umask 022; cd settings 2>/dev/null; f=meterkin.conf; " + command);
    }

    TestFolder m_runtime;
    std::optional<TestFolder> m_folder;
    QString m_path;
};

METERKIN_TEST(LinuxDefaultsStoreTest);
#include "DefaultsStoreTest.moc"
