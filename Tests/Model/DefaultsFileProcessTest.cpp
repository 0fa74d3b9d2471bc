#include "Model/SettingsViewModel.h"
#include "Platform/Linux/DefaultsFile.h"
#include "Support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// What this program does, instead of testing, when a test of it starts it once more.
constexpr char RoleVariable[] = "METERKIN_TEST_ROLE";
constexpr char PathVariable[] = "METERKIN_TEST_PATH";

const QString green = QStringLiteral("memoryGreen");
const QString yellow = QStringLiteral("memoryYellow");
const QString other = QStringLiteral("cpuUsageGreen");

/// Writes one key until it is killed, and says each value once it is stored.
void writeForever(DefaultsFile &store)
{
    for (int value = 1;; ++value) {
        store.setInteger(green, value);
        std::printf("%d\n", value);
        std::fflush(stdout);
    }
}

/// Writes two keys twice and says what they read as, and a third one.
void writeTwice(DefaultsFile &store)
{
    store.setInteger(green, 1);
    store.setInteger(yellow, 2);
    store.setInteger(green, 11);
    store.setInteger(yellow, 22);
    std::printf("%g %g %g\n", store.number(green), store.number(yellow), store.number(other));
}

void play(const QByteArray &role)
{
    // The superuser may write anywhere.
    if (role == "asNobody" && geteuid() == 0 && setuid(65534) != 0)
        std::_Exit(2);
    if (role == "onFullDisk") {
        const rlimit limit{16, 16}; // bytes a file may have
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    DefaultsFile store(qEnvironmentVariable(PathVariable));
    if (role == "forever")
        writeForever(store);
    else if (role == "settings")
        std::printf("%u\n", SettingsViewModel(store).hotkeyKeyCode());
    else
        writeTwice(store);
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);
}

void playRole()
{
    if (const QByteArray role = qgetenv(RoleVariable); !role.isEmpty())
        play(role);
}
Q_COREAPP_STARTUP_FUNCTION(playRole)

void start(QProcess &process, const QString &role, const QString &path)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1StringView(RoleVariable), role);
    environment.insert(QLatin1StringView(PathVariable), path);
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), QStringList());
}

void fill(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.readAll()
                                                                      : QByteArray();
}

} // namespace

/// What becomes of the settings file when the program is killed or the disk will not have it.
class DefaultsFileProcessTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("meterkin")));
        m_path = m_folder->filePath(QStringLiteral("meterkin/meterkin.conf"));
    }

    void survivesBeingKilled()
    {
        constexpr int Kills = 120;
        const QByteArray before("# by hand\nmenuBarMetric=CPU Usage\nmemoryGreen=");
        const QByteArray after("\nfuture=setting\n" + QByteArray(3000, '#') + "\n");
        for (int kill = 0; kill < Kills; ++kill) {
            fill(m_path, before + "0" + after);
            QProcess writer;
            start(writer, QStringLiteral("forever"), m_path);
            QVERIFY(writer.waitForReadyRead());
            // Anywhere within a few writes.
            QThread::usleep(QRandomGenerator::global()->bounded(3000U));
            writer.kill();
            QVERIFY(writer.waitForFinished());
            const QByteArray said = writer.readAllStandardOutput().trimmed();
            const int last = said.sliced(said.lastIndexOf('\n') + 1).toInt();
            QVERIFY(last > 0);
            const QByteArray content = contentOf(m_path);
            if (content != before + QByteArray::number(last) + after)
                QCOMPARE(content, before + QByteArray::number(last + 1) + after);
        }
    }

    void worksOnWithoutTheDisk_data()
    {
        using Spoil = std::function<void(const QString &path)>;
        QTest::addColumn<QString>("role");
        QTest::addColumn<Spoil>("spoil");
        QTest::addColumn<QByteArray>("values");
        QTest::addColumn<QByteArray>("reason"); // empty: all is well
        const QString plain = QStringLiteral("plain");
        const QString nobody = QStringLiteral("asNobody");
        const auto remove = [](const QString &path) { QFile::remove(path); };
        const auto permit = [](const QString &path, mode_t file, mode_t folder) {
            const QString directory = QFileInfo(path).path();
            chmod(qPrintable(path), file);
            chmod(qPrintable(directory), folder);
            chmod(qPrintable(QFileInfo(directory).path()), 0755);
        };
        QTest::newRow("nothing wrong")
            << plain << Spoil([](const QString &) {}) << QByteArray("11 22 33") << QByteArray();
        QTest::newRow("foreign lock") << plain << Spoil([](const QString &path) {
            fill(path + QStringLiteral(".lock"), "1");
        }) << QByteArray("11 22 33") << QByteArray();
        QTest::newRow("empty file") << plain << Spoil([](const QString &path) { fill(path, ""); })
                                    << QByteArray("11 22 0") << QByteArray();
        QTest::newRow("a file for a folder") << plain << Spoil([](const QString &path) {
            QDir(QFileInfo(path).path()).removeRecursively();
            fill(QFileInfo(path).path(), "precious");
        }) << QByteArray("11 22 0") << QByteArray("folder");
        QTest::newRow("a folder for the file") << plain << Spoil([remove](const QString &path) {
            remove(path);
            QDir().mkdir(path);
        }) << QByteArray("11 22 0") << QByteArray("not a regular file");
        QTest::newRow("a pipe for the file") << plain << Spoil([remove](const QString &path) {
            remove(path);
            mkfifo(qPrintable(path), 0600);
        }) << QByteArray("11 22 0") << QByteArray("not a regular file");
        QTest::newRow("links in a circle") << plain << Spoil([remove](const QString &path) {
            remove(path);
            QFile::link(QStringLiteral("back"), path);
            QFile::link(path, QFileInfo(path).path() + QStringLiteral("/back"));
        }) << QByteArray("11 22 0") << QByteArray("link");
        QTest::newRow("too large") << plain << Spoil([](const QString &path) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::Append));
            // Beyond the limit, and cut there within a number.
            file.write(QByteArray(1024 * 1024 - 50, '#'));
            file.write("\ncpuUsageGreen=1234567890123456789012345678901234567890\n");
        }) << QByteArray("11 22 33")
                                   << QByteArray("too large");
        QTest::newRow("full disk") << QStringLiteral("onFullDisk") << Spoil([](const QString &) {})
                                   << QByteArray("11 22 33") << QByteArray("File too large");
        QTest::newRow("read-only file")
            << nobody << Spoil([permit](const QString &path) { permit(path, 0444, 0777); })
            << QByteArray("11 22 33") << QByteArray("write-protected");
        QTest::newRow("read-only folder")
            << nobody << Spoil([permit](const QString &path) { permit(path, 0666, 0555); })
            << QByteArray("11 22 33") << QByteArray("denied");
        QTest::newRow("unreadable file")
            << nobody << Spoil([permit](const QString &path) { permit(path, 0000, 0777); })
            << QByteArray("11 22 0") << QByteArray("denied");
    }
    void worksOnWithoutTheDisk()
    {
        using Spoil = std::function<void(const QString &path)>;
        QFETCH(QString, role);
        QFETCH(Spoil, spoil);
        QFETCH(QByteArray, values);
        QFETCH(QByteArray, reason);
        fill(m_path, "cpuUsageGreen=33\n");
        spoil(m_path);
        const QByteArray before = contentOf(m_path);

        QProcess process;
        start(process, role, m_path);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.readAllStandardOutput().trimmed(), values);
        const QByteArray complaint = process.readAllStandardError();
        QCOMPARE(complaint.count('\n'), reason.isEmpty() ? 0 : 1);
        QVERIFY2(complaint.contains(reason), complaint.constData());
        QCOMPARE(contentOf(m_path),
                 reason.isEmpty() ? before + "memoryGreen=11\nmemoryYellow=22\n" : before);
        // Nothing half-made stays behind.
        const QStringList drafts = QFileInfo(m_path).dir().entryList(
            {QStringLiteral(".*.part")}, QDir::AllEntries | QDir::Hidden);
        QCOMPARE(drafts, QStringList());
        QFile::setPermissions(QFileInfo(m_path).path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void catchesUpWhenTheDiskIsBack()
    {
        DefaultsFile store(m_path);
        QVERIFY(QDir().mkdir(m_path));
        store.setInteger(green, 1);
        QVERIFY(QDir().rmdir(m_path));
        store.setInteger(yellow, 2);
        QCOMPARE(contentOf(m_path), QByteArray("memoryGreen=1\nmemoryYellow=2\n"));
    }

    void wrongHotkeysEndTheProgram_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("said"); // empty: it ends
        const auto row = [](const char *line, const char *said) {
            QTest::newRow(line) << QByteArray(line) << QByteArray(said);
        };
        row("hotkeyKeyCode=-1", "");
        row("hotkeyKeyCode=4294967296", "");
        row("hotkeyKeyCode=99999999999999999999", "");
        row("hotkeyModifiers=-99999999999999999999", "");
        row("hotkeyModifiers=inf", "");
        row("hotkeyKeyCode=4294967295", "4294967295");
        row("hotkeyKeyCode=49", "49");
        row("hotkeyKeyCode=12abc", "0");
    }
    void wrongHotkeysEndTheProgram()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, said);
        fill(m_path, line + '\n');
        QProcess process;
        start(process, QStringLiteral("settings"), m_path);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), said.isEmpty() ? 1 : 0);
        QCOMPARE(process.readAllStandardOutput().trimmed(), said);
        const QByteArray complaint = process.readAllStandardError();
        QCOMPARE(complaint.count('\n'), said.isEmpty() ? 1 : 0);
        if (said.isEmpty())
            QVERIFY(complaint.contains(line.first(line.indexOf('=')))
                    && complaint.contains(m_path.toUtf8()));
        QCOMPARE(contentOf(m_path), line + '\n');
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

METERKIN_TEST(DefaultsFileProcessTest);
#include "DefaultsFileProcessTest.moc"
