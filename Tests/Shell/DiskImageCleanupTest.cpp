#include "DiskImageCleanup.h"
#include "Platform/DiskImages.h"
#include "Support/TestMain.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;
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
    void findsTheImageItCameFrom()
    {
        const QString found = u"list;a=Meterkin"_s;
        const QString both = u"a=Meterkin;b=Meterkin.AppImage"_s;
        // The bundle, "~" being the home folder; "image=mount point,mount point;..."; what is done.
        for (auto [bundle, images, expected] :
             {std::tuple(u"/Applications/Meterkin"_s, both, found),
              {u"~/Applications2/Meterkin"_s, both, found}, // the user's, or what begins so
              {u"/opt/Meterkin"_s, both, u""_s},
              {u"~/Applications"_s, u"a=Applications"_s, u""_s}, // loose in the folder
              {u"~/Applications/meterkin/bin"_s, u"a=bin"_s, u""_s}, // in a tree
              {u"~/Applications/Meterkin/Meterkin"_s, u"a=Applications/Meterkin"_s, u"list"_s},
              {u"/Applications/Meterkin.AppImage"_s, both, u"list;b=Meterkin.AppImage"_s}, // a file
              {u"/Applications/meterkin"_s, both, u"list"_s}, // another name
              {u"/Applications/Meterkin"_s, u"b=;c=Other;a=Other,Meterkin"_s, found},
              {u"/Applications/Meterkin"_s, u"cannot be listed"_s, u"list"_s}}) {
            auto scripted = std::make_shared<ScriptedImages>();
            if (images.contains(u'='))
                scripted->images.emplace();
            static const QRegularExpression imageForm(u"(\\w+)=([^;]*)"_s);
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
            QCOMPARE(done->join(u';'), expected);
        }
    }
};

METERKIN_TEST(DiskImageCleanupTest);
#include "DiskImageCleanupTest.moc"
