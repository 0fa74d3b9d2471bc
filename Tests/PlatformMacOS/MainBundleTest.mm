#include "Platform/macOS/FoundationValues.h"
#include "Platform/macOS/MainBundle.h"
#include "Platform/macOS/PhysicalMemory.h"
#include "Platform/macOS/UserDefaultsStore.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

#include <objc/runtime.h>

namespace {

NSBundle *bundle;

id madeBundle(id, SEL)
{
    return bundle;
}

/// Lets the program lie in another bundle, while it lives.
class OtherBundle {
public:
    explicit OtherBundle(const QString &path)
    {
        bundle = [[NSBundle alloc] initWithPath:foundationText(path)];
        m_real = method_setImplementation(m_method, reinterpret_cast<IMP>(madeBundle));
    }
    ~OtherBundle() { method_setImplementation(m_method, m_real); }

private:
    Method m_method = class_getClassMethod([NSBundle class], @selector(mainBundle));
    IMP m_real;
};

} // namespace

class MainBundleTest : public QObject {
    Q_OBJECT

private slots:
    void tellsOfTheBundle()
    {
        QTemporaryDir folder;
        const QDir made(folder.filePath(QStringLiteral("Größe.app")));
        QVERIFY(made.mkpath(QStringLiteral("Resources")));
        QFile properties(made.filePath(QStringLiteral("Resources/Info-gnustep.plist")));
        QVERIFY(properties.open(QIODevice::WriteOnly));
        properties.write("{ CFBundleIdentifier = org.meterkin.Test; CFBundleName = Vitals; }");
        properties.close();
        const OtherBundle other(made.path() + u'/');
        QCOMPARE(bundlePath(), made.path());
        QCOMPARE(bundleIdentifier(), std::optional(QStringLiteral("org.meterkin.Test")));
        QCOMPARE(informationDictionary().value(QStringLiteral("CFBundleName")),
                 QVariant(QStringLiteral("Vitals")));
        QCOMPARE(UserDefaultsStore().location(),
                 QStringLiteral("the defaults of org.meterkin.Test"));
    }

    void withoutABundleThereIsNoIdentifier()
    {
        QTemporaryDir folder;
        const OtherBundle other(folder.path());
        QVERIFY(!bundleIdentifier());
        QCOMPARE(UserDefaultsStore().location(),
                 QStringLiteral("the defaults of test_platformmacos"));
    }

    void tellsTheMemory()
    {
        const auto page = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
        QCOMPARE(physicalMemory(), page * static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)));
    }
};

METERKIN_TEST(MainBundleTest);
#include "MainBundleTest.moc"
