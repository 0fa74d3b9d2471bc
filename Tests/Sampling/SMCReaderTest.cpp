#include "Sampling/SMCReader.h"
#include "Sampling/MetricSampler.h"
#include "StandardOutput.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

ScriptedKey speed(std::array<std::uint8_t, 4> bytes)
{
    return {"flt ", bytes, 4};
}

const ScriptedKey Rpm1200 = speed({0, 0, 150, 68});
const ScriptedKey Infinite = speed({0, 0, 128, 127});

} // namespace

Q_DECLARE_METATYPE(FanKeys)
Q_DECLARE_METATYPE(ScriptedKey)

class SMCReaderTest : public QObject {
    Q_OBJECT

private slots:
    void keyCodes_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<quint32>("code");
        QTest::newRow("four") << QByteArray("FNum") << 1179546989U;
        QTest::newRow("short") << QByteArray("F0") << 0x46300000U;
        QTest::newRow("empty") << QByteArray() << 0U;
        QTest::newRow("long") << QByteArray("F10Ac") << 0x46313041U;
        QTest::newRow("UTF-8") << QByteArray("\xc3\xa9"
                                             "AB")
                               << 0xC3A94142U;
    }
    void keyCodes()
    {
        QFETCH(QByteArray, key);
        QTEST(fourCharacterCode(key.toStdString()), "code");
    }

    void decoding_data()
    {
        QTest::addColumn<ScriptedKey>("key");
        QTest::addColumn<QString>("value");
        const auto row = [](const char *name, const ScriptedKey &key, const char *value) {
            QTest::newRow(name) << key << QString::fromLatin1(value);
        };
        row("fpe2", {"fpe2", {0x17, 0x70, 9, 9}}, "1500");
        row("fpe2 quarter", {"fpe2", {0xFF, 0xFF, 9, 9}, 2}, "16383.75");
        row("flt", Rpm1200, "1200");
        row("flt of three", {"flt", {0, 0, 150, 68}}, "1200");
        row("flt negative", speed({0, 0, 150, 196}), "-1200");
        row("flt infinite", Infinite, "absent");
        row("flt not a number", speed({1, 0, 128, 255}), "absent");
        row("ui16", {"ui16", {0x04, 0xB0, 9, 9}}, "1200");
        row("ui8", {"ui8 ", {3, 9, 9, 9}}, "3");
        row("ui8 of three", {"ui8", {200, 9, 9, 9}, 0}, "200");
        row("sp78 negative", {"sp78", {0xFF, 0x80, 9, 9}}, "-0.5");
        row("sp78", {"sp78", {0x28, 0x40, 9, 9}}, "40.25");
        row("unknown", {"si16", {0x00, 0x64, 9, 9}}, "25");
        row("not ASCII", {"\xe9lt ", {0x00, 0x64, 9, 9}}, "25");
        row("nothing", {"", {}, 0}, "0");
    }
    void decoding()
    {
        QFETCH(ScriptedKey, key);
        SMCReader reader = connectedTo({{{"F0Ac", key}}});
        reader.loggedFanType = true;
        const std::optional<double> value = reader.readValue("F0Ac");
        QTEST(value ? QString::number(*value, 'g', 12) : QStringLiteral("absent"), "value");
    }

    void withoutController()
    {
        SMCReader reader = connectedTo(std::nullopt);
        StandardOutput output;
        QVERIFY(!reader.isConnected());
        QVERIFY(!reader.readRaw("FNum"));
        QVERIFY(!reader.readValue("F0Ac"));
        QCOMPARE(output.text(), QByteArray());
        QCOMPARE(m_script->readCount(), 1); // only the attempt to open
    }

    void sample_data()
    {
        QTest::addColumn<FanKeys>("keys");
        QTest::addColumn<qint64>("fanCount");
        QTest::addColumn<QList<FanReading>>("fans");
        QTest::addColumn<QByteArray>("output");
        const ScriptedKey three{"ui8 ", {3, 9, 9, 9}, 1};
        const auto line = [](const char *key, const char *type, const char *bytes) {
            return QByteArray("[Meterkin] Fan key '") + key + "' type='" + type + "' size=4 bytes=["
                + bytes + "]\n";
        };
        const QByteArray current = line("F0Ac", "flt ", "0, 0, 150, 68");

        QTest::newRow("no controller")
            << FanKeys() << qint64(0) << QList<FanReading>() << QByteArray();
        QTest::newRow("no count") << FanKeys{{{"F0Ac", Rpm1200}}} << qint64(0)
                                  << QList<FanReading>() << QByteArray();
        QTest::newRow("one in between is silent")
            << FanKeys{{{"FNum", three}, {"F0Ac", Rpm1200}, {"F2Ac", Rpm1200}}} << qint64(3)
            << QList<FanReading>{{0, 1200.0, {}, {}}, {2, 1200.0, {}, {}}} << current;
        QTest::newRow("two lines, then none")
            << FanKeys{{{"FNum", {"flt ", {2, 0, 0, 0}}},
                        {"F0Ac", Rpm1200},
                        {"F0Mn", {"fpe2", {1, 144, 0, 0}}},
                        {"F0Mx", {"ui16", {1, 144, 0, 0}}},
                        {"F1Ac", Rpm1200},
                        {"F1Mn", Infinite}}}
            << qint64(2) << QList<FanReading>{{0, 1200.0, 100.0, 400.0}, {1, 1200.0, {}, {}}}
            << current + line("F0Mn", "fpe2", "1, 144, 0, 0");
        QTest::newRow("a fan without a number does not end the lines")
            << FanKeys{{{"FNum", three}, {"F0Ac", Infinite}, {"F1Ac", Rpm1200}}} << qint64(3)
            << QList<FanReading>{{1, 1200.0, {}, {}}}
            << line("F0Ac", "flt ", "0, 0, 128, 127") + line("F1Ac", "flt ", "0, 0, 150, 68");
        QTest::newRow("eleventh fan")
            << FanKeys{{{"FNum", {"ui8 ", {11, 0, 0, 0}, 1}}, {"F10A", Rpm1200}}} << qint64(11)
            << QList<FanReading>{{10, 1200.0, {}, {}}} << line("F10Ac", "flt ", "0, 0, 150, 68");
    }
    void sample()
    {
        QFETCH(FanKeys, keys);
        m_script->set(keys);
        MetricSampler sampler(std::make_unique<ScriptedFans>(m_script),
                              std::make_unique<ScriptedPages>(std::make_shared<PagesScript>(), 0),
                              std::make_unique<ScriptedTicks>(std::make_shared<TicksScript>()));
        StandardOutput output;
        const MetricSample sample = sampler.sample();
        const QByteArray text = output.text();
        QTEST(sample.fanCount, "fanCount");
        QTEST(sample.fans, "fans");
        QTEST(text, "output");
    }

    void noFansAreNotAskedFor()
    {
        m_script->set({{{"FNum", {"ui8 ", {}, 1}}}});
        MetricSampler sampler(std::make_unique<ScriptedFans>(m_script),
                              std::make_unique<ScriptedPages>(std::make_shared<PagesScript>(), 0),
                              std::make_unique<ScriptedTicks>(std::make_shared<TicksScript>()));
        const int before = m_script->readCount();
        sampler.sample();
        QCOMPARE(m_script->readCount() - before, 2);
    }

private:
    SMCReader connectedTo(const FanKeys &keys)
    {
        m_script = std::make_shared<FansScript>();
        m_script->set(keys);
        return SMCReader(std::make_unique<ScriptedFans>(m_script));
    }

    std::shared_ptr<FansScript> m_script = std::make_shared<FansScript>();
};

METERKIN_TEST(SMCReaderTest);

#include "SMCReaderTest.moc"
