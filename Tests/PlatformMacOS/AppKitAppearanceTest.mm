#include "Platform/macOS/AppKitAppearance.h"

#include "Fakes/CallLog.h"
#import "Fakes/FakeAppearance.h"
#include "Platform/macOS/AppKitColors.h"
#include "Platform/macOS/FoundationValues.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

class AppKitAppearanceTest : public QObject {
    Q_OBJECT

private slots:
    void init() { setApplicationAppearance(fakeAppearance(NSAppearanceNameAqua)); }

    void followsTheApplication_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << textOf(NSAppearanceNameAqua) << false;
        QTest::newRow("dark") << textOf(NSAppearanceNameDarkAqua) << true;
        QTest::newRow("dark, of high contrast")
            << QStringLiteral("NSAppearanceNameAccessibilityHighContrastDarkAqua") << true;
    }
    void followsTheApplication()
    {
        QFETCH(QString, name);
        QFETCH(bool, dark);
        const AppKitAppearance appearance;
        QSignalSpy changed(&appearance, &DesktopAppearance::changed);
        setApplicationAppearance(fakeAppearance(foundationText(name)));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(appearance.isDark(), dark);
        const SystemColors colors = appearance.systemColors();
        QCOMPARE(colors.windowBackground, catalogueColor(@"windowBackgroundColor", dark));
        QCOMPARE(colors.red, catalogueColor(@"systemRedColor", dark));
    }

    void followsColorsAndMotion()
    {
        const auto post = [](bool isMotionReduced) {
            setMotionReduced(isMotionReduced);
            [NSNotificationCenter.defaultCenter
                postNotificationName:NSSystemColorsDidChangeNotification
                              object:nil];
        };
        {
            const AppKitAppearance appearance;
            QSignalSpy changed(&appearance, &DesktopAppearance::changed);
            post(true);
            QVERIFY(appearance.reducesMotion());
            QCOMPARE(changed.count(), 2);
        }
        // Nobody is asked any more.
        post(false);
        setApplicationAppearance(fakeAppearance(NSAppearanceNameDarkAqua));
    }

    void convertsColors()
    {
        QVERIFY(!colorOf(nil).isValid());
        QVERIFY(!colorOf(patternColor()).isValid());
        const QColor color = QColor::fromRgbF(0.1F, 0.2F, 0.3F, 0.4F);
        QCOMPARE(colorOf(appKitColor(color)), color);
    }

    void drawsSymbols_data()
    {
        QTest::addColumn<double>("pointSize");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QSize>("pixels");
        QTest::newRow("two pixels a point") << 13.0 << 2.0 << QSize(39, 26);
        QTest::newRow("cut pixels") << 9.0 << 1.0 << QSize(14, 9);
    }
    void drawsSymbols()
    {
        QFETCH(double, pointSize);
        QFETCH(double, scale);
        QFETCH(QSize, pixels);
        const AppKitAppearance appearance;
        CallLog::take();
        const QImage image = appearance.symbol(QStringLiteral("gearshape"), pointSize, scale);
        QCOMPARE(CallLog::take().join(u','),
                 QStringLiteral("weight 0,create space,create context,release space,"
                                "release context"));
        QVERIFY(NSGraphicsContext.currentContext == nil);
        QCOMPARE(image.size(), pixels);
        QCOMPARE(image.devicePixelRatio(), scale);
        const QPoint last(pixels.width() - 1, pixels.height() - 1);
        QCOMPARE(image.pixel(0, 0), 0xffff0000U);
        QCOMPARE(image.pixel(pixels.width() / 2 - 1, pixels.height() / 2 - 1), 0xffff0000U);
        QCOMPARE(image.pixel(last.x(), 0), 0U);
    }
};

METERKIN_TEST(AppKitAppearanceTest);
#include "AppKitAppearanceTest.moc"
