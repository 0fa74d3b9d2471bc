#include "Sampling/SMCReader.h"
#include "Sampling/FanSampler.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <cstdio>

#include <unistd.h>

namespace {

const ScriptedKey Three{"ui8 ", {3, 9, 9, 9}, 1};
const ScriptedKey Rpm1200{"flt ", {0, 0, 150, 68}};
const ScriptedKey Infinite{"flt ", {0, 0, 128, 127}};

/// What the action writes to the standard output of the process; the action has to flush it.
QByteArray outputOf(const std::function<void()> &action)
{
    std::fflush(stdout);
    QTemporaryFile file;
    file.open();
    const int original = dup(STDOUT_FILENO);
    dup2(file.handle(), STDOUT_FILENO);
    action();
    dup2(original, STDOUT_FILENO);
    close(original);
    file.seek(0);
    return file.readAll();
}

QByteArray text(const std::optional<double> &value)
{
    return value ? QByteArray::number(*value, 'g', 12) : QByteArray("-");
}

} // namespace

class SMCReaderTest : public QObject {
    Q_OBJECT

private slots:
    void keyCodes()
    {
        QCOMPARE(fourCharacterCode("FNum"), 1179546989U);
        QCOMPARE(fourCharacterCode("F0"), 0x46300000U);
        QCOMPARE(fourCharacterCode("F10Ac"), 0x46313041U);
        QCOMPARE(fourCharacterCode("\xc3\xa9\x41\x42"), 0xC3A94142U);
    }

    void decoding()
    {
        const std::pair<ScriptedKey, QByteArray> cases[]{
            {{"fpe2", {0xFF, 0xFF, 9, 9}, 2}, "16383.75"},
            {Rpm1200, "1200"},
            {{"flt", {0, 0, 150, 196}}, "-1200"},
            {Infinite, "-"},
            {{"flt ", {1, 0, 128, 255}}, "-"}, // not a number
            {{"ui16", {0x04, 0xB0, 9, 9}}, "1200"},
            {Three, "3"},
            {{"ui8", {200, 9, 9, 9}, 0}, "200"},
            {{"sp78", {0x28, 0x40, 9, 9}}, "40.25"},
            {{"sp78", {0xFF, 0x80, 9, 9}}, "-0.5"},
            {{"si16", {0x00, 0x64, 9, 9}}, "25"},
            {{"\xe9lt ", {0x00, 0x64, 9, 9}}, "25"},
            {{"", {}, 0}, "0"},
        };
        for (const auto &[key, value] : cases) {
            const auto script = std::make_shared<FansScript>();
            script->set({{{"F0Ac", key}}});
            SMCReader reader(std::make_unique<ScriptedFans>(script));
            reader.loggedFanType = true;
            QCOMPARE(text(reader.readValue("F0Ac")), value);
        }
    }

    void sample()
    {
        const QByteArray first = "'F0Ac' type='flt ' size=4 bytes=[0, 0, 150, 68";
        const QByteArray second = "'F1Ac' type='flt ' size=4 bytes=[0, 0, 150, 68";
        const struct {
            FanKeys keys;
            QByteArray fans; ///< count, then number:speed,minimum,maximum of each
            QByteArrayList lines;
        } cases[]{
            {{}, "0", {}},
            {{{{"F0Ac", Rpm1200}}}, "0", {}},
            {{{{"FNum", Three}, {"F0Ac", Rpm1200}, {"F2Ac", Rpm1200}}},
             "3 0:1200,-,- 2:1200,-,-",
             {first}},
            {{{{"FNum", {"flt ", {2}}},
               {"F0Ac", Rpm1200},
               {"F0Mn", {"fpe2", {1, 144}}},
               {"F0Mx", {"ui16", {1, 144}}},
               {"F1Ac", Rpm1200},
               {"F1Mn", Infinite}}},
             "2 0:1200,100,400 1:1200,-,-",
             {first, "'F0Mn' type='fpe2' size=4 bytes=[1, 144, 0, 0"}},
            {{{{"FNum", Three}, {"F0Ac", Infinite}, {"F1Ac", Rpm1200}}},
             "3 1:1200,-,-",
             {"'F0Ac' type='flt ' size=4 bytes=[0, 0, 128, 127", second}},
        };
        for (const auto &[keys, fans, lines] : cases) {
            const auto script = std::make_shared<FansScript>();
            script->set(keys);
            FanSampler sampler(std::make_unique<ScriptedFans>(script));
            QByteArray output;
            for (const QByteArray &line : lines)
                output += "[Meterkin] Fan key " + line + "]\n";
            QCOMPARE(outputOf([&] { sampler.refresh(); }), output);
            const FanSample sample = sampler.latest().value_or(FanSample{-1, {}});
            QByteArray described = QByteArray::number(sample.count);
            for (const auto &[index, rpm, min, max] : sample.fans)
                described += ' ' + QByteArray::number(qint64(index)) + ':' + text(rpm) + ','
                    + text(min) + ',' + text(max);
            QCOMPARE(described, fans);
        }
    }
};

METERKIN_TEST(SMCReaderTest);
#include "SMCReaderTest.moc"
