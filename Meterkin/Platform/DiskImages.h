#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// A disk image that is attached to the system.
struct DiskImage {
    QString imagePath; ///< the image's file
    QStringList mountPoints; ///< of those of its volumes that are mounted

    bool operator==(const DiskImage &) const = default;
};

/// The system's attached disk images. Called on a background thread, and may block there. Whoever
/// uses them shares their ownership, since a call may still hang when the program ends.
class DiskImages {
public:
    virtual ~DiskImages() = default;

    /// In the system's own order; nothing when they cannot be told.
    virtual std::optional<QList<DiskImage>> attachedImages() = 0;

    /// Whether what the program was installed from lies at the top of a mounted volume, by the name
    /// of the bundle.
    virtual bool holdsBundle(const QString &mountPoint, const QString &name) = 0;

    /// Detaches an image by one of its mount points and then, whatever became of that, moves its
    /// file to the user's Trash. Without any means to detach nothing is touched. A file that cannot
    /// be moved stays where it is: it is never deleted, nor copied.
    virtual void detachAndDiscard(const DiskImage &image, const QString &mountPoint) = 0;
};
