#include "Platform/Linux/DiskImages.h"
#include "Support/Files.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <memory>

namespace {

/// A storage service that notes what it is asked, and refuses or keeps silent on demand.
class ScriptedStorage : public QDBusVirtualObject {
public:
    QStringList calls;
    QString refused; ///< a device

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QString device = message.path().section(u'/', -1);
        calls << message.member() + u' ' + device;
        return connection.send(
            device == refused ? message.createErrorReply(
                QStringLiteral("org.freedesktop.UDisks2.Error.DeviceBusy"), QString())
                              : message.createReply());
    }
};

} // namespace

class LinuxDiskImagesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_bus = std::make_unique<PrivateBus>();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_bus->address().toUtf8());
        m_client = m_bus->connectClient();
        m_client.registerVirtualObject(QStringLiteral("/org/freedesktop/UDisks2/block_devices"),
                                       &m_storage, QDBusConnection::SubPath);
        QVERIFY(m_client.registerService(QStringLiteral("org.freedesktop.UDisks2")));
    }
    void cleanupTestCase()
    {
        qunsetenv("DBUS_SYSTEM_BUS_ADDRESS");
        m_bus.reset();
    }
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_mounts.clear();
        m_storage.calls.clear();
        m_storage.refused.clear();
        QVERIFY(write(at("a b.img"), "image"));
        QVERIFY(write(at("c.img"), "image"));
        qputenv("XDG_DATA_HOME", at("data").toUtf8());
    }
    void cleanup() { qunsetenv("XDG_DATA_HOME"); }

    void listsImages()
    {
        attach("loop10", "7:10", at("c.img").toUtf8());
        attach("loop2", "7:2", at("a b.img").toUtf8());
        attach("loop2/loop2p10", "259:10");
        attach("loop2/loop2p2", "259:2");
        attach("loop3", "7:3", at("a b.img").toUtf8() + " (deleted)");
        attach("loop4", "7:4", "/dev/null"); // a disk, not a file
        attach("loop5", "7:5", "relative.img");
        attach("loop6", "7:6", "/\xff.img");
        attach("loop7", "7:7", at("c.img").toUtf8() + "/below/a/file");
        attach("loopback", "7:8", at("c.img").toUtf8());
        attach("loop0", "7:0"); // free
        mount("8:1", "/", "/");
        mount("259:10", "/", "/media/with\\040blank\\011and\\134tab");
        mount("7:10", "/", "/media/covered");
        mount("7:20", "/", "/media/other");
        mount("7:2", "/", "/media/whole");
        mount("7:2", "/Meterkin", "/media/part");
        mount("7:3", "/", "/media/\xff");
        mount("7:3", "/", "/media/deleted");
        mount("0:40", "/", "/media/covered");
        m_mounts += "37 1 7:10 / /media/cut";

        const auto images = devices().attachedImages();
        QVERIFY(images.has_value());
        const QList<DiskImage> expected{
            {at("a b.img"),
             {QStringLiteral("/media/with blank\tand\\tab"), QStringLiteral("/media/whole")}},
            {at("a b.img (deleted)"), {QStringLiteral("/media/deleted")}},
            {at("c.img"), {}}};
        QCOMPARE(*images, expected);
        QVERIFY(!LinuxDiskImages(at("block").toStdString(), "/nowhere").attachedImages());
        QCOMPARE(LinuxDiskImages("/nowhere", at("mountinfo").toStdString()).attachedImages(),
                 std::optional(QList<DiskImage>()));
    }

    void detachesThroughTheService_data()
    {
        QTest::addColumn<QString>("refused");
        QTest::addColumn<QString>("expected");
        QTest::newRow("whole image") << QString()
                                     << QStringLiteral("Unmount loop900p2,Unmount loop900p1,"
                                                       "Delete loop900");
        QTest::newRow("busy") << QStringLiteral("loop900p2") << QStringLiteral("Unmount loop900p2");
        QTest::newRow("the other volume is busy")
            << QStringLiteral("loop900p1") << QStringLiteral("Unmount loop900p2,Unmount loop900p1");
    }
    void detachesThroughTheService()
    {
        QFETCH(QString, refused);
        m_storage.refused = refused;
        attachOurs(at("a b.img"));
        discard(at("c.img"), "two"); // another image by now
        discard(at("a b.img"), "gone");
        QCOMPARE(m_storage.calls, QStringList());
        discard(at("a b.img"), "two");
        QTEST(m_storage.calls.join(u','), "expected");
        QCOMPARE(trashed(), QStringList{QStringLiteral("a b.img")});
    }

    void discardsOnlyTheDevicesFile_data()
    {
        QTest::addColumn<QString>("attached"); // what the real device presents; empty: no device
        QTest::addColumn<QString>("named"); // the path that is told of it
        QTest::addColumn<bool>("isDiscarded");
        for (const auto &[name, attached, named, isDiscarded] :
             {std::tuple{"the device's own", "c.img", "c.img", true},
              {"another one", "a b.img", "c.img", false},
              {"no word of the device", "", "c.img", true},
              {"through a link", "", "link/c.img", false},
              {"gone", "", "gone.img", false}})
            QTest::newRow(name) << QString::fromLatin1(attached) << QString::fromLatin1(named)
                                << isDiscarded;
    }
    void discardsOnlyTheDevicesFile()
    {
        QFETCH(QString, attached);
        QFETCH(QString, named);
        QVERIFY(QFile::link(m_folder->path(), at("link")));
        QByteArray device("loop900");
        if (!attached.isEmpty()) {
            QProcess losetup;
            losetup.start(
                QStringLiteral("losetup"),
                {QStringLiteral("--find"), QStringLiteral("--show"), m_folder->filePath(attached)});
            losetup.waitForFinished();
            device = losetup.readAllStandardOutput().trimmed().mid(5);
            if (device.isEmpty())
                QSKIP("only root attaches disk images");
        }
        attachOurs(m_folder->filePath(named), device);
        discard(m_folder->filePath(named), "two", "/dev"); // which frees the device
        QCOMPARE(m_storage.calls.size(), attached.isEmpty() ? 3 : 2);
        QTEST(!trashed().isEmpty(), "isDiscarded");
    }

    void knowsItsProgram_data()
    {
        QTest::addColumn<QString>("made"); // the command that makes the entry of the volume
        QTest::addColumn<bool>("isOurs");
        for (const auto &[name, made, isOurs] :
             {std::tuple{"its copy", "cp $0 Tools", true},
              {"another program", "cp /bin/true Tools", false},
              {"of another name", "cp $0 Tools/other", false},
              {"as large",
               "cp $0 Tools && printf x | dd of=Tools/${0##*/} conv=notrunc bs=1 seek=9", false},
              {"larger", "cp $0 Tools && printf x >>Tools/${0##*/}", false},
              {"a folder", "mkdir Tools/${0##*/}", false},
              {"a pipe", "mkfifo Tools/${0##*/}", false},
              {"a link to it", "ln -s $0 Tools", false},
              {"a link to its folder", "rmdir Tools && ln -s ${0%/*} Tools", false}})
            QTest::newRow(name) << QString::fromLatin1(made) << isOurs;
    }
    void knowsItsProgram()
    {
        QFETCH(QString, made);
        QVERIFY(QDir().mkpath(at("volume/Tools")));
        QProcess shell;
        shell.setWorkingDirectory(at("volume"));
        shell.start(QStringLiteral("sh"),
                    {QStringLiteral("-c"), made, QCoreApplication::applicationFilePath()});
        QVERIFY(shell.waitForFinished() && shell.exitCode() == 0);
        QTEST(devices().holdsBundle(at("volume"), QStringLiteral("Tools")), "isOurs");
    }

private:
    QString at(const char *path) const { return m_folder->filePath(QString::fromUtf8(path)); }

    LinuxDiskImages devices(const QString &nodes = {})
    {
        // Never the machine's own devices.
        if (!write(at("mountinfo"), m_mounts))
            qFatal("cannot write");
        return LinuxDiskImages(at("block").toStdString(), at("mountinfo").toStdString(),
                           nodes.toStdString());
    }

    void attach(const QByteArray &name, const QByteArray &number, const QByteArray &file = {})
    {
        const QString folder = at("block/") + QString::fromUtf8(name);
        QVERIFY(write(folder + QStringLiteral("/dev"), number + '\n'));
        if (!file.isEmpty())
            QVERIFY(write(folder + QStringLiteral("/loop/backing_file"), file + '\n'));
    }
    void mount(const char *device, const char *root, const QByteArray &point)
    {
        m_mounts += QByteArray("36 35 ") + device + ' ' + root + ' ' + point
            + " rw,noatime shared:1 - ext4 /dev/loop0 rw\n";
    }
    void attachOurs(const QString &image, const QByteArray &name = "loop900")
    {
        attach(name, "7:900", image.toUtf8());
        attach(name + '/' + name + "p1", "259:1");
        attach(name + '/' + name + "p2", "259:2");
        QVERIFY(QDir().mkpath(at("two")));
        mount("259:1", "/", at("one").toUtf8());
        mount("259:2", "/", at("two").toUtf8());
    }
    /// In the background, as the program does, while the service answers here.
    void discard(const QString &image, const char *mountPoint, const char *nodes = "/nowhere")
    {
        const std::unique_ptr<QThread> thread(
            QThread::create([&, all = devices(QString::fromLatin1(nodes))]() mutable {
                all.detachAndDiscard({image, {}}, at(mountPoint));
            }));
        thread->start();
        while (!thread->wait(10))
            QCoreApplication::processEvents();
    }
    QStringList trashed() const { return QDir(at("data/Trash/files")).entryList(QDir::Files); }

    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_client{QString()};
    ScriptedStorage m_storage;
    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_mounts;
};

METERKIN_TEST(LinuxDiskImagesTest);
#include "DiskImagesTest.moc"
