#include "Platform/Linux/NotifierItem.h"
#include "Support/PrivateBus.h"
#include "Support/ScriptedWatcher.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#include <sys/prctl.h>

#include <algorithm>
#include <limits>

namespace {

using Answer = ScriptedWatcher::Answer;

const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

TrayContent content(const QString &text, const QColor &color)
{
    return {{text, color, QStringLiteral("100%")},
            QStringLiteral("meterkin: ") + text,
            QStringLiteral("CPU <") + text};
}

/// A program with its item on a bus of its own; it stays attached wherever there is a panel.
struct Program {
    SessionBus bus;
    TitlePainter painter;
    NotifierItem item{bus, painter};

    Program()
    {
        item.setContent(content(QStringLiteral("42%"), QColor(0x12, 0x34, 0x56)));
        QObject::connect(&item, &TrayHost::availabilityChanged, &item, [this] {
            if (item.isAvailable())
                item.attach();
            else
                item.detach();
        });
    }
};

/// Makes the panel, which is this process, look like another program.
void setProcessName(const QByteArray &name)
{
    prctl(PR_SET_NAME, name.constData(), 0, 0, 0);
}

} // namespace

class NotifierItemTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_daemon = std::make_unique<PrivateBus>();
        QVERIFY(m_daemon->start());
        setProcessName("lxqt-panel");
    }

    void cleanup() { m_daemon.reset(); }

    void knowsHosts_data()
    {
        QTest::addColumn<QString>("process");
        QTest::addColumn<NotifierHostKind>("kind");
        QTest::newRow("waybar") << QStringLiteral("waybar") << NotifierHostKind::Wide;
        QTest::newRow("wrapped") << QStringLiteral(".waybar-wrapped") << NotifierHostKind::Wide;
        QTest::newRow("gnome") << QStringLiteral("gnome-shell") << NotifierHostKind::Label;
        QTest::newRow("cut name") << QStringLiteral("ayatana-indicat") << NotifierHostKind::Label;
        QTest::newRow("plasma") << QStringLiteral("kded5") << NotifierHostKind::Square;
        QTest::newRow("no name") << QString() << NotifierHostKind::Square;
    }

    void knowsHosts()
    {
        QFETCH(QString, process);
        QTEST(NotifierWatcher::kindOfProcess(process), "kind");
    }

    void looksRight_data()
    {
        QTest::addColumn<QByteArray>("host");
        QTest::addColumn<QList<int>>("heights");
        QTest::addColumn<bool>("wide");
        const QList<int> squares{22, 24, 32, 48, 64};
        QTest::newRow("wide") << QByteArray("waybar") << QList<int>{48} << true;
        QTest::newRow("label") << QByteArray("gnome-shell") << squares << false;
        QTest::newRow("square") << QByteArray("xfce4-panel") << squares << false;
    }

    void looksRight()
    {
        QFETCH(QByteArray, host);
        QFETCH(bool, wide);
        setProcessName(host);
        ScriptedWatcher watcher(m_daemon->connectClient());
        Program program;
        QTRY_COMPARE(watcher.items().size(), 1);

        for (const auto &[name, value] : {
                 std::pair{"Id", QVariant(QStringLiteral("meterkin"))},
                 std::pair{"Category", QVariant(QStringLiteral("Hardware"))},
                 std::pair{"Status", QVariant(QStringLiteral("Active"))},
                 std::pair{"IconName", QVariant(QStringLiteral(""))},
                 std::pair{"ItemIsMenu", QVariant(false)},
                 std::pair{"XAyatanaLabel", QVariant(QStringLiteral("42%"))},
                 std::pair{"XAyatanaLabelGuide", QVariant(QStringLiteral("100%"))},
                 std::pair{"IconAccessibleDesc", QVariant(QStringLiteral("meterkin: 42%"))},
             })
            QCOMPARE(watcher.property(QLatin1StringView(name)), value);
        const auto toolTip =
            qdbus_cast<NotifierToolTip>(watcher.property(QStringLiteral("ToolTip")));
        QCOMPARE(toolTip.title, QStringLiteral("meterkin"));
        QCOMPARE(toolTip.text, QStringLiteral("CPU &lt;42%"));

        const auto pixmaps =
            qdbus_cast<QList<NotifierPixmap>>(watcher.property(QStringLiteral("IconPixmap")));
        QList<int> heights;
        for (const NotifierPixmap &pixmap : pixmaps) {
            heights.append(pixmap.height);
            QCOMPARE(pixmap.width > pixmap.height, wide);
            QCOMPARE(pixmap.data.size(), pixmap.width * pixmap.height * 4);
            int painted = 0;
            for (qsizetype at = 0; at < pixmap.data.size(); at += 4) {
                if (pixmap.data.at(at) == '\0')
                    continue;
                // Also the half covered pixels have the full colour: alpha is apart.
                if (pixmap.data.at(at) == '\xff')
                    QCOMPARE(pixmap.data.mid(at, 4), QByteArray("\xff\x12\x34\x56"));
                ++painted;
            }
            QVERIFY(painted > 0);
        }
        QTEST(heights, "heights");
    }

    void tellsOnlyChanges_data()
    {
        QTest::addColumn<QByteArray>("host");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QStringList>("told");
        const QColor same(0x12, 0x34, 0x56);
        const QStringList icon{QStringLiteral("NewIcon")};
        const QStringList label{QStringLiteral("XAyatanaNewLabel")};
        for (const QByteArray host : {"waybar", "lxqt-panel"}) {
            QTest::addRow("%s, nothing", host.constData())
                << host << QStringLiteral("42%") << same << QStringList();
            QTest::addRow("%s, text", host.constData())
                << host << QStringLiteral("43%") << same << icon;
            QTest::addRow("%s, colour", host.constData())
                << host << QStringLiteral("42%") << QColor(Qt::red) << icon;
        }
        const QByteArray gnome("gnome-shell");
        QTest::newRow("label, nothing") << gnome << QStringLiteral("42%") << same << QStringList();
        QTest::newRow("label, text") << gnome << QStringLiteral("43%") << same << label;
        QTest::newRow("label, colour") << gnome << QStringLiteral("42%") << QColor(Qt::red) << icon;
        QTest::newRow("label, both")
            << gnome << QStringLiteral("43%") << QColor(Qt::red) << icon + label;
    }

    void tellsOnlyChanges()
    {
        QFETCH(QByteArray, host);
        QFETCH(QString, text);
        QFETCH(QColor, color);
        setProcessName(host);
        ScriptedWatcher watcher(m_daemon->connectClient());
        Program program;
        QTRY_COMPARE(watcher.items().size(), 1);
        const QVariant before = watcher.property(QStringLiteral("IconPixmap"));
        watcher.takeSignals();

        program.item.setContent(content(text, color));
        QTEST(watcher.takeSignals(), "told");
        QCOMPARE(watcher.property(QStringLiteral("XAyatanaLabel")).toString(), text);
        const auto pixels = [](const QVariant &value) {
            return qdbus_cast<QList<NotifierPixmap>>(value).constFirst().data;
        };
        QFETCH(QStringList, told);
        QCOMPARE(pixels(watcher.property(QStringLiteral("IconPixmap"))) != pixels(before),
                 told.contains(u"NewIcon"));
    }

    void tellsAToolTipOnceAWhile()
    {
        ScriptedWatcher watcher(m_daemon->connectClient());
        Program program;
        QTRY_COMPARE(watcher.items().size(), 1);
        QStringList told;
        const auto tell = [&](const QString &toolTip) {
            TrayContent changed = content(QStringLiteral("42%"), QColor(0x12, 0x34, 0x56));
            changed.toolTip = toolTip;
            program.item.setContent(changed);
            told += watcher.takeSignals();
        };
        tell(QStringLiteral("a"));
        tell(QStringLiteral("b"));
        QTRY_VERIFY_WITH_TIMEOUT(!(told += watcher.takeSignals()).isEmpty(), 20'000);
        QCOMPARE(told, QStringList{QStringLiteral("NewToolTip")});
    }

    void findsItsPanel_data()
    {
        QTest::addColumn<Answer>("toProperty");
        QTest::addColumn<Answer>("toRegister");
        QTest::addColumn<bool>("available");
        QTest::newRow("working") << Answer::Good << Answer::Good << true;
        QTest::newRow("says no") << Answer::Error << Answer::Good << false;
        QTest::newRow("talks rubbish") << Answer::Wrong << Answer::Good << false;
        QTest::newRow("hangs") << Answer::None << Answer::Good << false;
        QTest::newRow("refuses") << Answer::Good << Answer::Error << false;
        QTest::newRow("hangs at the item") << Answer::Good << Answer::None << true;
    }

    void findsItsPanel()
    {
        QFETCH(Answer, toProperty);
        QFETCH(Answer, toRegister);
        Program program;
        QSignalSpy changes(&program.item, &TrayHost::availabilityChanged);
        ScriptedWatcher good(m_daemon->connectClient());
        QTRY_COMPARE(good.items().size(), 1);

        // Another panel takes the first one's place, then comes the first one again.
        auto second =
            std::make_unique<ScriptedWatcher>(m_daemon->connectClient(), toProperty, toRegister);
        second->takeOver();
        QTRY_COMPARE(good.items().size(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(second->registrations(),
                                  toProperty != Answer::Good        ? 0
                                      : toRegister == Answer::Error ? 3
                                                                    : 1,
                                  10'000);
        QTRY_COMPARE(program.item.isAvailable(),
                     QTest::currentDataTag() != QByteArray("refuses")
                         && toProperty == Answer::Good);
        good.takeOver();
        QTRY_COMPARE(good.items().size(), 1);
        QCOMPARE(good.mostNames(), 1);
        QVERIFY(program.item.isAvailable());

        second.reset();
        good.setHost(false);
        QTRY_COMPARE(good.items().size(), 0);
        good.setHost(true);
        QTRY_COMPARE(good.items().size(), 1);
        QCOMPARE(good.mostNames(), 1);
    }

    void comesBackWithTheBus()
    {
        Program program;
        for (int round = 0; round < 2; ++round) {
            ScriptedWatcher watcher(m_daemon->connectClient());
            QTRY_COMPARE_WITH_TIMEOUT(watcher.items().size(), 1, 20'000);
            QCOMPARE(watcher.mostNames(), 1);
            m_daemon->stop();
            QTRY_VERIFY(!program.item.isAvailable());
            QVERIFY(m_daemon->start());
        }
    }

    void leavesForGood()
    {
        ScriptedWatcher watcher(m_daemon->connectClient());
        Program program;
        QTRY_COMPARE(watcher.items().size(), 1);
        const QStringList first = watcher.items();
        program.item.detach();
        QTRY_VERIFY(watcher.items().isEmpty());
        program.item.setContent(content(QStringLiteral("43%"), Qt::red));
        program.item.attach();
        QTRY_COMPARE(watcher.items().size(), 1);
        QVERIFY(watcher.items() != first);
        QCOMPARE(watcher.property(QStringLiteral("XAyatanaLabel")).toString(),
                 QStringLiteral("43%"));
    }

    void believesPlaces_data()
    {
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("y");
        QTest::addColumn<bool>("believed");
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QTest::newRow("on the screen") << 100 << 50 << true;
        QTest::newRow("its last pixel") << screen.right() << screen.bottom() << true;
        QTest::newRow("beyond it") << screen.right() + 100 << 5 << false;
        QTest::newRow("before it") << -1 << 5 << false;
        QTest::newRow("unknown") << 0 << 0 << false;
        QTest::newRow("huge") << std::numeric_limits<int>::max() << std::numeric_limits<int>::min()
                              << false;
    }

    void believesPlaces()
    {
        QFETCH(int, x);
        QFETCH(int, y);
        ScriptedWatcher watcher(m_daemon->connectClient());
        Program program;
        QTRY_COMPARE(watcher.items().size(), 1);
        QSignalSpy clicked(&program.item, &TrayHost::clicked);
        watcher.call(itemPath, itemInterface, QStringLiteral("Activate"), {x, y});
        QTRY_COMPARE(clicked.size(), 1);
        const QRect geometry = program.item.geometry();
        QTEST(!geometry.isEmpty(), "believed");
        QCOMPARE(geometry.contains(x, y), !geometry.isEmpty());
        QSignalSpy menu(&program.item, &TrayHost::menuRequested);
        watcher.call(itemPath, itemInterface, QStringLiteral("ContextMenu"), {x, y});
        QTRY_COMPARE(menu.size(), 1);
    }

    void offersTheMenu_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<MenuAction>("action");
        QTest::newRow("dashboard") << QStringLiteral("Open Dashboard") << MenuAction::OpenDashboard;
        QTest::newRow("settings") << QStringLiteral("Open Settings") << MenuAction::OpenSettings;
        QTest::newRow("quit") << QStringLiteral("Quit meterkin") << MenuAction::Quit;
    }

    void offersTheMenu()
    {
        QFETCH(QString, label);
        ScriptedWatcher watcher(m_daemon->connectClient());
        Program program;
        QTRY_COMPARE(watcher.items().size(), 1);
        const QString path =
            watcher.property(QStringLiteral("Menu")).value<QDBusObjectPath>().path();
        const QDBusMessage reply = watcher.call(path, menuInterface, QStringLiteral("GetLayout"),
                                                {0, -1, QStringList{QStringLiteral("label")}});
        QCOMPARE(reply.signature(), QStringLiteral("u(ia{sv}av)"));
        const auto layout = qdbus_cast<MenuLayout>(reply.arguments().value(1));
        const auto entry = std::ranges::find_if(layout.children, [&](const MenuLayout &child) {
            return child.properties.value(QStringLiteral("label")) == label;
        });
        QVERIFY(entry != layout.children.end());

        QSignalSpy chosen(&program.item, &TrayHost::menuChosen);
        const QVariant data = QVariant::fromValue(QDBusVariant(0));
        const QDBusMessage event = watcher.call(path, menuInterface, QStringLiteral("Event"),
                                                {entry->id, QStringLiteral("clicked"), data, 0u});
        QCOMPARE(event.type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(chosen.size(), 1);
        QTEST(chosen.first().first().value<MenuAction>(), "action");
    }

    void endures_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("interface");
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        const auto row = [](const char *name, const QString &path, const QString &interface,
                            const char *method, const QVariantList &arguments) {
            QTest::newRow(name) << path << interface << QString::fromLatin1(method) << arguments;
        };
        const QString menuPath = itemPath + QStringLiteral("/Menu");
        const QVariant number = QVariant::fromValue(QDBusVariant(7));
        constexpr int huge = std::numeric_limits<int>::max();
        row("no numbers", itemPath, itemInterface, "Activate", {});
        row("text for numbers", itemPath, itemInterface, "Activate",
            {QStringLiteral("1"), QStringLiteral("2")});
        row("unknown method", itemPath, itemInterface, "deleteLater", {});
        row("our own signal", itemPath, itemInterface, "activated", {1, 2});
        row("number for a token", itemPath, itemInterface, "ProvideXdgActivationToken", {1});
        row("unknown property", itemPath, propertiesInterface, "Get",
            {itemInterface, QStringLiteral("NoSuchProperty")});
        row("constant property", itemPath, propertiesInterface, "Set",
            {itemInterface, QStringLiteral("Status"), number});
        row("unknown parent", menuPath, menuInterface, "GetLayout", {huge, -1, QStringList()});
        row("negative parent", menuPath, menuInterface, "GetLayout", {-huge, huge, QStringList()});
        row("property of nothing", menuPath, menuInterface, "GetProperty",
            {huge, QStringLiteral("label")});
        row("no such property", menuPath, menuInterface, "GetProperty",
            {1, QStringLiteral("icon-data")});
        row("event for nothing", menuPath, menuInterface, "Event",
            {-1, QStringLiteral("clicked"), number, 0u});
        row("event without data", menuPath, menuInterface, "Event", {1, QStringLiteral("clicked")});
        row("show nothing", menuPath, menuInterface, "AboutToShow", {huge});
        row("texts for ids", menuPath, menuInterface, "AboutToShowGroup",
            {QStringList{QStringLiteral("x")}});
        row("events for nothing", menuPath, menuInterface, "EventGroup",
            {QVariant::fromValue(
                QList<MenuEvent>{{huge, QStringLiteral("clicked"), QDBusVariant(7), 0}})});
    }

    void endures()
    {
        QFETCH(QString, path);
        QFETCH(QString, interface);
        QFETCH(QString, method);
        QFETCH(QVariantList, arguments);
        ScriptedWatcher watcher(m_daemon->connectClient());
        Program program;
        QTRY_COMPARE(watcher.items().size(), 1);
        QSignalSpy clicked(&program.item, &TrayHost::clicked);
        QCOMPARE(watcher.call(path, interface, method, arguments).type(),
                 QDBusMessage::ErrorMessage);
        QCOMPARE(watcher.property(QStringLiteral("Id")).toString(), QStringLiteral("meterkin"));
        QCOMPARE(clicked.size(), 0);
    }

private:
    std::unique_ptr<PrivateBus> m_daemon;
};

METERKIN_TEST(NotifierItemTest);
#include "NotifierItemTest.moc"
