#include "Platform/macOS/AppKitStatusItem.h"

#include "Fakes/CallLog.h"
#import "Fakes/FakeAppearance.h"
#import "Fakes/FakeStatusBar.h"
#include "Platform/macOS/AppKitColors.h"
#include "Platform/macOS/FoundationValues.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

class AppKitStatusItemTest : public QObject {
    Q_OBJECT

private:
    static FakeStatusBarButton *buttonOf(const AppKitStatusItem &item)
    {
        return (__bridge FakeStatusBarButton *)reinterpret_cast<void *>(item.button());
    }

private slots:
    void init()
    {
        FakeStatusBar::givesButtons = true;
        FakeStatusBar::appearance = fakeAppearance(NSAppearanceNameAqua);
        CallLog::take();
    }

    void livesInTheBar()
    {
        FakeStatusBarButton *button = nil;
        {
            const AppKitStatusItem item;
            QVERIFY(item.hasButton() && item.geometry().isEmpty());
            QCOMPARE(CallLog::take(), QStringList(QStringLiteral("statusItemWithLength: -1")));
            button = buttonOf(item);
            QCOMPARE(textOf(NSStringFromSelector(button.action)),
                     QStringLiteral("statusItemClicked"));
            QSignalSpy clicked(&item, &StatusItem::clicked);
            [button press];
            QCOMPARE(clicked.count(), 1);
            QVERIFY(button.accessibilityLabel == nil);
        }
        QCOMPARE(CallLog::take(), QStringList(QStringLiteral("removeStatusItem: 1")));
        [button press]; // reaches nobody
    }

    void doesWithoutButton()
    {
        FakeStatusBar::givesButtons = false;
        AppKitStatusItem item;
        item.setTitle({QStringLiteral("-"), Qt::green, {}});
        item.setAccessibilityLabel(QStringLiteral("label"));
        item.setToolTip(QStringLiteral("tip"));
        QVERIFY(!item.hasButton() && item.button() == 0);
        QVERIFY(!item.systemColor(SystemColor::Green).isValid());
    }

    void colorsTitles_data()
    {
        QTest::addColumn<QString>("menuBar");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("dynamic"); // empty for a colour that stays
        for (const bool dark : {false, true}) {
            const QString menuBar = textOf(dark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua);
            for (const char *name : {"systemGreenColor", "systemYellowColor", "systemRedColor"})
                QTest::addRow("%s, dark %d", name, dark)
                    << menuBar << catalogueColor([NSString stringWithUTF8String:name], dark)
                    << QString::fromLatin1(name);
            QTest::addRow("the other's green, dark %d", dark)
                << menuBar << catalogueColor(@"systemGreenColor", !dark) << QString();
            QTest::addRow("blend, dark %d", dark)
                << menuBar << QColor::fromRgbF(0.1F, 0.2F, 0.3F, 0.4F) << QString();
        }
    }
    void colorsTitles()
    {
        QFETCH(QString, menuBar);
        QFETCH(QColor, color);
        QFETCH(QString, dynamic);
        FakeStatusBar::appearance = fakeAppearance(foundationText(menuBar));
        AppKitStatusItem item;
        item.setTitle({QStringLiteral("2400 ⟳"), color, {}});

        NSAttributedString *title = buttonOf(item).attributedTitle;
        QCOMPARE(textOf([title string]), QStringLiteral("2400 ⟳"));
        NSDictionary *attributes = [title attributesAtIndex:0 effectiveRange:nullptr];
        QCOMPARE(attributes.count, 2U);
        const FakeFont *font = [attributes objectForKey:NSFontAttributeName];
        QCOMPARE(font->m_size, 12.0);
        QCOMPARE(font->m_weight, NSFontWeightMedium);
        NSColor *foreground = [attributes objectForKey:NSForegroundColorAttributeName];
        QCOMPARE(textOf(catalogueName(foreground)), dynamic);
        if (dynamic.isEmpty())
            QCOMPARE(colorOf(foreground), color);
    }

    void setsTitlesThatChange()
    {
        AppKitStatusItem item;
        CallLog::take();
        for (const char *text : {"1%", "1%", "2%", "1%"})
            item.setTitle({QString::fromLatin1(text), Qt::green, {}});
        item.setTitle({QStringLiteral("1%"), Qt::red, {}});
        QCOMPARE(CallLog::take().count(), 4);
    }

    void describesItself()
    {
        AppKitStatusItem item;
        item.setAccessibilityLabel(QStringLiteral("meterkin: 12%"));
        item.setToolTip(QStringLiteral("CPU: 12%\nMemory: 40%"));
        QCOMPARE(textOf(buttonOf(item).accessibilityLabel), QStringLiteral("meterkin: 12%"));
        QCOMPARE(textOf(buttonOf(item).toolTip), QStringLiteral("CPU: 12%\nMemory: 40%"));
    }
};

METERKIN_TEST(AppKitStatusItemTest);
#include "AppKitStatusItemTest.moc"
