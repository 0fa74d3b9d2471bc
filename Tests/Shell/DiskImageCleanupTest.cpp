#include "DiskImageCleanup.h"
#include "Platform/DiskImages.h"
#include "Support/TestMain.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

using namespace std::chrono_literals;

namespace {

struct ScriptedImages : DiskImages {
    std::optional<QList<DiskImage>> images;
    // Written in the background, and read once the task has ended.
    std::shared_ptr<QStringList> done = std::make_shared<QStringList>();

    std::optional<QList<DiskImage>> attachedImages() override
    {
        *done << QStringLiteral("list");
        return images;
    }
    bool holdsBundle(const QString &mountPoint, const QString &name) override
    {
        return QFileInfo(mountPoint).fileName() == name; // named after what it holds
    }
    void detachAndDiscard(const DiskImage &image, const QString &mountPoint) override
    {
        *done << image.imagePath + u'=' + QFileInfo(mountPoint).fileName();
    }
};

} // namespace

class DiskImageCleanupTest : public QObject {
    Q_OBJECT

private slots:
    void findsTheImageItCameFrom_data()
    {
        QTest::addColumn<QString>("bundle"); // "~": the home folder
        QTest::addColumn<QString>("images"); // "image=mount point,mount point;..."
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *bundle, const char *images,
                            const char *expected) {
            QTest::newRow(name) << QString::fromLatin1(bundle) << QString::fromLatin1(images)
                                << QString::fromLatin1(expected);
        };
        const char *both = "a=Meterkin;b=Meterkin.AppImage";
        const char *found = "list;a=Meterkin";
        row("everybody's", "/Applications/Meterkin", both, found);
        row("the user's, or what begins so", "~/Applications2/Meterkin", both, found);
        row("elsewhere", "/opt/Meterkin", both, "");
        row("loose in the folder", "~/Applications", "a=Applications", "");
        row("in a tree", "~/Applications/meterkin/bin", "a=bin", "");
        row("an image mounted in there", "~/Applications/Meterkin/Meterkin",
            "a=Applications/Meterkin", "list");
        row("a file", "/Applications/Meterkin.AppImage", both, "list;b=Meterkin.AppImage");
        row("another name", "/Applications/meterkin", both, "list");
        row("second volume", "/Applications/Meterkin", "b=;c=Other;a=Other,Meterkin", found);
        row("cannot be listed", "/Applications/Meterkin", "?", "list");
    }
    void findsTheImageItCameFrom()
    {
        QFETCH(QString, bundle);
        QFETCH(QString, images);
        auto scripted = std::make_shared<ScriptedImages>();
        if (images != QStringLiteral("?"))
            scripted->images.emplace();
        static const QRegularExpression imageForm(QStringLiteral("(\\w+)=([^;]*)"));
        for (const QRegularExpressionMatch &match : imageForm.globalMatch(images)) {
            DiskImage image{match.captured(1), {}};
            for (const QString &point : match.captured(2).split(u',', Qt::SkipEmptyParts))
                image.mountPoints << QDir::home().filePath(point);
            *scripted->images << image;
        }
        bundle.replace(u'~', QDir::homePath());

        // The task keeps what it needs, and lets go of it at its end.
        const std::weak_ptr<DiskImages> inUse = scripted;
        const std::shared_ptr<QStringList> done = scripted->done;
        DiskImageCleanup(std::exchange(scripted, nullptr), bundle, 30ms).start();
        // It waits for a core that nobody else wants.
        QTRY_VERIFY_WITH_TIMEOUT(inUse.expired(), 60'000);
        QTEST(done->join(u';'), "expected");
    }
};

METERKIN_TEST(DiskImageCleanupTest);
#include "DiskImageCleanupTest.moc"
