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

    /// Whether the means to detach were there at all, which does not say that it worked.
    virtual bool detach(const QString &mountPoint) = 0;

    /// Moves an image's file to the user's Trash. Where that is impossible the file stays: it is
    /// never deleted, nor copied.
    virtual void moveToTrash(const QString &imagePath) = 0;
};
