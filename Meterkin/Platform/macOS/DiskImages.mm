#include "Platform/macOS/DiskImages.h"

#include "Platform/Log.h"
#include "Platform/macOS/FoundationValues.h"

#include <QFileInfo>
#include <QProcess>
#include <QVariantMap>

#include <utility>

namespace {

constexpr int NoTimeLimit = -1;

std::optional<QString> textAt(const QVariantMap &dictionary, const QString &key)
{
    const QVariant value = dictionary.value(key);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

/// Absent when one element is no dictionary.
std::optional<QList<QVariantMap>> dictionariesAt(const QVariantMap &dictionary, const QString &key)
{
    const QVariant value = dictionary.value(key);
    if (value.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    QList<QVariantMap> dictionaries;
    for (const QVariant &element : value.toList()) {
        if (element.typeId() != QMetaType::QVariantMap)
            return std::nullopt;
        dictionaries << element.toMap();
    }
    return dictionaries;
}

/// In any of the system's formats; invalid when it cannot be parsed.
QVariant propertyList(const QByteArray &data)
{
    @autoreleasepool {
        NSData *bytes = [NSData dataWithBytes:data.constData()
                                       length:static_cast<NSUInteger>(data.size())];
        return valueOf([NSPropertyListSerialization propertyListWithData:bytes
                                                                 options:0
                                                                  format:nullptr
                                                                   error:nullptr]);
    }
}

/// In the listing's order. Absent when it has no list of images; an image without a path, or whose
/// list of volumes is damaged, is left out.
std::optional<QList<DiskImage>> diskImagesOf(const QVariant &listing)
{
    if (listing.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    const auto images = dictionariesAt(listing.toMap(), QStringLiteral("images"));
    if (!images)
        return std::nullopt;
    QList<DiskImage> attached;
    for (const QVariantMap &image : *images) {
        const auto path = textAt(image, QStringLiteral("image-path"));
        const auto entities = dictionariesAt(image, QStringLiteral("system-entities"));
        if (!path || !entities)
            continue;
        DiskImage found{*path, {}};
        for (const QVariantMap &entity : *entities) {
            if (const auto mountPoint = textAt(entity, QStringLiteral("mount-point")))
                found.mountPoints << *mountPoint;
        }
        attached << found;
    }
    return attached;
}

/// A file that cannot be moved stays where it is.
void moveFileToTrash(const QString &path)
{
    @autoreleasepool {
        if (![NSFileManager.defaultManager
                  trashItemAtURL:[NSURL fileURLWithPath:foundationText(path)]
                resultingItemURL:nullptr
                           error:nullptr])
            qCWarning(logStorage) << path << "could not be moved to the Trash and stays";
    }
}

} // namespace

MacDiskImages::MacDiskImages(QString tool)
    : m_tool(std::move(tool))
{
}

std::optional<QList<DiskImage>> MacDiskImages::attachedImages()
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(m_tool, {QStringLiteral("info"), QStringLiteral("-plist")}, QIODevice::ReadOnly);
    if (!process.waitForStarted(NoTimeLimit)) {
        qCDebug(logStorage) << m_tool << "cannot be started:" << process.errorString();
        return std::nullopt;
    }
    process.waitForFinished(NoTimeLimit);
    return diskImagesOf(propertyList(process.readAllStandardOutput()));
}

bool MacDiskImages::holdsBundle(const QString &mountPoint, const QString &name)
{
    return QFileInfo::exists(mountPoint + u'/' + name);
}

void MacDiskImages::detachAndDiscard(const DiskImage &image, const QString &mountPoint)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(m_tool, {QStringLiteral("detach"), mountPoint, QStringLiteral("-quiet")},
                  QIODevice::ReadOnly);
    if (!process.waitForStarted(NoTimeLimit))
        return;
    process.waitForFinished(NoTimeLimit);
    if (process.exitCode() != 0)
        qCWarning(logStorage) << m_tool << "did not detach" << mountPoint;
    moveFileToTrash(image.imagePath);
}
