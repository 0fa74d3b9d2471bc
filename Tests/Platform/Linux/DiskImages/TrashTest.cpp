#include "Platform/Linux/DiskImages/Trash.h"
#include "Platform/Linux/DiskImages/HeldFile.h"
#include "Support/Files.h"
#include "Support/TestFolder.h"
#include "Support/TestMain.h"

#include <QStorageInfo>
#include <QtTest>

#include <optional>

#include <unistd.h>

class TrashTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder.emplace();
        qputenv("XDG_DATA_HOME", m_folder->at("data").toUtf8());
        QVERIFY(write(m_folder->at("a b/é%.img"), "1"));
    }
    void cleanup() { qunsetenv("XDG_DATA_HOME"); }

    void movesFiles()
    {
        for (const char *text : {"1", "2"})
            QVERIFY(write(m_folder->at("a b/é%.img"), text) && trash("a b/é%.img"));
        QVERIFY(contents(m_folder->at("data/Trash/info/é%.img.2.trashinfo"))
                    .startsWith("[Trash Info]\nPath=" + m_folder->path().toUtf8()
                                + "/a%20b/%C3%A9%25.img\nDeletionDate=20"));
        QVERIFY(!trash("data/Trash/files/é%.img")); // it is there already
        // A file in the Trash keeps its name without its information too.
        QVERIFY(QFile::remove(m_folder->at("data/Trash/info/é%.img.trashinfo")));
        QVERIFY(write(m_folder->at("a b/é%.img"), "3") && trash("a b/é%.img"));
        QCOMPARE(m_folder->shell("ls 'a b'; cd data/Trash/files; grep '' *"),
                 QByteArray("é%.img:1\né%.img.2:2\né%.img.3:3\n"));
    }

    void leavesWhatItCannotMove()
    {
        m_folder->shell("ln -s é%.img 'a b/link'; ln -s 'a b' other");
        for (const char *path : {"a b", "a b/link", "other/é%.img", "a b/gone.img"})
            QVERIFY2(!trash(path), path);
        for (const char *blocked : {"data/Trash/info", "data/Trash/files", "data/Trash"}) {
            m_folder->shell("rm -rf data; mkdir -p ${0%/*}; ln -s /nowhere $0",
                            QString::fromUtf8(blocked));
            QVERIFY2(!trash("a b/é%.img"), blocked);
        }
        QCOMPARE(m_folder->shell("cd 'a b'; ls; cat link"), QByteArray("link\né%.img\n1"));
    }

    void movesWhatItHolds()
    {
        QVERIFY(write(m_folder->at("other/é%.img"), "2"));
        const auto first = HeldFile::at(m_folder->at("a b/é%.img").toStdString());
        const auto second = HeldFile::at(m_folder->at("other/é%.img").toStdString());
        m_folder->shell("mv 'a b' x; mv other 'a b'; mv x other");
        QVERIFY(first && moveToTrash(*first));
        m_folder->shell("rm 'a b'/*; printf 3 > 'a b/é%.img'");
        QVERIFY(second && !moveToTrash(*second));
        QCOMPARE(m_folder->shell("ls other; grep '' 'a b'/* data/Trash/files/*"),
                 QByteArray("a b/é%.img:3\ndata/Trash/files/é%.img:1\n"));
    }

    void staysOnItsFileSystem()
    {
        const QTemporaryDir elsewhere(QStringLiteral("/dev/shm/meterkin-XXXXXX"));
        const QString top = QStorageInfo(elsewhere.path()).rootPath();
        if (!elsewhere.isValid() || top == QStorageInfo(m_folder->path()).rootPath())
            QSKIP("one file system only");
        const QString name = QFileInfo(elsewhere.path()).fileName();
        const QString image = elsewhere.filePath(name);
        QVERIFY(write(image, "1"));
        const auto file = HeldFile::at(image.toStdString());
        QVERIFY(file && moveToTrash(*file));
        const QDir trash(top + QStringLiteral("/.Trash-%1").arg(geteuid()));
        const QString info = trash.filePath(QStringLiteral("info/%1.trashinfo").arg(name));
        QVERIFY(contents(info).contains("\nPath=" + image.mid(top.size() + 1).toUtf8()));
        QVERIFY(QFile::remove(info)
                && QFile::remove(trash.filePath(QStringLiteral("files/") + name)));
    }

private:
    bool trash(const char *path) const
    {
        const std::optional<HeldFile> file = HeldFile::at(m_folder->at(path).toStdString());
        return file && moveToTrash(*file);
    }

    std::optional<TestFolder> m_folder;
};

METERKIN_TEST(TrashTest);
#include "TrashTest.moc"
