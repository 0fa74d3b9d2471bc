#import "Fakes/FakeUpdater.h"

#include "Fakes/CallLog.h"
#include "Platform/macOS/SparkleFramework.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"
#include "Updates/UpdaterController.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

QString calls()
{
    return CallLog::take().join(u'|');
}

} // namespace

class SparkleFrameworkTest : public QObject {
    Q_OBJECT

private slots:
    void init() { CallLog::take(); }

    void worksUnderTheController()
    {
        const QString key = QStringLiteral("SUAutomaticallyUpdate");
        ScriptedStore store;
        store.setBoolean(key, false);
        const QString begin =
            QStringLiteral("controller 1|downloads 0|observe canCheckForUpdates 5");
        const QString end = QStringLiteral("unobserve canCheckForUpdates");
        {
            SparkleFramework framework;
            ScriptedInformationAlert alert;
            UpdaterController controller(framework, store, {}, alert);
            QCOMPARE(calls(), begin);
            QCoreApplication::processEvents();
            QVERIFY(!controller.canCheckForUpdates());
            [FakeUpdater.latest setCanCheckForUpdates:YES];
            QTRY_VERIFY(controller.canCheckForUpdates());
            [FakeUpdater.latest setCanCheckForUpdates:NO];
            QTRY_VERIFY(!controller.canCheckForUpdates());
            controller.setAutomaticallyDownloadsUpdates(true);
            QVERIFY(FakeUpdater.latest.automaticallyDownloadsUpdates);
            framework.checkForUpdates();
            QCOMPARE(calls(), QStringLiteral("downloads 1|check"));
        }
        QCOMPARE(calls(), end);
        [FakeUpdater.latest setCanCheckForUpdates:YES];
    }

    void tellsOfThePresentState()
    {
        SparkleFramework framework;
        framework.start();
        [FakeUpdater.latest setCanCheckForUpdates:YES];
        QSignalSpy told(&framework, &UpdateFramework::canCheckForUpdatesChanged);
        framework.observe();
        [FakeUpdater.latest tellWithoutValue];
        QCOMPARE(told, (QList<QVariantList>{{true}, {false}}));
    }

    void endsWithoutAnObservation()
    {
        {
            SparkleFramework unstarted;
            SparkleFramework unobserved;
            unobserved.start();
        }
        QCOMPARE(calls(), QStringLiteral("controller 1"));
    }
};

METERKIN_TEST(SparkleFrameworkTest);
#include "SparkleFrameworkTest.moc"
