#include "DiskImageCleanup.h"
#include "Platform/DiskImages.h"
#include "Support/TestMain.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace std::chrono_literals;

namespace {

struct ScriptedImages : DiskImages {
    std::optional<QList<DiskImage>> images;
    bool hasMeans = true;
    // Written in the background, and read once the task has ended.
    std::shared_ptr<QStringList> done = std::make_shared<QStringList>();

    std::optional<QList<DiskImage>> attachedImages() override
    {
        *done << QStringLiteral("list");
        return images;
    }
    bool detach(const QString &mountPoint) override
    {
        *done << QStringLiteral("detach ") + QFileInfo(mountPoint).fileName();
        return hasMeans;
    }
    void moveToTrash(const QString &path) override { *done << QStringLiteral("trash ") + path; }
};

} // namespace

class DiskImageCleanupTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_home = qgetenv("HOME");
        qputenv("HOME", m_folder.path().toUtf8());
        QDir folder(m_folder.path());
        for (const char *path :
             {"ours/Meterkin", "again/Meterkin", "foreign/Other", "foreign/Applications",
              "foreign/bin", "Applications/mounted/Meterkin", "empty"})
            QVERIFY(folder.mkpath(QString::fromLatin1(path)));
        QVERIFY(QFile(folder.filePath(QStringLiteral("again/Meterkin.AppImage")))
                    .open(QIODevice::WriteOnly));
        QVERIFY(QFile::link(QStringLiteral("/nowhere/at/all"),
                            folder.filePath(QStringLiteral("empty/Meterkin"))));
    }
    void cleanupTestCase() { qputenv("HOME", m_home); }

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
        const char *both = "a=ours;b=again";
        const char *found = "list;detach ours;trash a";
        row("everybody's", "/Applications/Meterkin", both, found);
        row("a folder that only begins so", "/Applications Old/Meterkin", both, found);
        row("the user's", "~/Applications/Meterkin", both, found);
        row("begins like the user's", "~/Applications2/Meterkin", both, found);
        row("elsewhere", "/opt/Meterkin", both, "");
        row("loose in the folder", "~/Applications", "a=foreign", "");
        row("in a tree", "~/Applications/meterkin/bin", "a=foreign", "");
        row("the image itself", "~/mounted/Meterkin", "a=mounted", "");
        row("an image mounted in there", "~/Applications/mounted/Meterkin",
            "a=Applications/mounted", "list");

        row("a file", "/Applications/Meterkin.AppImage", both, "list;detach again;trash b");
        row("another name", "/Applications/meterkin", both, "list");
        row("another's image first", "/Applications/Meterkin", "c=foreign;a=ours", found);
        row("second volume", "/Applications/Meterkin", "a=foreign,empty,ours", found);
        row("not mounted", "/Applications/Meterkin", "b=;a=ours", found);
        row("a link to nothing", "/Applications/Meterkin", "a=empty", "list");
        row("cannot be listed", "/Applications/Meterkin", "?", "list");
        row("no means", "/Applications/Meterkin", "!a=ours", "list;detach ours");
    }
    void findsTheImageItCameFrom()
    {
        QFETCH(QString, bundle);
        QFETCH(QString, images);
        auto scripted = std::make_shared<ScriptedImages>();
        scripted->hasMeans = !images.startsWith(u'!');
        if (images != QStringLiteral("?"))
            scripted->images.emplace();
        static const QRegularExpression imageForm(QStringLiteral("(\\w+)=([^;]*)"));
        for (const QRegularExpressionMatch &match : imageForm.globalMatch(images)) {
            DiskImage image{match.captured(1), {}};
            for (const QString &point : match.captured(2).split(u',', Qt::SkipEmptyParts))
                image.mountPoints << m_folder.filePath(point);
            *scripted->images << image;
        }
        bundle.replace(u'~', m_folder.path());

        // The task keeps what it needs, and lets go of it at its end.
        const std::weak_ptr<DiskImages> inUse = scripted;
        const std::shared_ptr<QStringList> done = scripted->done;
        DiskImageCleanup(std::exchange(scripted, nullptr), bundle, 30ms).start();
        // It waits for a core that nobody else wants.
        QTRY_VERIFY_WITH_TIMEOUT(inUse.expired(), 60'000);
        QTEST(done->join(u';'), "expected");
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_home;
};

METERKIN_TEST(DiskImageCleanupTest);
#include "DiskImageCleanupTest.moc"
