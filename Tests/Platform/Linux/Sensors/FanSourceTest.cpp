#include "Platform/Linux/Sensors/FanSource.h"
#include "Support/Files.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

/// Over a made-up /sys: monitors are links into the devices, as in the real one.
class FanSourceTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder.emplace();
        m_source.emplace(path("class").toStdString(), [this] { return m_now; });
    }

    void monitorsAppearAndVanish()
    {
        QCOMPARE(fans(), "0"); // the kernel's folder for monitors is missing
        addMonitor("hwmon1", "pci", "name=card fan1_input=1");
        QCOMPARE(fans(), "0"); // not looked for at every reading
        m_now += std::chrono::seconds(5);
        QCOMPARE(fans(), "1 1");
        addMonitor("hwmon2", "isa", "name=board fan1_input=5");
        QVERIFY(QFile::remove(path("class/hwmon1")));
        m_now += std::chrono::seconds(5);
        QCOMPARE(fans(), "1 5");
        addMonitor("hwmon7", "pci", "name=card fan1_input=1");
        QVERIFY(write(path("class/hwmon2/fan2_input"), "6\n"));
        m_now += std::chrono::seconds(5);
        QCOMPARE(fans(), "3 5 6 1");
    }

    void orderDoesNotDependOnNumbers()
    {
        // As numbered at one boot and at the next. An old driver keeps its files with the device.
        for (const QByteArray boot :
             {"hwmon0 hwmon1 hwmon2 hwmon3", "hwmon10 hwmon9 hwmon1 hwmon0"}) {
            init();
            const QByteArrayList number = boot.split(' ');
            addMonitor(number[0], "pci/b", "name=card fan1_input=2");
            addMonitor(number[1], "pci/a", "name=card fan1_input=1");
            addMonitor(number[2], "isa", "name=board fan10_input=10 fan2_input=5 fanx_input=7");
            addMonitor(number[3], "old", "device/name=old device/fan1_input=77");
            QCOMPARE(fans(), "5 5 10 1 2 77");
        }
    }

    void texts()
    {
        addMonitor("hwmon1", "pci",
                   "name=card fan1_input=1234 fan1_min=0 fan1_max=65535 "
                   "fan1_label=Case fan2_input=1 fan2_max=9");
        const QList<FanReading> read{{0, 1234.0, 0.0, 65535.0, QStringLiteral("Case")},
                                     {1, 1.0, {}, 9.0}};
        FanSample sample{7, {{0, 5.0, {}, {}}}}; // what it held before is gone
        m_source->read(sample);
        QVERIFY(sample == (FanSample{2, read}));
        // Warns once, for all of them.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not a number")));
        QTest::failOnWarning(QRegularExpression(QStringLiteral("sampling")));
        for (const QByteArray &text :
             {QByteArray(), QByteArray("-1\n"), QByteArray("1200 rpm\n"), QByteArray("12.5\n"),
              QByteArray("99999999999999999999\n"), "1200\n" + QByteArray(5000, '0')}) {
            QVERIFY(write(path("class/hwmon1/fan1_input"), text));
            m_now += std::chrono::seconds(5);
            QVERIFY2(fans() == "2 1", text.left(30));
        }
    }

private:
    QString path(const QByteArray &relative) const
    {
        return m_folder->filePath(QString::fromLatin1(relative));
    }
    /// `files` as "name=text" with spaces in between.
    void addMonitor(const QByteArray &number, const QByteArray &device, const QByteArray &files)
    {
        const QByteArray folder = "devices/" + device + "/hwmon/" + number;
        QVERIFY(QDir().mkpath(path(folder)) && QDir().mkpath(path("class")));
        QFile::link(path(folder), path("class/" + number));
        QFile::link(path("devices/" + device), path(folder + "/device"));
        for (const QByteArray &file : files.split(' '))
            QVERIFY(write(path(folder + '/' + file.split('=')[0]), file.split('=')[1] + '\n'));
    }
    /// The number of fans, and the speeds of those that can be read.
    QByteArray fans()
    {
        FanSample sample;
        m_source->read(sample);
        QByteArray text = QByteArray::number(sample.count);
        for (const FanReading &fan : sample.fans)
            text += ' ' + QByteArray::number(fan.rpm);
        return text;
    }

    std::optional<QTemporaryDir> m_folder;
    std::chrono::steady_clock::time_point m_now;
    std::optional<LinuxFanSource> m_source;
};

METERKIN_TEST(FanSourceTest);
#include "FanSourceTest.moc"
