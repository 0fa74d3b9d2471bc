#include "Platform/Linux/Tray/Notifier/Item.h"
#include "Platform/Linux/Tray/ScriptedWatcher.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#include <sys/prctl.h>

#include <climits>

namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using Answer = ScriptedWatcher::Answer;

const QString itemPath = u"/StatusNotifierItem"_s;
const QString itemInterface = u"org.kde.StatusNotifierItem"_s;
const QString menuPath = itemPath + u"/Menu"_s;
const QString menuInterface = u"com.canonical.dbusmenu"_s;
const QColor usual(0x12, 0x34, 0x56);

TrayContent content(const char *text, const QColor &color = usual)
{
    return {{QString::fromLatin1(text), color, u"100%"_s},
            u"meterkin: "_s + QString::fromLatin1(text),
            u"CPU <9%"_s};
}

/// A program with its item, which is attached wherever there is a panel.
struct Program {
    BusConnection bus{BusConnection::Kind::Session, {.reply = 1s, .firstRetry = 100ms}};
    TitlePainter painter;
    NotifierItem item{bus, painter};

    Program()
    {
        item.setContent(content("42%"));
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
        return qdbus_cast<QList<NotifierPixmap>>(panel.property("IconPixmap"));
    }
};

} // namespace

class NotifierItemTest : public QObject {
    Q_OBJECT

private slots:
    void looksRight()
    {
        for (const char *host : {".waybar-wrapped", "gnome-shell", "kded5"}) {
            Session session(host);
            QCOMPARE(session.panel.property("IconAccessibleDesc").toString(), u"meterkin: 42%"_s);
            QCOMPARE(qdbus_cast<NotifierToolTip>(session.panel.property("ToolTip")).text,
                     u"CPU &lt;9%"_s);
            const QList<NotifierPixmap> pixmaps = session.pixmaps();
            QCOMPARE(pixmaps.size() == 1, QByteArray(host) == ".waybar-wrapped");
            for (const NotifierPixmap &pixmap : pixmaps) {
                QCOMPARE(pixmap.width > pixmap.height, pixmaps.size() == 1);
                QCOMPARE(pixmap.data.size(), pixmap.width * pixmap.height * 4);
                QVERIFY(pixmap.data.contains(QByteArray("\xff\x12\x34\x56"))); // ARGB
            }
        }
    }

    void tellsOnlyChanges()
    {
        const struct {
            const char *host;
            TrayContent next;
            const char *signalled;
        } rows[]{{"lxqt-panel", content("42%"), ""},
                 {"lxqt-panel", content("43%"), "NewIcon"},
                 {"lxqt-panel", content("42%", Qt::red), "NewIcon"},
                 {"ayatana-indicat", content("43%"), "NewIcon XAyatanaNewLabel"},
                 {"ayatana-indicat", content("42%", Qt::red), "NewIcon"}};
        for (const auto &[host, next, signalled] : rows) {
            Session session(host);
            const QByteArray before = session.pixmaps().value(0).data;
            session.panel.takeSignals();
            session.program.item.setContent(next);
            QCOMPARE(session.panel.takeSignals().join(u' '), QString::fromLatin1(signalled));
            QCOMPARE(session.panel.property("XAyatanaLabel").toString(), next.title.text);
            QCOMPARE(session.pixmaps().value(0).data != before,
                     QByteArray(signalled) == "NewIcon"); // a label stands beside the same picture
        }
    }

    void findsItsPanel_data()
    {
        QTest::addColumn<Answer>("toProperty");
        QTest::addColumn<Answer>("toRegister");
        QTest::addColumn<int>("registrations");
        QTest::newRow("works") << Answer::Good << Answer::Good << 1;
        QTest::newRow("wrong type") << Answer::Wrong << Answer::Good << 0;
        QTest::newRow("refuses") << Answer::Good << Answer::Error << 3;
        QTest::newRow("hangs") << Answer::Good << Answer::None << 1;
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

        // Another panel takes the place of the first one, then the first one takes it again.
        auto second =
            std::make_unique<ScriptedWatcher>(daemon.connectClient(), toProperty, toRegister);
        QTRY_COMPARE(good.items().size(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(second->registrations, registrations, 10'000);
        QTRY_COMPARE(program.item.isAvailable(), registrations == 1);
        good.takeOver();
        QTRY_COMPARE(good.items().size(), 1);
        QVERIFY(program.item.isAvailable());

        second.reset();
        good.setHost(false);
        QTRY_COMPARE(good.items().size(), 0);
        good.setHost(true);
        QTRY_COMPARE(good.items().size(), 1);

        const QStringList before = good.items();
        program.item.detach();
        QTRY_COMPARE(good.items().size(), 0);
        program.item.attach();
        QTRY_COMPARE(good.items().size(), 1);
        QVERIFY(good.items() != before);

        for (int round = 0; round < 2; ++round) {
            daemon.stop();
            QTRY_VERIFY(!program.item.isAvailable());
            daemon.start();
            ScriptedWatcher next(daemon.connectClient());
            QTRY_COMPARE(next.items().size(), 1);
        }
    }

    void queriesUntilItIsAnswered()
    {
        for (const Answer first : {Answer::Error, Answer::None}) {
            PrivateBus daemon;
            ScriptedWatcher panel(daemon.connectClient(), first);
            const Program program;
            QTRY_COMPARE(panel.queries, 1);
            for (int signal = 0; signal < 10'000; ++signal)
                panel.setHost(true);
            QTRY_VERIFY(panel.queries > 1);
            panel.toProperty = Answer::Good;
            QTRY_COMPARE(panel.items().size(), 1);
            QVERIFY2(panel.queries < 50, "a burst is one query");
        }
    }

    void believesPlaces()
    {
        Session session;
        NotifierItem &item = session.program.item;
        const QPoint last = QGuiApplication::primaryScreen()->geometry().bottomRight();
        for (const QPoint place :
             {last, last + QPoint(100, 0), QPoint(-1, 5), QPoint(0, 0), QPoint(INT_MAX, INT_MIN)}) {
            QSignalSpy clicked(&item, &TrayHost::clicked);
            QSignalSpy menu(&item, &TrayHost::menuRequested);
            for (const char *method : {"Activate", "ContextMenu"})
                session.panel.call(itemPath, itemInterface, QString::fromLatin1(method),
                                   {place.x(), place.y()});
            QTRY_COMPARE(menu.size(), 1);
            QCOMPARE(clicked.size(), 1);
            QCOMPARE(item.geometry().contains(place), place == last);
            QCOMPARE(item.geometry().isEmpty(), place != last);
        }
    }

    void offersTheMenu()
    {
        Session session;
        ScriptedWatcher &panel = session.panel;
        QCOMPARE(panel.property("Menu").value<QDBusObjectPath>().path(), menuPath);
        const QDBusMessage reply =
            panel.call(menuPath, menuInterface, u"GetLayout"_s, {0, -1, QStringList()});
        QCOMPARE(reply.signature(), u"u(ia{sv}av)"_s);
        const auto root = qdbus_cast<MenuLayout>(reply.arguments().value(1));
        QStringList entries;
        QSignalSpy chosen(&session.program.item, &TrayHost::menuChosen);
        const auto event = [](int id, const char *name) {
            return MenuEvent{id, QString::fromLatin1(name), QDBusVariant(7), 0};
        };
        QList events{event(0, "clicked"), event(1, "opened"), event(99, "clicked")};
        for (const MenuLayout &entry : root.children) {
            const QVariantMap &values = entry.properties;
            entries += values.value(u"label"_s, values.value(u"type"_s)).toString();
            events.append(event(entry.id, "clicked"));
        }
        QCOMPARE(entries.join(u'|'), u"Open Dashboard|Open Settings|separator|Quit meterkin"_s);
        panel.call(menuPath, menuInterface, u"EventGroup"_s, {QVariant::fromValue(events)});
        for (const char *method : {"AboutToShow", "GetLayout", "deleteLater"})
            QCOMPARE(
                panel.call(menuPath, menuInterface, QString::fromLatin1(method), {INT_MIN}).type(),
                QDBusMessage::ErrorMessage);
        QTRY_COMPARE(chosen.size(), 3);
        for (const MenuAction action :
             {MenuAction::OpenDashboard, MenuAction::OpenSettings, MenuAction::Quit})
            QCOMPARE(chosen.takeFirst().at(0).value<MenuAction>(), action);
    }
};

METERKIN_TEST(NotifierItemTest);
#include "NotifierItemTest.moc"
