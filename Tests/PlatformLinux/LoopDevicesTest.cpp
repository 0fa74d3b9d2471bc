#include "Platform/Linux/LoopDevices.h"
#include "Sampling/Files.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <memory>

#include <cerrno>
#include <sys/mount.h>

namespace {

/// A storage service that notes what it is asked, and refuses or keeps silent on demand.
class ScriptedStorage : public QDBusVirtualObject {
public:
    QStringList calls;
    QString refused; ///< a device
    bool asksUser = false;

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QString device = message.path().section(u'/', -1);
        calls << message.member() + u' ' + device;
        const auto options = qdbus_cast<QVariantMap>(message.arguments().value(0));
        asksUser |= !options.value(QStringLiteral("auth.no_user_interaction")).toBool();
        return connection.send(
            device == refused ? message.createErrorReply(
                QStringLiteral("org.freedesktop.UDisks2.Error.DeviceBusy"), QString())
                              : message.createReply());
    }
};

} // namespace

class LoopDevicesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_bus = std::make_unique<PrivateBus>();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_bus->address().toUtf8());
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
        QVERIFY(write(at("a b.img"), "image"));
        QVERIFY(write(at("c.img"), "image"));
    }

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
        QVERIFY(!LoopDevices(at("block").toStdString(), "/nowhere").attachedImages());
        QCOMPARE(LoopDevices("/nowhere", at("mountinfo").toStdString()).attachedImages(),
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
        ScriptedStorage storage;
        storage.refused = refused;
        QDBusConnection client = m_bus->connectClient();
        client.registerVirtualObject(QStringLiteral("/org/freedesktop/UDisks2/block_devices"),
                                     &storage, QDBusConnection::SubPath);
        QVERIFY(client.registerService(QStringLiteral("org.freedesktop.UDisks2")));
        attachOurs();

        QCOMPARE(detached("two"), true);
        QTEST(storage.calls.join(u','), "expected");
        QVERIFY(!storage.asksUser);
        QCOMPARE(detached("gone"), true);
        client.unregisterService(QStringLiteral("org.freedesktop.UDisks2"));
    }

    void detachesDirectlyWhereItMay()
    {
        attachOurs();
        // Nobody there to ask; whether the kernel lets us try is not for the test to say.
        const bool may = umount2(qPrintable(at("two")), 0) == 0 || errno != EPERM;
        QCOMPARE(detached("two"), may);
    }

private:
    QString at(const char *path) const { return m_folder->filePath(QString::fromUtf8(path)); }

    LoopDevices devices()
    {
        // Never the machine's own devices.
        if (!write(at("mountinfo"), m_mounts))
            qFatal("cannot write");
        return LoopDevices(at("block").toStdString(), at("mountinfo").toStdString(),
                           at("dev").toStdString());
    }

    void attach(const char *name, const QByteArray &number, const QByteArray &file = {})
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
    void attachOurs()
    {
        attach("loop900", "7:900", at("a b.img").toUtf8());
        attach("loop900/loop900p1", "259:1");
        attach("loop900/loop900p2", "259:2");
        QVERIFY(QDir().mkpath(at("two")));
        mount("259:1", "/", at("one").toUtf8());
        mount("259:2", "/", at("two").toUtf8());
    }
    /// In the background, as the program does, while the service answers here.
    bool detached(const char *mountPoint)
    {
        bool result = false;
        const std::unique_ptr<QThread> thread(QThread::create(
            [&, all = devices()]() mutable { result = all.detach(at(mountPoint)); }));
        thread->start();
        while (!thread->wait(10))
            QCoreApplication::processEvents();
        return result;
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_mounts;
};

METERKIN_TEST(LoopDevicesTest);
#include "LoopDevicesTest.moc"
