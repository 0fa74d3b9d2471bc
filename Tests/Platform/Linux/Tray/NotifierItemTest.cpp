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
using Answer = ScriptedWatcher::Answer;

const QString itemPath = u"/StatusNotifierItem"_s;
const QString menuPath = itemPath + u"/Menu"_s;
const QString menuInterface = u"com.canonical.dbusmenu"_s;

TrayContent content(const QString &text, const QColor &color = QColor(0x12, 0x34, 0x56))
{
    return {{text, color, u"100%"_s}, u"meterkin: "_s + text};
}

/// A program with its item, which is attached wherever there is a panel.
struct Program {
    PrivateBus daemon;
    BusConnection bus{BusConnection::Kind::Session, {.reply = 1s, .firstRetry = 100ms}};
    TitlePainter painter;
    NotifierItem item{bus, painter};
    QString toolTip = u"CPU <9%"_s;

    explicit Program(const QByteArray &process = "xfce4-panel")
    {
        // Makes the panel, which is this process, look like another program.
        prctl(PR_SET_NAME, process.constData(), 0, 0, 0);
        item.setContent(content(u"42%"_s));
        item.setToolTipSource([this] { return toolTip; });
        QObject::connect(&item, &TrayHost::availabilityChanged, &item, [this] {
            if (item.isAvailable())
                item.attach();
            else
                item.detach();
        });
    }
};

/// A program whose item a panel shows.
struct Session : Program {
    ScriptedWatcher panel{daemon.connectClient()};

    explicit Session(const QByteArray &process = "lxqt-panel")
        : Program(process)
    {
        QTRY_COMPARE(panel.items().size(), 1);
    }
    QList<NotifierPixmap> pixmaps()
    {
        return qdbus_cast<QList<NotifierPixmap>>(panel.property(u"IconPixmap"_s));
    }
};

} // namespace

class NotifierItemTest : public QObject {
    Q_OBJECT

private slots:
    void looksRight()
    {
        for (const char *host : {".waybar-wrapped", "gnome-shell", "swaybar"}) {
            Session s(host);
            QCOMPARE(s.panel.property(u"IconAccessibleDesc"_s), u"meterkin: 42%"_s);
            QCOMPARE(qdbus_cast<NotifierToolTip>(s.panel.property(u"ToolTip"_s)).text,
                     u"CPU &lt;9%"_s);
            // What only looks like Waybar's name is not known.
            QCOMPARE(s.item.background(true).has_value(), QByteArray(host) != "swaybar");
            QCOMPARE(s.item.background({}).has_value(), QByteArray(host) == "gnome-shell");
            const QList<NotifierPixmap> pixmaps = s.pixmaps();
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
        for (const auto &[host, next, signalled] :
             {std::tuple("lxqt-panel", content(u"42%"_s), u""_s),
              {"lxqt-panel", content(u"43%"_s), u"NewIcon"_s},
              {"ayatana-indicat", content(u"43%"_s), u"NewIcon XAyatanaNewLabel"_s},
              {"ayatana-indicat", content(u"42%"_s, Qt::red), u"NewIcon"_s}}) {
            Session s(host);
            const QByteArray before = s.pixmaps().value(0).data;
            s.panel.takeSignals();
            s.item.setContent(next);
            QCOMPARE(s.panel.takeSignals().join(u' '), signalled);
            QCOMPARE(s.panel.property(u"XAyatanaLabel"_s), next.title.text);
            // a label stands beside the same picture
            QCOMPARE(s.pixmaps().value(0).data != before, signalled == u"NewIcon");
        }
    }

    void findsItsPanel()
    {
        for (const auto &[toProperty, toRegister, registrations] :
             {std::tuple(Answer::Wrong, Answer::Good, 0),
              {Answer::Good, Answer::Error, 3},
              {Answer::Good, Answer::None, 1}}) {
            Program program;
            QTRY_VERIFY(program.bus.connection());
            QVERIFY(!program.item.isAvailable());
            ScriptedWatcher good(program.daemon.connectClient());
            QTRY_COMPARE(good.items().size(), 1);

            // Another panel takes the place of the first one, then the first one takes it again.
            auto second = std::make_unique<ScriptedWatcher>(program.daemon.connectClient());
            second->toProperty = toProperty;
            second->toRegister = toRegister;
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

            program.daemon.stop();
            QTRY_VERIFY(!program.item.isAvailable());
            program.daemon.start();
            ScriptedWatcher next(program.daemon.connectClient());
            QTRY_COMPARE(next.items().size(), 1);
        }
    }

    void isPresentedAgain()
    {
        struct Case {
            const char *host;
            bool listsItems;
            int losses;
            int registrations;
            bool isKept;
        };
        for (const Case &c : {Case{"gnome-shell", true, 1, 2, true},
                              {"mate-panel", true, 1, 2, true},
                              {"mate-panel", true, INT_MAX, 3, false},
                              {"mate-panel", false, 0, 3, true}}) {
            Session s(c.host);
            s.panel.registrations = 0;
            s.panel.listsItems = c.listsItems;
            s.panel.losses = c.losses;
            s.panel.setHost(false);
            QTRY_VERIFY(!s.item.isAvailable());
            s.panel.setHost(true);
            QTRY_COMPARE_WITH_TIMEOUT(s.panel.registrations, c.registrations, 10'000);
            QTRY_COMPARE(s.item.isAvailable(), c.isKept);
            QTRY_COMPARE(!s.panel.items().isEmpty(), c.isKept);
        }
    }

    void queriesUntilItIsAnswered()
    {
        for (const Answer first : {Answer::Error, Answer::None}) {
            Program program;
            ScriptedWatcher panel(program.daemon.connectClient());
            panel.toProperty = first;
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
        Session s;
        const QPoint last = QGuiApplication::primaryScreen()->geometry().bottomRight();
        for (const QPoint place : {last, last + QPoint(100, 0), QPoint(0, 0), {INT_MAX, INT_MIN}}) {
            QSignalSpy clicked(&s.item, &TrayHost::clicked);
            QSignalSpy menu(&s.item, &TrayHost::menuRequested);
            for (const QString &method : {u"Activate"_s, u"ContextMenu"_s})
                s.panel.call(itemPath, s.panel.itemInterface, method, {place.x(), place.y()});
            QTRY_COMPARE(menu.size(), 1);
            QCOMPARE(clicked.size(), 1);
            QCOMPARE(s.item.geometry().contains(place), place == last);
            QCOMPARE(s.item.geometry().isEmpty(), place != last);
        }
    }

    void offersTheMenu()
    {
        Session s;
        QCOMPARE(s.panel.property(u"Menu"_s).value<QDBusObjectPath>().path(), menuPath);
        const QDBusMessage reply =
            s.panel.call(menuPath, menuInterface, u"GetLayout"_s, {0, -1, QStringList()});
        QCOMPARE(reply.signature(), u"u(ia{sv}av)"_s);
        QStringList entries;
        QList<MenuAction> chosen;
        connect(&s.item, &TrayHost::menuChosen, this, [&](MenuAction one) { chosen << one; });
        const auto event = [](int id, const QString &name) {
            return MenuEvent{id, name, QDBusVariant(7), 0};
        };
        QList events{event(0, u"clicked"_s), event(1, u"opened"_s), event(99, u"clicked"_s)};
        for (const auto &entry : qdbus_cast<MenuLayout>(reply.arguments().value(1)).children) {
            entries += entry.properties.value(u"label"_s).toString();
            events.append(event(entry.id, u"clicked"_s));
        }
        QCOMPARE(entries.join(u'|'), u"Open Dashboard|Open Settings||Quit meterkin"_s);
        s.panel.call(menuPath, menuInterface, u"EventGroup"_s, {QVariant::fromValue(events)});
        for (const QString &method : {u"AboutToShow"_s, u"GetLayout"_s, u"deleteLater"_s})
            QCOMPARE(s.panel.call(menuPath, menuInterface, method, {INT_MIN}).type(),
                     QDBusMessage::ErrorMessage);
        const QList all{MenuAction::OpenDashboard, MenuAction::OpenSettings, MenuAction::Quit};
        QTRY_COMPARE(chosen, all);
    }
};

METERKIN_TEST(NotifierItemTest);
#include "NotifierItemTest.moc"
