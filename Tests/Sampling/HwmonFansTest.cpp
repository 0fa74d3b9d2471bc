#include "Platform/Linux/HwmonFans.h"
#include "Sampling/SMCReader.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A made-up /sys: monitors are links into the devices, as in a true one.
class SystemTree {
public:
    std::string monitors() const { return path(QStringLiteral("class")).toStdString(); }

    void addMonitor(const QString &number, const QString &device, const QString &name)
    {
        const QString folder = QStringLiteral("devices/%1/hwmon/%2").arg(device, number);
        QDir().mkpath(path(folder));
        QDir().mkpath(path(QStringLiteral("class")));
        QFile::link(path(folder), path(QStringLiteral("class/") + number));
        QFile::link(path(QStringLiteral("devices/") + device),
                    path(folder + QStringLiteral("/device")));
        if (!name.isEmpty())
            write(number, "name", name.toLatin1() + '\n');
    }
    void write(const QString &number, const char *file, const QByteArray &text)
    {
        QFile out(path(QStringLiteral("class/%1/%2").arg(number, QString::fromLatin1(file))));
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(text);
    }
    void remove(const QString &number, const char *file)
    {
        QVERIFY(QFile::remove(
            path(QStringLiteral("class/%1/%2").arg(number, QString::fromLatin1(file)))));
    }

private:
    QString path(const QString &relative) const { return m_folder.filePath(relative); }

    QTemporaryDir m_folder;
};

std::unique_ptr<SMCReader> reader(const std::string &folder)
{
    auto result = std::make_unique<SMCReader>(std::make_unique<HwmonFans>(folder));
    result->loggedFanType = true;
    return result;
}

/// The values of the keys, "-" for one that cannot be read.
QString values(SMCReader &reader, const QStringList &keys)
{
    QStringList list;
    for (const QString &key : keys) {
        const std::optional<double> value = reader.readValue(key.toStdString());
        list += value ? QString::number(*value, 'f', 0) : QStringLiteral("-");
    }
    return list.join(u' ');
}

const QString One = QStringLiteral("hwmon1");
const QStringList FirstFan{QStringLiteral("F0Ac"), QStringLiteral("F0Mn"), QStringLiteral("F0Mx")};

} // namespace

class HwmonFansTest : public QObject {
    Q_OBJECT

private slots:
    void withoutMonitors()
    {
        QTemporaryDir folder;
        QVERIFY(!reader(folder.filePath(QStringLiteral("none")).toStdString())->isConnected());
        const auto empty = reader(folder.path().toStdString());
        QVERIFY(empty->isConnected());
        QCOMPARE(empty->readValue("FNum").value_or(-1), 0.0);
        QVERIFY(!empty->readValue("F0Ac"));
    }

    void orderIsThatOfTheMachine_data()
    {
        QTest::addColumn<QStringList>("numbers");
        QTest::newRow("one boot") << QStringList{QStringLiteral("hwmon0"), QStringLiteral("hwmon1"),
                                                 QStringLiteral("hwmon2"),
                                                 QStringLiteral("hwmon3")};
        QTest::newRow("next boot")
            << QStringList{QStringLiteral("hwmon10"), QStringLiteral("hwmon9"),
                           QStringLiteral("hwmon1"), QStringLiteral("hwmon0")};
    }
    void orderIsThatOfTheMachine()
    {
        QFETCH(QStringList, numbers);
        SystemTree tree;
        tree.addMonitor(numbers[0], QStringLiteral("pci/b"), QStringLiteral("card"));
        tree.write(numbers[0], "fan1_input", "2\n");
        tree.addMonitor(numbers[1], QStringLiteral("pci/a"), QStringLiteral("card"));
        tree.write(numbers[1], "fan1_input", "1\n");
        tree.addMonitor(numbers[2], QStringLiteral("isa"), QStringLiteral("board"));
        for (const char *file :
             {"fan10_input", "fan2_input", "fan3_label", "fanx_input", "temp1_input"})
            tree.write(numbers[2], file, file[3] == '1' ? "10\n" : "5\n");
        // Driver of the older kind: everything is with the device.
        tree.addMonitor(numbers[3], QStringLiteral("platform"), QString());
        tree.write(numbers[3], "device/name", "zz\n");
        tree.write(numbers[3], "device/fan1_input", "77\n");
        const auto fans = reader(tree.monitors());
        QCOMPARE(fans->readValue("FNum").value_or(-1), 5.0);
        const QStringList keys{QStringLiteral("F0Ac"), QStringLiteral("F1Ac"),
                               QStringLiteral("F2Ac"), QStringLiteral("F3Ac"),
                               QStringLiteral("F4Ac"), QStringLiteral("F5Ac")};
        QCOMPARE(values(*fans, keys), QStringLiteral("5 10 1 2 77 -"));
    }

    void text_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("value");
        const auto row = [](const QByteArray &text, const char *value) {
            QTest::newRow(('\'' + text.left(20).toPercentEncoding() + '\'').constData())
                << text << QString::fromLatin1(value);
        };
        row("1234\n", "1234");
        row("0\n", "0");
        row("65535", "65535");
        row("", "-");
        row("\n", "-");
        row("-1\n", "-");
        row("fast\n", "-");
        row("1200 rpm\n", "-");
        row("12.5\n", "-");
        row("99999999999999999999\n", "-");
        row("1200\n" + QByteArray(5000, '0'), "-");
        row("7" + QByteArray(200, ' '), "-");
    }
    void text()
    {
        QFETCH(QByteArray, text);
        SystemTree tree;
        tree.addMonitor(One, QStringLiteral("pci"), QStringLiteral("card"));
        for (const char *file : {"fan1_input", "fan1_min", "fan1_max"})
            tree.write(One, file, text);
        const auto fans = reader(tree.monitors());
        QFETCH(QString, value);
        QCOMPARE(values(*fans, FirstFan), QStringLiteral("%1 %1 %1").arg(value));
    }

    void fanThatVanishesCannotBeRead()
    {
        SystemTree tree;
        tree.addMonitor(One, QStringLiteral("pci"), QStringLiteral("card"));
        tree.write(One, "fan1_input", "1000\n");
        tree.write(One, "fan1_max", "3000\n");
        const auto fans = reader(tree.monitors());
        QCOMPARE(values(*fans, FirstFan), QStringLiteral("1000 - 3000"));
        tree.remove(One, "fan1_input");
        QCOMPARE(values(*fans, FirstFan), QStringLiteral("- - 3000"));
        QVERIFY(QDir().mkpath(QString::fromStdString(tree.monitors() + "/hwmon1/fan1_input")));
        QCOMPARE(values(*fans, FirstFan), QStringLiteral("- - 3000"));
        QCOMPARE(fans->readValue("FNum").value_or(-1), 1.0);
    }

    void moreFansThanKeys()
    {
        SystemTree tree;
        tree.addMonitor(One, QStringLiteral("pci"), QStringLiteral("card"));
        for (int i = 1; i <= 300; ++i)
            tree.write(One, ("fan" + QByteArray::number(i) + "_input").constData(),
                       QByteArray::number(i));
        const auto fans = reader(tree.monitors());
        QCOMPARE(fans->readValue("FNum").value_or(-1), 255.0);
        const QStringList keys{QStringLiteral("F9Ac"), QStringLiteral("F10Ac"),
                               QStringLiteral("F0Xx"), QStringLiteral("TC0P"),
                               QStringLiteral("F0")};
        QCOMPARE(values(*fans, keys), QStringLiteral("10 - - - -"));
    }
};

METERKIN_TEST(HwmonFansTest);

#include "HwmonFansTest.moc"
