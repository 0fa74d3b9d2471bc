#include "Platform/macOS/MainBundle.h"
#import "Fakes/OtherBundle.h"
#include "Platform/macOS/FoundationValues.h"
#include "Platform/macOS/UserDefaultsStore.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

class MainBundleTest : public QObject {
    Q_OBJECT

private slots:
    void tellsOfTheBundle()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("Größe.app"));
        const OtherBundle other(
            path + u'/', "{ CFBundleIdentifier = org.meterkin.Test; CFBundleName = Vitals; }");
        QCOMPARE(bundlePath(), path);
        QCOMPARE(bundleIdentifier(), std::optional(QStringLiteral("org.meterkin.Test")));
        QCOMPARE(informationDictionary().value(QStringLiteral("CFBundleName")),
                 QVariant(QStringLiteral("Vitals")));
        QCOMPARE(UserDefaultsStore().location(),
                 QStringLiteral("the defaults of org.meterkin.Test"));
    }

    void withoutABundleThereIsNoIdentifier()
    {
        QTemporaryDir folder;
        const OtherBundle other(folder.path(), {});
        QVERIFY(!bundleIdentifier());
        QCOMPARE(UserDefaultsStore().location(),
                 QStringLiteral("the defaults of test_platformmacos"));
    }
};

METERKIN_TEST(MainBundleTest);
#include "MainBundleTest.moc"
