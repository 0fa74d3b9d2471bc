#pragma once

#include "Platform/DiskImages.h"

#include <QVariant>

/// The disk images that the system's own tool for them lists and detaches. A tool that hangs is
/// waited for without end: on the background thread, which nobody waits for.
class HdiutilDiskImages : public DiskImages {
public:
    /// The tool's absolute path.
    explicit HdiutilDiskImages(QString tool = QStringLiteral("/usr/bin/hdiutil"));

    std::optional<QList<DiskImage>> attachedImages() override;
    bool holdsBundle(const QString &mountPoint, const QString &name) override;
    void detachAndDiscard(const DiskImage &image, const QString &mountPoint) override;

private:
    QString m_tool;
};

/// The images in a property list of the tool's, in its order. An image without a path, or whose
/// volumes cannot be told, is left out; nothing when there is no list of images.
std::optional<QList<DiskImage>> diskImagesOf(const QVariant &listing);
