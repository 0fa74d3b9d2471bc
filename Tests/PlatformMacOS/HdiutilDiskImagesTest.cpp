#include "Platform/macOS/HdiutilDiskImages.h"
#include "DiskImageCleanup.h"
#include "Fakes/CallLog.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace std::chrono_literals;

namespace {

QVariantMap entity(const char *mountPoint)
{
    return {{QStringLiteral("mount-point"), QString::fromLatin1(mountPoint)}};
}

QVariantMap image(const QVariant &path, const QVariant &entities)
{
    return {{QStringLiteral("image-path"), path}, {QStringLiteral("system-entities"), entities}};
}

QVariantMap listing(const QVariant &images)
{
    return {{QStringLiteral("images"), images}};
}

/// "image=mount point,mount point;...", or "none".
QString summary(const std::optional<QList<DiskImage>> &images)
{
    if (!images)
        return QStringLiteral("none");
    QStringList list;
    for (const DiskImage &one : *images)
        list << one.imagePath + u'=' + one.mountPoints.join(u',');
    return list.join(u';');
}

} // namespace

class HdiutilDiskImagesTest : public QObject {
    Q_OBJECT

private slots:
    void readsListings_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QVariant &value, const char *expected) {
            QTest::newRow(name) << value << QString::fromLatin1(expected);
        };
        const QVariantMap a = image(QStringLiteral("a"), QVariantList{entity("/1"), entity("/2")});
        const QVariantMap b = image(QStringLiteral("b"), QVariantList{entity("/3")});
        row("nothing", QVariant(), "none");
        row("empty", QVariantMap(), "none");
        row("no images", listing(QVariantList()), "");
        row("images of another type", listing(QStringLiteral("a")), "none");
        row("an image of another type", listing(QVariantList{a, QStringLiteral("b")}), "none");
        row("in order", listing(QVariantList{b, a}), "b=/3;a=/1,/2");
        row("path of another type", listing(QVariantList{image(1, QVariantList()), b}), "b=/3");
        row("an entity of another type",
            listing(QVariantList{image(QStringLiteral("a"), QVariantList{entity("/1"), 2}), b}),
            "b=/3");
        row("not mounted",
            listing(
                QVariantList{image(QStringLiteral("a"), QVariantList{QVariantMap(), entity("/1")}),
                             image(QStringLiteral("c"), QVariantList())}),
            "a=/1;c=");
    }
    void readsListings()
    {
        QFETCH(const QVariant, value);
        QTEST(summary(diskImagesOf(value)), "expected");
    }

    void readsTheTool_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *script, const char *expected) {
            QTest::newRow(name) << QString::fromLatin1(script) << QString::fromLatin1(expected);
        };
        row("whatever its exit status", "echo '{images=();}'; exit 3", "");
        row("nothing", "exit 1", "none");
        row("noise is nobody's, nor is there input",
            "echo '{images=('; for end in 0 2; do readlink /proc/$$/fd/$end; done"
            " | grep -v /dev/null; echo ');}'",
            "");
    }
    void readsTheTool()
    {
        QFETCH(const QString, script);
        HdiutilDiskImages images(tool(script));
        QTEST(summary(images.attachedImages()), "expected");
    }

    void withoutTheToolThereIsNothing()
    {
        HdiutilDiskImages images(QStringLiteral("/nowhere/hdiutil"));
        QVERIFY(!images.attachedImages());
        CallLog::take();
        images.detachAndDiscard({QStringLiteral("a.dmg"), {}}, QStringLiteral("/Volumes/Meterkin"));
        QCOMPARE(CallLog::take(), QStringList()); // no trash
    }

    void cleansUp()
    {
        const QDir home = QDir::home();
        const QString bundle = home.filePath(QStringLiteral("Applications/Meterkin.app"));
        QVERIFY(home.mkpath(QStringLiteral("Volumes/Meterkin 1/Meterkin.app")));
        const QString log = m_folder.filePath(QStringLiteral("log"));
        QFile listed(QFINDTESTDATA("Listings/attached-images.plist"));
        QVERIFY(listed.open(QIODevice::ReadOnly));
        const QString text =
            QString::fromUtf8(listed.readAll()).replace(QStringLiteral("@HOME@"), home.path());
        const QString script =
            QStringLiteral("output=$(readlink /proc/$$/fd/1 | grep -o /dev/null)\n"
                           "printf '<%s>' \"$@\" $output >>'%1'\n"
                           "test \"$1\" = info || exit 16\n"
                           "cat <<'END'\n%2\nEND\n")
                .arg(log, text);
        CallLog::take();
        DiskImageCleanup(std::make_shared<HdiutilDiskImages>(tool(script)), bundle, 0ms).start();
        QStringList calls;
        // It waits for a core that nobody else wants.
        QTRY_VERIFY_WITH_TIMEOUT(!(calls += CallLog::take()).isEmpty(), 60'000);
        const QString trashed =
            QStringLiteral("trash ") + home.filePath(QStringLiteral("Downloads/Größe & more.dmg"));
        QCOMPARE(calls, QStringList{trashed});
        QFile written(log);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(written.readAll()),
                 QStringLiteral("<info><-plist><detach><%1><-quiet></dev/null>")
                     .arg(home.filePath(QStringLiteral("Volumes/Meterkin 1"))));
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

METERKIN_TEST(HdiutilDiskImagesTest);
#include "HdiutilDiskImagesTest.moc"
