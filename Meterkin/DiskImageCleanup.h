#pragma once

#include <QString>

#include <chrono>
#include <memory>

class DiskImages;

/// Gets rid of the disk image that the program was installed from: detaches it and moves its file
/// to the Trash. Every failure is silent. Main thread only.
class DiskImageCleanup {
public:
    /// Without images nothing is ever done. `wait` keeps the work out of the start's way.
    DiskImageCleanup(std::shared_ptr<DiskImages> images, const QString &bundlePath,
                     std::chrono::milliseconds wait = std::chrono::seconds(8));

    /// Returns at once; the work is done in the background, and nobody waits for it: it outlives
    /// this object, and ends wherever it is when the program ends.
    void start();

private:
    std::shared_ptr<DiskImages> m_images;
    QString m_bundlePath;
    std::chrono::milliseconds m_wait;
};
