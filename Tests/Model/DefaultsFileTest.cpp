#include "Platform/Linux/DefaultsFile.h"
#include "Support/TestMain.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr qint64 Lowest = std::numeric_limits<qint64>::min();
constexpr qint64 Highest = std::numeric_limits<qint64>::max();

const QString key = QStringLiteral("key");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

void fill(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

} // namespace

/// The settings file as a store of typed values, and its manners on the disk.
class DefaultsFileTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_path = m_folder->filePath(QStringLiteral("meterkin.conf"));
    }

    void readsNumbers_data()
    {
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<double>("number");
        QTest::addColumn<qint64>("integer");
        const double infinity = std::numeric_limits<double>::infinity();
        const auto row = [](const char *written, double number, qint64 integer) {
            QTest::newRow(written) << QByteArray(written) << number << integer;
        };
        row("3", 3.0, 3);
        row("-2.9", -2.9, -2);
        row("1e3", 1000.0, 1000);
        row("\"7\"", 7.0, 7);
        row("9007199254740993", 9007199254740992.0, 9007199254740993);
        row("99999999999999999999", 1e20, Highest);
        row("-99999999999999999999", -1e20, Lowest);
        row("1e400", infinity, Highest);
        row("inf", infinity, Highest);
        row("-inf", -infinity, Lowest);
        row("nan", 0.0, 0);
        row("12abc", 0.0, 0);
        row("0x10", 0.0, 0);
        row("3,5", 0.0, 0);
        row("1,000", 0.0, 0);
        row("", 0.0, 0);
        row("true", 0.0, 0);
    }
    void readsNumbers()
    {
        QFETCH(QByteArray, written);
        fill(m_path, "key=" + written + "\n");
        const DefaultsFile store(m_path);
        QTEST(store.number(key), "number");
        QTEST(store.integer(key), "integer");
    }

    void readsBooleans_data()
    {
        QTest::addColumn<bool>("value");
        for (const char *written : {"true", "TRUE", "yes", "On", "1"})
            QTest::newRow(written) << true;
        for (const char *written : {"false", "no", "off", "0", "", "ture", "2"})
            QTest::newRow(written) << false;
    }
    void readsBooleans()
    {
        fill(m_path, QByteArray("key=") + QTest::currentDataTag());
        QTEST(DefaultsFile(m_path).boolean(key), "value");
    }

    void numbersComeBack_data()
    {
        QTest::addColumn<double>("value");
        QTest::newRow("tenth") << 0.1;
        QTest::newRow("third") << 1.0 / 3.0;
        QTest::newRow("whole") << 4000.0;
        QTest::newRow("largest") << std::numeric_limits<double>::max();
        QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min();
        QTest::newRow("infinite") << -std::numeric_limits<double>::infinity();
    }
    void numbersComeBack()
    {
        QFETCH(double, value);
        DefaultsFile(m_path).setNumber(key, value);
        QVERIFY(DefaultsFile(m_path).number(key) == value);
    }

    void otherTypesComeBack()
    {
        DefaultsFile store(m_path);
        store.setText(QStringLiteral("text"), QStringLiteral("Fan Speed"));
        store.setBoolean(QStringLiteral("boolean"), true);
        store.setInteger(QStringLiteral("integer"), Lowest);
        store.setNumber(QStringLiteral("number"), 3.0);
        QCOMPARE(
            contentOf(m_path),
            QByteArray("text=Fan Speed\nboolean=true\ninteger=-9223372036854775808\nnumber=3\n"));
        const DefaultsFile reread(m_path);
        QCOMPARE(reread.text(QStringLiteral("text")), std::optional(QStringLiteral("Fan Speed")));
        QCOMPARE(reread.boolean(QStringLiteral("boolean")), true);
        QCOMPARE(reread.integer(QStringLiteral("integer")), Lowest);
    }

    void defaultsStandInAndAreNotWritten()
    {
        fill(m_path, "set=false\n");
        DefaultsFile store(m_path);
        QCOMPARE(store.text(QStringLiteral("number")), std::nullopt);
        store.registerDefaults({{QStringLiteral("set"), true},
                                {QStringLiteral("number"), 2.5},
                                {QStringLiteral("flag"), false},
                                {QStringLiteral("text"), QStringLiteral("Memory")}});
        store.registerDefaults({{QStringLiteral("flag"), true}});
        QCOMPARE(store.boolean(QStringLiteral("set")), false);
        QCOMPARE(store.number(QStringLiteral("number")), 2.5);
        QCOMPARE(store.boolean(QStringLiteral("flag")), true);
        QCOMPARE(store.text(QStringLiteral("text")), std::optional(QStringLiteral("Memory")));
        store.setInteger(key, 1);
        QCOMPARE(contentOf(m_path), QByteArray("set=false\nkey=1\n"));
    }

    void keepsWhatOthersWrote()
    {
        fill(m_path, "# mine\nkey=1\nother=1\n");
        DefaultsFile store(m_path);
        fill(m_path, "# mine\nkey=1\nother=2\n???\n");
        store.setInteger(key, 5);
        QCOMPARE(contentOf(m_path), QByteArray("# mine\nkey=5\nother=2\n???\n"));
        QCOMPARE(store.integer(QStringLiteral("other")), 2);
    }

    void anEqualWriteLeavesTheFile()
    {
        fill(m_path, "key=1\n");
        DefaultsFile store(m_path);
        QFile held(m_path);
        QVERIFY(held.open(QIODevice::ReadWrite | QIODevice::Append));
        store.setInteger(key, 1);
        // A replaced file would not get this.
        held.write("other=2\n");
        held.close();
        QCOMPARE(contentOf(m_path), QByteArray("key=1\nother=2\n"));
    }

    void makesPrivateFoldersAndFile()
    {
        const QString folder = m_folder->filePath(QStringLiteral("a/b"));
        const QString path = folder + QStringLiteral("/meterkin.conf");
        DefaultsFile store(path);
        QVERIFY(!QFile::exists(folder));
        store.setInteger(key, 1);
        const auto forOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
            | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
        QVERIFY(!(QFile::permissions(folder) & forOthers));
        QVERIFY(!(QFile::permissions(path) & forOthers));

        const auto chosen = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
        QVERIFY(QFile::setPermissions(path, chosen));
        store.setInteger(key, 2);
        QCOMPARE(QFile::permissions(path) & (chosen | forOthers), chosen);
    }

    void writesThroughLinks_data()
    {
        QTest::addColumn<bool>("isTargetThere");
        QTest::newRow("to a file") << true;
        QTest::newRow("to nothing") << false;
    }
    void writesThroughLinks()
    {
        QFETCH(bool, isTargetThere);
        QDir folder(m_folder->path());
        QVERIFY(folder.mkdir(QStringLiteral("dotfiles")));
        const QString target = folder.filePath(QStringLiteral("dotfiles/real"));
        if (isTargetThere)
            fill(target, "other=1\n");
        // Relative ones, and more than one.
        QVERIFY(
            QFile::link(QStringLiteral("real"), folder.filePath(QStringLiteral("dotfiles/next"))));
        QVERIFY(QFile::link(QStringLiteral("dotfiles/next"), m_path));
        DefaultsFile(m_path).setInteger(key, 1);
        QVERIFY(QFileInfo(m_path).isSymLink());
        QVERIFY(!QFileInfo(target).isSymLink());
        QCOMPARE(contentOf(target), QByteArray(isTargetThere ? "other=1\nkey=1\n" : "key=1\n"));
    }

    void clearsOldLeftovers()
    {
        const QDateTime old = QDateTime::currentDateTime().addSecs(-3600);
        const auto make = [this](const QString &name, const QDateTime &time) {
            QFile file(m_folder->filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
        };
        make(QStringLiteral(".meterkin.conf.aBcDeF.part"), old);
        make(QStringLiteral(".meterkin.conf.youngA.part"), QDateTime::currentDateTime());
        make(QStringLiteral(".meterkin.conf.tooLong.part"), old);
        make(QStringLiteral("meterkin.conf.backup"), old);
        make(QStringLiteral("meterkin.conf.lock"), old);
        const DefaultsFile store(m_path);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
                 (QStringList{QStringLiteral(".meterkin.conf.tooLong.part"),
                              QStringLiteral(".meterkin.conf.youngA.part"),
                              QStringLiteral("meterkin.conf.backup"),
                              QStringLiteral("meterkin.conf.lock")}));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

METERKIN_TEST(DefaultsFileTest);
#include "DefaultsFileTest.moc"
