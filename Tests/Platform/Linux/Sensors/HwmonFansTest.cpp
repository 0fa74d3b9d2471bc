#include "Platform/Linux/Sensors/HwmonFans.h"
#include "Sampling/Files.h"
#include "Sampling/SMCReader.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A made-up /sys: monitors are links into the devices, as in a true one.
class SystemTree {
public:
    QString path(const QByteArray &relative) const
    {
        return m_folder.filePath(QString::fromLatin1(relative));
    }
    /// `files` as "name=text" with spaces in between.
    void addMonitor(const QByteArray &number, const QByteArray &device, const QByteArray &files)
    {
        const QByteArray folder = "devices/" + device + "/hwmon/" + number;
        QDir().mkpath(path(folder));
        QDir().mkpath(path("class"));
        QFile::link(path(folder), path("class/" + number));
        QFile::link(path("devices/" + device), path(folder + "/device"));
        for (const QByteArray &file : files.split(' '))
            QVERIFY(write(path(folder + '/' + file.split('=')[0]), file.split('=')[1] + '\n'));
    }
    /// The values of the keys in turn, "-" for one that cannot be read.
    QString values(const std::vector<std::string> &keys)
    {
        if (!m_reader)
            m_reader.emplace(
                std::make_unique<HwmonFans>(path("class").toStdString(), [this] { return m_now; }));
        QStringList list;
        for (const std::string &key : keys) {
            const std::optional<double> value = m_reader->readValue(key);
            list += value ? QString::number(*value, 'f', 0) : QStringLiteral("-");
        }
        return list.join(u' ');
    }

    void wait() { m_now += std::chrono::seconds(5); }

private:
    QTemporaryDir m_folder;
    std::chrono::steady_clock::time_point m_now;
    std::optional<SMCReader> m_reader; ///< connected when first asked
};

} // namespace

class HwmonFansTest : public QObject {
    Q_OBJECT

private slots:
    void monitorsComeAndGo()
    {
        SystemTree tree; // without the kernel's folder for them
        const auto values = [&tree] { return tree.values({"FNum", "F0Ac", "F1Ac", "F2Ac"}); };
        QCOMPARE(values(), QStringLiteral("0 - - -"));
        tree.addMonitor("hwmon1", "pci", "name=card fan1_input=1");
        QCOMPARE(values(), QStringLiteral("0 - - -")); // not looked for at every reading
        tree.wait();
        QCOMPARE(values(), QStringLiteral("1 1 - -"));
        tree.addMonitor("hwmon2", "isa", "name=board fan1_input=5");
        QVERIFY(QFile::remove(tree.path("class/hwmon1")));
        tree.wait();
        QCOMPARE(values(), QStringLiteral("1 5 - -"));
        tree.addMonitor("hwmon7", "pci", "name=card fan1_input=1");
        QVERIFY(write(tree.path("class/hwmon2/fan2_input"), "6\n"));
        tree.wait();
        QCOMPARE(values(), QStringLiteral("3 5 6 1"));
    }

    void orderIsThatOfTheMachine()
    {
        // As numbered at one boot and at the next. The last driver is of the older kind, which
        // keeps everything with the device.
        for (const QByteArray boot :
             {"hwmon0 hwmon1 hwmon2 hwmon3", "hwmon10 hwmon9 hwmon1 hwmon0"}) {
            const QByteArrayList number = boot.split(' ');
            SystemTree tree;
            tree.addMonitor(number[0], "pci/b", "name=card fan1_input=2");
            tree.addMonitor(number[1], "pci/a", "name=card fan1_input=1");
            tree.addMonitor(number[2], "isa",
                            "name=board fan10_input=10 fan2_input=5 fanx_input=7 temp1_input=7");
            tree.addMonitor(number[3], "old", "device/name=zz device/fan1_input=77");
            QCOMPARE(tree.values({"FNum", "F0Ac", "F1Ac", "F2Ac", "F3Ac", "F4Ac", "F5Ac"}),
                     QStringLiteral("5 5 10 1 2 77 -"));
            QCOMPARE(tree.values({"F10Ac", "F0Xx", "F0", "TC0P"}), QStringLiteral("- - - -"));
        }
    }

    void texts()
    {
        SystemTree tree;
        tree.addMonitor("hwmon1", "pci", "name=card fan1_input=1234 fan1_min=0 fan1_max=65535");
        QCOMPARE(tree.values({"F0Ac", "F0Mn", "F0Mx"}), QStringLiteral("1234 0 65535"));
        const QByteArray texts = "|\n|-1\n|fast\n|1200 rpm\n|12.5\n|99999999999999999999\n|7"
            + QByteArray(200, ' ') + "|1200\n" + QByteArray(5000, '0');
        for (const QByteArray &text : texts.split('|')) {
            QVERIFY(write(tree.path("class/hwmon1/fan1_input"), text));
            QVERIFY2(tree.values({"F0Ac", "F0Mn"}) == QStringLiteral("- 0"), text.left(30));
        }
    }

    void fanThatVanishesCannotBeRead()
    {
        SystemTree tree;
        tree.addMonitor("hwmon1", "pci", "name=card fan1_input=1000 fan1_max=3000");
        QCOMPARE(tree.values({"F0Ac", "F0Mn", "F0Mx"}), QStringLiteral("1000 - 3000"));
        QVERIFY(QFile::remove(tree.path("class/hwmon1/fan1_input")));
        QCOMPARE(tree.values({"F0Ac", "F0Mx"}), QStringLiteral("- 3000"));
        QVERIFY(QDir().mkpath(tree.path("class/hwmon1/fan1_input"))); // opens, but cannot be read
        QCOMPARE(tree.values({"F0Ac", "FNum"}), QStringLiteral("- 1"));
    }
};

METERKIN_TEST(HwmonFansTest);
#include "HwmonFansTest.moc"
