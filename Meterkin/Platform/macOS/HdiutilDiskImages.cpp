#include "Platform/macOS/HdiutilDiskImages.h"

#include "Platform/macOS/PropertyList.h"
#include "Platform/macOS/Trash.h"

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

/// A single element of another kind spoils the list.
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

} // namespace

HdiutilDiskImages::HdiutilDiskImages(QString tool)
    : m_tool(std::move(tool))
{
}

std::optional<QList<DiskImage>> HdiutilDiskImages::attachedImages()
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(m_tool, {QStringLiteral("info"), QStringLiteral("-plist")}, QIODevice::ReadOnly);
    if (!process.waitForStarted(NoTimeLimit))
        return std::nullopt;
    process.waitForFinished(NoTimeLimit);
    return diskImagesOf(propertyList(process.readAllStandardOutput()));
}

bool HdiutilDiskImages::holdsBundle(const QString &mountPoint, const QString &name)
{
    return QFileInfo::exists(mountPoint + u'/' + name);
}

void HdiutilDiskImages::detachAndDiscard(const DiskImage &image, const QString &mountPoint)
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
    moveFileToTrash(image.imagePath);
}

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
