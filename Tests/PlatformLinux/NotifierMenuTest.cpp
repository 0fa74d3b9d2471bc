#include "Platform/Linux/NotifierMenu.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

class NotifierMenuTest : public QObject {
    Q_OBJECT

private slots:
    void hasTheEntries()
    {
        NotifierMenu menu;
        MenuLayout root;
        menu.GetLayout(0, -1, {}, root);
        QStringList entries;
        for (const MenuLayout &entry : std::as_const(root.children)) {
            entries.append(entry.properties.contains(QStringLiteral("type"))
                               ? QStringLiteral("-")
                               : entry.properties.value(QStringLiteral("label")).toString());
        }
        QCOMPARE(entries.join(u'|'),
                 QStringLiteral("Open Dashboard|Open Settings|-|Quit meterkin"));
        QCOMPARE(root.properties.value(QStringLiteral("children-display")).toString(),
                 QStringLiteral("submenu"));
    }

    void givesParts_data()
    {
        QTest::addColumn<int>("parent");
        QTest::addColumn<int>("depth");
        QTest::addColumn<qsizetype>("children");
        QTest::newRow("all") << 0 << -1 << qsizetype(4);
        QTest::newRow("one level") << 0 << 1 << qsizetype(4);
        QTest::newRow("root alone") << 0 << 0 << qsizetype(0);
        QTest::newRow("an entry") << 1 << -1 << qsizetype(0);
    }

    void givesParts()
    {
        QFETCH(int, parent);
        QFETCH(int, depth);
        NotifierMenu menu;
        MenuLayout layout;
        menu.GetLayout(parent, depth, {QStringLiteral("label"), QStringLiteral("x")}, layout);
        QCOMPARE(layout.id, parent);
        QTEST(layout.children.size(), "children");
        for (const MenuLayout &child : std::as_const(layout.children))
            QVERIFY(child.properties.size() <= 1);
    }

    void answersGroups_data()
    {
        QTest::addColumn<QList<int>>("ids");
        QTest::addColumn<QList<int>>("known");
        QTest::addColumn<QList<int>>("unknown");
        QTest::newRow("some") << QList<int>{2, 1} << QList<int>{1, 2} << QList<int>{};
        QTest::newRow("twice") << QList<int>{1, 1} << QList<int>{1} << QList<int>{};
        QTest::newRow("some unknown")
            << QList<int>{1, -5, 99} << QList<int>{1} << QList<int>{-5, 99};
        QTest::newRow("all unknown") << QList<int>{77} << QList<int>{} << QList<int>{77};
    }

    void answersGroups()
    {
        QFETCH(QList<int>, ids);
        NotifierMenu menu;
        QList<int> known;
        for (const MenuProperties &entry : menu.GetGroupProperties(ids, {}))
            known.append(entry.id);
        QTEST(known, "known");
        QList<int> unknown;
        menu.AboutToShowGroup(ids, unknown);
        QTEST(unknown, "unknown");
    }

    void hearsClicksOnly()
    {
        NotifierMenu menu;
        QSignalSpy chosen(&menu, &NotifierMenu::chosen);
        menu.Event(1, QStringLiteral("hovered"), {}, 0);
        menu.Event(0, QStringLiteral("clicked"), {}, 0);
        QCOMPARE(chosen.size(), 0);
        const QList<int> unknown = menu.EventGroup({{1, QStringLiteral("opened"), {}, 0},
                                                    {99, QStringLiteral("clicked"), {}, 0},
                                                    {2, QStringLiteral("clicked"), {}, 0}});
        QCOMPARE(unknown, QList<int>{99});
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen.at(0).at(0).value<MenuAction>(), MenuAction::OpenSettings);
    }
};

METERKIN_TEST(NotifierMenuTest);
#include "NotifierMenuTest.moc"
