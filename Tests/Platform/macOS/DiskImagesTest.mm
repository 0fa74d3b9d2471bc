#include "Platform/macOS/DiskImages.h"
#include "Platform/macOS/FoundationValues.h"
#include "Support/TestMain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QStringList trashed;

} // namespace

@implementation NSFileManager (Fake)
- (BOOL)trashItemAtURL:(NSURL *)url resultingItemURL:(NSURL **)resultingUrl error:(NSError **)error
{
    trashed << textOf(url.path);
    return NO;
}
@end

/// Over a script in the tool's place, and a real parser of property lists.
class DiskImagesTest : public QObject {
    Q_OBJECT

private slots:
    void listsImages()
    {
        const struct {
            const char *listing;
            const char *expected; // "image=mount point,mount point;..."
        } cases[]{
            {"{images = a;}", "none"},
            {"{images = ({image-path=a; system-entities=();}, b);}", "none"},
            {"{images = ();}", ""},
            {"{images = ({image-path=b; system-entities=({dev-entry=d;});},"
             " {image-path=a; system-entities=({mount-point=\"/1\";}, {mount-point=\"/2\";});});}",
             "b=;a=/1,/2"},
            // A path or entity of another type: its image is left out.
            {"{images = ({image-path=(); system-entities=();},"
             " {image-path=a; system-entities=(2);},"
             " {image-path=c; system-entities=({mount-point=\"/3\";});});}",
             "c=/3"},
            // As the tool writes it.
            {"<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>images</key><array><dict>"
             "<key>blockcount</key><integer>81920</integer><key>image-path</key>"
             "<string>/Gr&#246;&#223;e.dmg</string><key>system-entities</key><array><dict>"
             "<key>mount-point</key><string>/Volumes/Meterkin 1</string></dict></array></dict>"
             "</array></dict></plist>",
             "/Größe.dmg=/Volumes/Meterkin 1"},
        };
        for (const auto &[listing, expected] : cases) {
            // The exit status does not count, and the tool gets no input.
            const QString script = QStringLiteral("cat - <<'END'\n%1\nEND\ncat; exit 3");
            MacDiskImages images(tool(script.arg(QString::fromUtf8(listing))));
            const std::optional<QList<DiskImage>> attached = images.attachedImages();
            QStringList list;
            for (const DiskImage &image : attached.value_or(QList<DiskImage>()))
                list << image.imagePath + u'=' + image.mountPoints.join(u',');
            QCOMPARE(attached ? list.join(u';') : QStringLiteral("none"),
                     QString::fromUtf8(expected));
        }
    }

    void discardsWhatTheToolWasStartedFor()
    {
        const DiskImage image{QStringLiteral("/Größe & more.dmg"), {}};
        MacDiskImages missing(QStringLiteral("/nowhere/hdiutil"));
        QVERIFY(!missing.attachedImages());
        missing.detachAndDiscard(image, QStringLiteral("/Volumes/Meterkin 1"));
        QCOMPARE(trashed, QStringList());

        const QString log = m_folder.filePath(QStringLiteral("log"));
        MacDiskImages busy(tool(QStringLiteral("printf '<%s>' \"$@\" >'%1'; exit 16").arg(log)));
        busy.detachAndDiscard(image, QStringLiteral("/Volumes/Meterkin 1"));
        QFile written(log);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(), QByteArray("<detach></Volumes/Meterkin 1><-quiet>"));
        QCOMPARE(trashed, QStringList{image.imagePath});
    }

private:
    QString tool(const QString &script)
    {
        QFile file(m_folder.filePath(QStringLiteral("tool")));
        file.remove();
        if (file.open(QIODevice::WriteOnly))
            file.write("#!/bin/sh\n" + script.toUtf8());
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return file.fileName();
    }

    QTemporaryDir m_folder;
};

METERKIN_TEST(DiskImagesTest);
#include "DiskImagesTest.moc"
