#include "Platform/Linux/DiskImages/Trash.h"
#include "Platform/Linux/DiskImages/HeldFile.h"
#include "Support/Files.h"
#include "Support/TestMain.h"

#include <QStorageInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include <unistd.h>

class TrashTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_data = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", at("home/data").toUtf8());
        QVERIFY(QDir().mkpath(at("down loads")));
    }
    void cleanup()
    {
        m_data.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", m_data);
    }

    void movesFiles()
    {
        const QString image = at("down loads/1\u00e9%.img");
        for (const char *text : {"first", "second"}) {
            QVERIFY(write(image, text));
            QVERIFY(trash(image));
            QVERIFY(!QFile::exists(image));
        }
        QCOMPARE(contents(at("home/data/Trash/files/1\u00e9%.img")), "first");
        QCOMPARE(contents(at("home/data/Trash/files/1\u00e9%.img.2")), "second");
        QVERIFY(contents(at("home/data/Trash/info/1\u00e9%.img.2.trashinfo"))
                    .startsWith("[Trash Info]\nPath=" + m_folder->path().toUtf8()
                                + "/down%20loads/1%C3%A9%25.img\nDeletionDate=20"));
        QVERIFY(!trash(at("home/data/Trash/files/1\u00e9%.img"))); // it is there already
        // A file in the Trash keeps its name without its information too.
        QVERIFY(QFile::remove(at("home/data/Trash/info/1\u00e9%.img.trashinfo")));
        QVERIFY(write(image, "third") && trash(image));
        QCOMPARE(contents(at("home/data/Trash/files/1\u00e9%.img")), "first");
        QCOMPARE(trashed().size(), 3);
    }

    void leavesWhatItCannotMove()
    {
        QVERIFY(write(at("down loads/a.img"), "image"));
        QVERIFY(QFile::link(at("down loads/a.img"), at("down loads/link")));
        QVERIFY(QFile::link(at("down loads"), at("other")));
        for (const char *path :
             {"down loads", "down loads/link", "other/a.img", "down loads/b.img"})
            QVERIFY2(!trash(at(path)), path);
        QVERIFY(QFileInfo(at("down loads/link")).isSymLink());
        // A link to nowhere in the place of a folder.
        for (const char *blocked : {"Trash/info", "Trash/files", "Trash"}) {
            QDir(at("home/data/Trash")).removeRecursively();
            const QString place = at("home/data/") + QString::fromUtf8(blocked);
            QVERIFY(QDir().mkpath(QFileInfo(place).path()));
            QVERIFY(QFile::link(QStringLiteral("/nowhere/at/all"), place));
            QVERIFY2(!trash(at("down loads/a.img")), blocked);
        }
        QCOMPARE(contents(at("down loads/a.img")), "image");
    }

    void movesWhatItHolds()
    {
        QVERIFY(write(at("down loads/a.img"), "image") && write(at("other/a.img"), "another"));
        const auto first = HeldFile::at(at("down loads/a.img").toStdString());
        const auto second = HeldFile::at(at("other/a.img").toStdString());
        QVERIFY(first && second);
        QDir folder(m_folder->path());
        for (const auto &[from, to] :
             {std::pair{"down loads", "x"}, {"other", "down loads"}, {"x", "other"}})
            QVERIFY(folder.rename(QString::fromUtf8(from), QString::fromUtf8(to)));
        QVERIFY(moveToTrash(*first));
        QCOMPARE(contents(at("home/data/Trash/files/a.img")), "image");
        QVERIFY(folder.remove(QStringLiteral("down loads/a.img")));
        QVERIFY(write(at("down loads/a.img"), "newer"));
        QVERIFY(!moveToTrash(*second));
        QCOMPARE(contents(at("down loads/a.img")), "newer");
        QCOMPARE(trashed().size(), 1);
    }

    void staysOnItsFileSystem()
    {
        QTemporaryDir elsewhere(QStringLiteral("/dev/shm/meterkin-XXXXXX"));
        const QStorageInfo storage(elsewhere.path());
        if (!elsewhere.isValid() || storage == QStorageInfo(m_folder->path()))
            QSKIP("one file system only");
        const QString name = QFileInfo(elsewhere.path()).fileName() + QStringLiteral(".img");
        const QString image = elsewhere.filePath(name);
        QVERIFY(write(image, "image"));
        QVERIFY(trash(image));
        const QString top = storage.rootPath() + QStringLiteral("/.Trash-%1").arg(geteuid()) + u'/';
        const QString info = top + QStringLiteral("info/") + name + QStringLiteral(".trashinfo");
        QCOMPARE(contents(info).split('\n').value(1),
                 "Path=" + image.mid(storage.rootPath().size() + 1).toUtf8());
        QCOMPARE(contents(top + QStringLiteral("files/") + name), "image");
        QVERIFY(trashed().isEmpty());
        QVERIFY(QFile::remove(info) && QFile::remove(top + QStringLiteral("files/") + name));
    }

private:
    QString at(const char *path) const { return m_folder->filePath(QString::fromUtf8(path)); }
    static bool trash(const QString &path)
    {
        const std::optional<HeldFile> file = HeldFile::at(path.toStdString());
        return file && moveToTrash(*file);
    }
    QStringList trashed() const
    {
        return QDir(at("home/data/Trash/files")).entryList(QDir::Files | QDir::Hidden);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_data;
};

METERKIN_TEST(TrashTest);
#include "TrashTest.moc"
