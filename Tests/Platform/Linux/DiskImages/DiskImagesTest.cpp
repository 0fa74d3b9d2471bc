#include "Platform/Linux/DiskImages.h"
#include "Platform/Linux/Process/ProgramLocation.h"
#include "Support/Files.h"
#include "Support/PrivateBus.h"
#include "Support/ScriptedService.h"
#include "Support/TestFolder.h"
#include "Support/TestMain.h"

#include <QThread>
#include <QtTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// A storage service that notes the calls and refuses those for one device.
class ScriptedStorage : public ScriptedService {
public:
    using ScriptedService::ScriptedService;

    QStringList calls;
    QString refused; ///< a device

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString device = message.path().section(u'/', -1);
        calls << message.member() + u' ' + device;
        return connection.send(device == refused ? message.createErrorReply(
                                   u"org.freedesktop.UDisks2.Error.DeviceBusy"_s, QString())
                                                 : message.createReply());
    }
};

} // namespace

class LinuxDiskImagesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_bus.address().toUtf8()); }
    void cleanupTestCase() { qunsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }
    void init()
    {
        m_folder.emplace();
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
        attach("loop6", "7:6", "/\xff.img");
        attach("loop7", "7:7", at("c.img").toUtf8() + "/below/a/file");
        mount("8:1", "/", "/");
        mount("259:10", "/", "/media/with\\040blank\\011and\\134tab");
        mount("7:10", "/", "/media/covered");
        mount("7:2", "/", "/media/whole");
        mount("7:2", "/Meterkin", "/media/part");
        mount("7:3", "/", "/media/deleted");
        mount("0:40", "/", "/media/covered");
        m_mounts += "37 1 7:10 / /media/cut";

        const QList<DiskImage> expected{
            {at("a b.img"), {u"/media/with blank\tand\\tab"_s, u"/media/whole"_s}},
            {at("a b.img (deleted)"), {u"/media/deleted"_s}},
            {at("c.img"), {}}};
        QCOMPARE(devices().attachedImages(), std::optional(expected));
        QVERIFY(!LinuxDiskImages(at("block").toStdString(), "/nowhere").attachedImages());
    }

    void detachesThroughTheService()
    {
        for (const auto &[refused, expected] :
             {std::pair("", "Unmount loop900p2,Unmount loop900p1,Delete loop900"),
              {"loop900p2", "Unmount loop900p2"},
              {"loop900p1", "Unmount loop900p2,Unmount loop900p1"}}) {
            init();
            m_storage.refused = QString::fromLatin1(refused);
            attachOurs(at("a b.img"));
            discard(at("c.img"), "two"); // another image by now
            discard(at("a b.img"), "two");
            QCOMPARE(m_storage.calls.join(u','), QString::fromLatin1(expected));
            QCOMPARE(trashed(), QStringList{u"a b.img"_s});
        }
    }

    void discardsOnlyTheDevicesFile()
    {
        for (const auto &[attached, named, isDiscarded] : // what the device presents, what is told
             {std::tuple("c.img", "c.img", true),
              {"a b.img", "c.img", false},
              {"", "c.img", true},
              {"", "link/c.img", false}}) {
            init();
            QVERIFY(QFile::link(m_folder->path(), at("link")));
            QByteArray device("loop900");
            if (qstrlen(attached) > 0)
                device = m_folder->shell("losetup --find --show \"$0\" 2>/dev/null", at(attached))
                             .trimmed()
                             .mid(5);
            if (device.isEmpty())
                continue; // only root attaches images
            attachOurs(at(named), device);
            discard(at(named), "two", "/dev"); // which frees the device
            QCOMPARE(m_storage.calls.size(), device == "loop900" ? 3 : 2);
            QVERIFY2(trashed().isEmpty() != isDiscarded, named);
        }
    }

    void knowsItsProgram()
    {
        for (const auto &[command, isOurs] : // makes the entry of the volume
             {std::pair("cp $0 Tools", true),
              {"cp $0 Tools; printf x | dd of=Tools/${0##*/} conv=notrunc bs=1 seek=9", false},
              {"cp $0 Tools; printf x >>Tools/${0##*/}", false},
              {"mkfifo Tools/${0##*/}", false},
              {"ln -s $0 Tools", false},
              {"rmdir Tools; ln -s ${0%/*} Tools", false}}) {
            init();
            QVERIFY(QDir().mkpath(at("Tools")));
            m_folder->shell(command, QCoreApplication::applicationFilePath());
            QVERIFY2(devices().holdsBundle(m_folder->path(), u"Tools"_s) == isOurs, command);
        }
    }

    void knowsTheAppImageItRunsFrom()
    {
        // Another program's variables are inherited by what that program starts.
        for (auto [content, isInside] : {std::pair(QCoreApplication::applicationDirPath(), true),
                                         {m_folder->path(), false},
                                         {QString(), false}}) {
            init();
            qputenv("APPIMAGE", at("c.img").toUtf8());
            qputenv("APPDIR", content.toUtf8());
            QCOMPARE(programToStart() == at("c.img"), isInside);
            QCOMPARE(bundlePath() == at("c.img"), isInside);
            QVERIFY(QDir().mkpath(at("volume")) && QFile::copy(at("a b.img"), at("volume/c.img")));
            QCOMPARE(devices().holdsBundle(at("volume"), u"c.img"_s), isInside); // the same content
        }
        qunsetenv("APPIMAGE");
        qunsetenv("APPDIR");
    }

private:
    QString at(const char *path) const { return m_folder->at(path); }

    LinuxDiskImages devices(const QString &nodes = {})
    {
        write(at("mountinfo"), m_mounts); // never the machine's own
        return LinuxDiskImages(at("block").toStdString(), at("mountinfo").toStdString(),
                               nodes.toStdString());
    }

    void attach(const QByteArray &name, const QByteArray &number, const QByteArray &file = {})
    {
        const QString folder = at("block/") + QString::fromUtf8(name);
        write(folder + u"/dev"_s, number + '\n');
        if (!file.isEmpty())
            write(folder + u"/loop/backing_file"_s, file + '\n');
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
    /// In the background, as the program does it, while the service answers on this thread.
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

    PrivateBus m_bus;
    ScriptedStorage m_storage{m_bus.connectClient(), u"org.freedesktop.UDisks2"_s,
                              u"/org/freedesktop/UDisks2/block_devices"_s};
    std::optional<TestFolder> m_folder;
    QByteArray m_mounts;
};

METERKIN_TEST(LinuxDiskImagesTest);
#include "DiskImagesTest.moc"
