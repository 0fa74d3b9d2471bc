#pragma once

#include <QString>

class DiskImages;

/// Gets rid of the disk image that the program was installed from: detaches it and moves its file
/// to the Trash. Every failure is silent. Main thread only.
class DiskImageCleanup {
public:
    /// Without images nothing is ever done; those that are given outlive the program's end.
    DiskImageCleanup(DiskImages *images, const QString &bundlePath);

    /// Returns at once; the work is done in the background.
    void start();

private:
    DiskImages *m_images;
    QString m_bundlePath;
};
