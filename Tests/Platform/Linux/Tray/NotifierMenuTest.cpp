#include "Platform/Linux/Tray/Notifier/Menu.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#include <array>

/// What panels ask for besides the whole layout.
class NotifierMenuTest : public QObject {
    Q_OBJECT

private slots:
    void givesParts()
    {
        for (const auto &[parent, depth, children] : {std::array{0, 1, 4}, {0, 0, 0}, {1, -1, 0}}) {
            MenuLayout layout;
            m_menu.GetLayout(parent, depth, {QStringLiteral("label"), QStringLiteral("x")}, layout);
            QCOMPARE(layout.id, parent);
            QCOMPARE(layout.children.size(), children);
            for (const MenuLayout &child : std::as_const(layout.children))
                QVERIFY(child.properties.size() <= 1);
        }
    }

    void answersGroups()
    {
        const QList<int> ids{2, 1, 1, -5, 99};
        QList<int> known;
        for (const MenuProperties &entry : m_menu.GetGroupProperties(ids, {}))
            known.append(entry.id);
        QCOMPARE(known, (QList<int>{1, 2}));
        QList<int> unknown;
        m_menu.AboutToShowGroup(ids, unknown);
        QCOMPARE(unknown, (QList<int>{-5, 99}));
    }

    void hearsClicksOnly()
    {
        QSignalSpy chosen(&m_menu, &NotifierMenu::chosen);
        const QList<int> unknown = m_menu.EventGroup({{1, QStringLiteral("opened"), {}, 0},
                                                      {0, QStringLiteral("clicked"), {}, 0},
                                                      {99, QStringLiteral("clicked"), {}, 0},
                                                      {2, QStringLiteral("clicked"), {}, 0}});
        QCOMPARE(unknown, QList<int>{99});
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen.at(0).at(0).value<MenuAction>(), MenuAction::OpenSettings);
    }

private:
    NotifierMenu m_menu;
};

METERKIN_TEST(NotifierMenuTest);
#include "NotifierMenuTest.moc"
