#pragma once

#include "Platform/DiskImages.h"

/// Disk images through `hdiutil`. There is no timeout: a tool that hangs blocks only the background
/// thread, which nothing waits for.
class MacDiskImages : public DiskImages {
public:
    /// The tool's absolute path.
    explicit MacDiskImages(QString tool = QStringLiteral("/usr/bin/hdiutil"));

    std::optional<QList<DiskImage>> attachedImages() override;
    bool holdsBundle(const QString &mountPoint, const QString &name) override;
    void detachAndDiscard(const DiskImage &image, const QString &mountPoint) override;

private:
    QString m_tool;
};
