#include "Platform/macOS/Sensors/FanSource.h"
#include "Platform/macOS/FourCharacterCode.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <cstdio>
#include <map>

#include <unistd.h>

namespace {

struct Value {
    std::string type;
    std::array<std::uint8_t, 4> bytes{};
    std::uint32_t size = 4;
};
const Value Rpm1200{"flt ", {0, 0, 150, 68}};
const Value Infinite{"flt ", {0, 0, 128, 127}};

using Keys = std::map<std::string, Value>;

Keys keys; ///< of the controller; it refuses to connect when it has none

struct Controller : FanControllerConnection {
    bool open() override { return !keys.empty(); }
    bool call(const ControllerRecord &request, ControllerRecord &reply) override
    {
        const auto found = keys.find(fourCharacterText(request.key));
        if (found == keys.end())
            return false;
        const auto &[type, bytes, size] = found->second;
        if (request.command == ReadKeyInfo) {
            reply.dataType = fourCharacterCode(type);
            reply.dataSize = size;
            return true;
        }
        std::ranges::copy(bytes, reply.data.begin());
        return request.command == ReadKeyBytes && request.dataSize == size && request.dataType == 0;
    }
    void close() override { }
};

} // namespace

class FanSourceTest : public QObject {
    Q_OBJECT

private slots:
    void values()
    {
        QCOMPARE(fourCharacterCode("FNum"), 1179546989U);
        QCOMPARE(fourCharacterCode("F10Ac"), 0x46313041U);
        QCOMPARE(fourCharacterCode("\xc3\xa9"), 0xC3A90000U);
        const std::pair<Value, std::optional<double>> cases[]{
            {{"fpe2", {0xFF, 0xFF, 9, 9}, 2}, 16383.75},
            {Rpm1200, 1200.0},
            {{"flt", {0, 0, 150, 196}}, -1200.0},
            {Infinite, {}},
            {{"flt ", {1, 0, 128, 255}}, {}}, // not a number
            {{"ui16", {0x04, 0xB0, 9, 9}}, 1200.0},
            {{"ui8 ", {3, 9, 9, 9}, 1}, 3.0},
            {{"ui8", {200, 9, 9, 9}, 0}, 200.0},
            {{"sp78", {0x28, 0x40, 9, 9}}, 40.25},
            {{"sp78", {0xFF, 0x80, 9, 9}}, -0.5},
            {{"si16", {0x00, 0x64, 9, 9}}, 25.0},
            {{"\xe9lt ", {0x00, 0x64, 9, 9}}, 25.0},
            {{"", {}, 0}, 0.0},
        };
        for (const auto &[value, decoded] : cases) {
            keys = {{"F0Ac", value}};
            SMCReader reader(std::make_unique<Controller>());
            reader.loggedFanType = true;
            QVERIFY2(reader.readValue("F0Ac") == decoded, value.type.c_str());
        }
    }

    void fans()
    {
        const Value three{"flt ", {3, 9, 9, 9}, 1};
        const QByteArray bytes("' type='flt ' size=4 bytes=[0, 0, 150, 68]");
        const std::tuple<Keys, FanSample, QByteArrayList> cases[]{
            {{}, {}, {}},
            {{{"F0Ac", Rpm1200}}, {}, {}},
            {{{"FNum", three}, {"F0Ac", Rpm1200}, {"F0Mx", Infinite}, {"F2Ac", Rpm1200}},
             {3, {{0, 1200.0, {}, {}}, {2, 1200.0, {}, {}}}},
             {"F0Ac" + bytes}},
            {{{"FNum", three}, {"F0Ac", Infinite}, {"F1Ac", Rpm1200}, {"F1Mn", {"ui8", {9}}}},
             {3, {{1, 1200.0, 9.0, {}}}},
             {"F0Ac' type='flt ' size=4 bytes=[0, 0, 128, 127]", "F1Ac" + bytes,
              "F1Mn' type='ui8' size=4 bytes=[9, 0, 0, 0]"}},
        };
        for (const auto &[held, expected, lines] : cases) {
            keys = held;
            MacFanSource source(std::make_unique<Controller>());
            QTemporaryFile output;
            std::fflush(stdout);
            const int original = dup(STDOUT_FILENO);
            QVERIFY(output.open() && dup2(output.handle(), STDOUT_FILENO) >= 0);
            FanSample sample;
            source.read(sample); // flushes
            dup2(original, STDOUT_FILENO);
            close(original);
            QVERIFY(sample == expected);
            output.seek(0);
            for (const QByteArray &line : lines)
                QCOMPARE(output.readLine(), "[Meterkin] Fan key '" + line + '\n');
            QVERIFY(output.atEnd());
        }
    }
};

METERKIN_TEST(FanSourceTest);
#include "FanSourceTest.moc"
