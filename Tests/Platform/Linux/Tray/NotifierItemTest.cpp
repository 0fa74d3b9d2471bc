#include "Platform/Linux/Tray/Notifier/Item.h"
#include "Support/PrivateBus.h"
#include "Support/ScriptedWatcher.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#include <sys/prctl.h>

#include <climits>

namespace {

using namespace std::chrono_literals;

using Answer = ScriptedWatcher::Answer;

const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuPath = itemPath + QStringLiteral("/Menu");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
const QColor usual(0x12, 0x34, 0x56);

TrayContent content(const QString &text, const QColor &color = usual,
                    const QString &toolTip = QStringLiteral("CPU <9%"))
{
    return {{text, color, QStringLiteral("100%")}, QStringLiteral("meterkin: ") + text, toolTip};
}

/// A program with its item; it stays attached wherever there is a panel.
struct Program {
    BusConnection bus{BusConnection::Kind::Session, {.reply = 1s, .firstRetry = 100ms}};
    TitlePainter painter;
    NotifierItem item{bus, painter};

    Program()
    {
        item.setContent(content(QStringLiteral("42%")));
        QObject::connect(&item, &TrayHost::availabilityChanged, &item, [this] {
            if (item.isAvailable())
                item.attach();
            else
                item.detach();
        });
    }
};

/// A panel that shows a program's item, on a bus of their own.
struct Session {
    PrivateBus daemon;
    ScriptedWatcher panel{daemon.connectClient()};
    Program program;

    explicit Session(const QByteArray &process = "lxqt-panel")
    {
        // Makes the panel, which is this process, look like another program.
        prctl(PR_SET_NAME, process.constData(), 0, 0, 0);
        QTRY_COMPARE(panel.items().size(), 1);
    }

    QList<NotifierPixmap> pixmaps()
    {
        return qdbus_cast<QList<NotifierPixmap>>(panel.property(QStringLiteral("IconPixmap")));
    }
};

} // namespace

class NotifierItemTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_session = std::make_unique<Session>();
        m_session->panel.takeSignals();
        // Told seconds later, in tellsAToolTipOnceAWhile().
        m_session->program.item.setContent(content(QStringLiteral("42%"), usual, {}));
        m_session->program.item.setContent(content(QStringLiteral("42%")));
    }
    void cleanupTestCase() { m_session.reset(); }

    void looksRight_data()
    {
        QTest::addColumn<QList<int>>("heights");
        const QList<int> squares{22, 24, 32, 48, 64};
        QTest::newRow("waybar") << QList<int>{48};
        QTest::newRow(".waybar-wrapped") << QList<int>{48};
        QTest::newRow("gnome-shell") << squares;
        QTest::newRow("kded5") << squares;
    }
    void looksRight()
    {
        Session session(QTest::currentDataTag());
        for (const auto &[name, value] : {
                 std::pair{"XAyatanaLabel", QVariant(QStringLiteral("42%"))},
                 std::pair{"XAyatanaLabelGuide", QVariant(QStringLiteral("100%"))},
                 std::pair{"IconAccessibleDesc", QVariant(QStringLiteral("meterkin: 42%"))},
             })
            QCOMPARE(session.panel.property(QLatin1StringView(name)), value);
        const auto toolTip =
            qdbus_cast<NotifierToolTip>(session.panel.property(QStringLiteral("ToolTip")));
        QCOMPARE(toolTip.title, QStringLiteral("meterkin"));
        QCOMPARE(toolTip.text, QStringLiteral("CPU &lt;9%"));

        QList<int> heights;
        for (const NotifierPixmap &pixmap : session.pixmaps()) {
            heights.append(pixmap.height);
            QCOMPARE(pixmap.width > pixmap.height, pixmap.height == 48 && heights.size() == 1);
            QCOMPARE(pixmap.data.size(), pixmap.width * pixmap.height * 4);
            int opaque = 0;
            for (qsizetype at = 0; at < pixmap.data.size(); at += 4) {
                if (pixmap.data.at(at) != '\xff')
                    continue;
                QCOMPARE(pixmap.data.mid(at, 4), QByteArray("\xff\x12\x34\x56"));
                ++opaque;
            }
            QVERIFY(opaque > 0);
        }
        QTEST(heights, "heights");
    }

    void tellsOnlyChanges_data()
    {
        QTest::addColumn<QByteArray>("host");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("told");
        const auto row = [](const char *host, const char *text, const QColor &color,
                            const char *told) {
            QTest::addRow("%s, %s, %s", host, text, qPrintable(color.name()))
                << QByteArray(host) << QString::fromLatin1(text) << color
                << QString::fromLatin1(told);
        };
        row("lxqt-panel", "42%", usual, "");
        row("lxqt-panel", "43%", usual, "NewIcon");
        row("lxqt-panel", "42%", Qt::red, "NewIcon");
        row("ayatana-indicat", "43%", usual, "NewIcon XAyatanaNewLabel");
        row("ayatana-indicat", "42%", Qt::red, "NewIcon");
    }
    void tellsOnlyChanges()
    {
        QFETCH(QByteArray, host);
        QFETCH(QString, text);
        QFETCH(QColor, color);
        QFETCH(QString, told);
        Session session(host);
        const QByteArray before = session.pixmaps().value(0).data;
        session.panel.takeSignals();
        session.program.item.setContent(content(text, color));
        QCOMPARE(session.panel.takeSignals().join(u' '), told);
        QCOMPARE(session.panel.property(QStringLiteral("XAyatanaLabel")).toString(), text);
        const bool isNew = color != usual || told == u"NewIcon"; // not beside a label
        QCOMPARE(session.pixmaps().value(0).data != before, isNew);
    }

    void findsItsPanel_data()
    {
        QTest::addColumn<Answer>("toProperty");
        QTest::addColumn<Answer>("toRegister");
        QTest::addColumn<int>("registrations");
        QTest::addColumn<bool>("available");
        QTest::newRow("working") << Answer::Good << Answer::Good << 1 << true;
        QTest::newRow("talks rubbish") << Answer::Wrong << Answer::Good << 0 << false;
        QTest::newRow("refuses") << Answer::Good << Answer::Error << 3 << false;
        QTest::newRow("hangs at the item") << Answer::Good << Answer::None << 1 << true;
    }
    void findsItsPanel()
    {
        QFETCH(Answer, toProperty);
        QFETCH(Answer, toRegister);
        QFETCH(int, registrations);
        PrivateBus daemon;
        Program program;
        QTRY_VERIFY(program.bus.connection());
        QVERIFY(!program.item.isAvailable());
        ScriptedWatcher good(daemon.connectClient());
        QTRY_COMPARE(good.items().size(), 1);

        // Another panel takes the first one's place, then comes the first one again.
        auto second =
            std::make_unique<ScriptedWatcher>(daemon.connectClient(), toProperty, toRegister);
        QTRY_COMPARE(good.items().size(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(second->registrations(), registrations, 10'000);
        QFETCH(bool, available);
        QTRY_COMPARE(program.item.isAvailable(), available);
        good.takeOver();
        QTRY_COMPARE(good.items().size(), 1);
        QVERIFY(program.item.isAvailable());

        second.reset();
        good.setHost(false);
        QTRY_COMPARE(good.items().size(), 0);
        good.setHost(true);
        QTRY_COMPARE(good.items().size(), 1);
        QCOMPARE(good.mostNames(), 1);
    }

    void asksUntilItIsAnswered()
    {
        for (const Answer first : {Answer::Error, Answer::None}) {
            PrivateBus daemon;
            ScriptedWatcher panel(daemon.connectClient(), first);
            const Program program;
            QTRY_COMPARE(panel.questions(), 1);
            for (int signal = 0; signal < 10'000; ++signal)
                panel.setHost(true);
            QTRY_VERIFY(panel.questions() > 1);
            panel.answerProperty(Answer::Good);
            QTRY_COMPARE(panel.items().size(), 1);
            QVERIFY2(panel.questions() < 50, "a burst is one question");
        }
    }

    void comesBackWithTheBus()
    {
        PrivateBus daemon;
        Program program;
        for (int round = 0; round < 2; ++round) {
            ScriptedWatcher panel(daemon.connectClient());
            QTRY_COMPARE(panel.items().size(), 1);
            QCOMPARE(panel.mostNames(), 1);
            daemon.stop();
            QTRY_VERIFY(!program.item.isAvailable());
            daemon.start();
        }
    }

    void leavesForGood()
    {
        Session session;
        const QStringList first = session.panel.items();
        session.program.item.detach();
        QTRY_VERIFY(session.panel.items().isEmpty());
        session.program.item.setContent(content(QStringLiteral("43%")));
        session.program.item.attach();
        QTRY_COMPARE(session.panel.items().size(), 1);
        QVERIFY(session.panel.items() != first);
        QCOMPARE(session.panel.property(QStringLiteral("XAyatanaLabel")).toString(),
                 QStringLiteral("43%"));
    }

    void believesPlaces()
    {
        NotifierItem &item = m_session->program.item;
        const QPoint last = QGuiApplication::primaryScreen()->geometry().bottomRight();
        for (const QPoint place :
             {last, last + QPoint(100, 0), QPoint(-1, 5), QPoint(0, 0), QPoint(INT_MAX, INT_MIN)}) {
            QSignalSpy clicked(&item, &TrayHost::clicked);
            QSignalSpy menu(&item, &TrayHost::menuRequested);
            for (const char *method : {"Activate", "ContextMenu"})
                m_session->panel.call(itemPath, itemInterface, QString::fromLatin1(method),
                                      {place.x(), place.y()});
            QTRY_COMPARE(menu.size(), 1);
            QCOMPARE(clicked.size(), 1);
            QCOMPARE(item.geometry().contains(place), place == last);
            QCOMPARE(item.geometry().isEmpty(), place != last);
        }
    }

    void offersTheMenu()
    {
        ScriptedWatcher &panel = m_session->panel;
        QCOMPARE(panel.property(QStringLiteral("Menu")).value<QDBusObjectPath>().path(), menuPath);
        const QDBusMessage reply = panel.call(menuPath, menuInterface, QStringLiteral("GetLayout"),
                                              {0, -1, QStringList()});
        QCOMPARE(reply.signature(), QStringLiteral("u(ia{sv}av)"));
        const auto root = qdbus_cast<MenuLayout>(reply.arguments().value(1));
        QCOMPARE(root.properties.value(QStringLiteral("children-display")).toString(),
                 QStringLiteral("submenu"));

        QStringList entries;
        QList<MenuAction> chosen;
        connect(&m_session->program.item, &TrayHost::menuChosen, &panel,
                [&](MenuAction action) { chosen.append(action); });
        for (const MenuLayout &entry : root.children) {
            const QVariantMap &properties = entry.properties;
            entries +=
                properties.value(QStringLiteral("label"), properties.value(QStringLiteral("type")))
                    .toString();
            panel.call(menuPath, menuInterface, QStringLiteral("Event"),
                       {entry.id, QStringLiteral("clicked"), m_number, 0u});
        }
        QCOMPARE(entries.join(u'|'),
                 QStringLiteral("Open Dashboard|Open Settings|separator|Quit meterkin"));
        QTRY_COMPARE(chosen.size(), 3);
        QCOMPARE(chosen,
                 (QList{MenuAction::OpenDashboard, MenuAction::OpenSettings, MenuAction::Quit}));
    }

    void endures()
    {
        const auto fails = [this](const QString &path, const char *method,
                                  const QVariantList &arguments) {
            const QDBusMessage reply =
                m_session->panel.call(path, path == menuPath ? menuInterface : itemInterface,
                                      QString::fromLatin1(method), arguments);
            return reply.type() == QDBusMessage::ErrorMessage
                && m_session->panel.property(QStringLiteral("Id")) == QStringLiteral("meterkin");
        };
        const QString clicked = QStringLiteral("clicked");
        const QList<MenuEvent> events{{INT_MAX, clicked, QDBusVariant(7), 0}};
        QVERIFY(fails(itemPath, "deleteLater", {}));
        QVERIFY(fails(itemPath, "activated", {1, 2}));
        QVERIFY(fails(menuPath, "GetLayout", {INT_MIN, INT_MAX, QStringList()}));
        QVERIFY(fails(menuPath, "GetProperty", {INT_MAX, QStringLiteral("label")}));
        QVERIFY(fails(menuPath, "GetProperty", {1, QStringLiteral("icon-data")}));
        QVERIFY(fails(menuPath, "Event", {-1, clicked, m_number, 0u}));
        QVERIFY(fails(menuPath, "AboutToShow", {INT_MAX}));
        QVERIFY(fails(menuPath, "EventGroup", {QVariant::fromValue(events)}));
    }

    void tellsAToolTipOnceAWhile()
    {
        QStringList told;
        QTRY_VERIFY_WITH_TIMEOUT(!(told += m_session->panel.takeSignals()).isEmpty(), 20'000);
        QCOMPARE(told, QStringList{QStringLiteral("NewToolTip")});
    }

private:
    std::unique_ptr<Session> m_session;
    const QVariant m_number = QVariant::fromValue(QDBusVariant(7));
};

METERKIN_TEST(NotifierItemTest);
#include "NotifierItemTest.moc"
