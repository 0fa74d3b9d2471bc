#pragma once

#include <QString>

#include <chrono>
#include <memory>

class DiskImages;

/// Gets rid of the disk image that the program was installed from: detaches it and moves its file
/// to the Trash. Every failure is silent. Main thread only.
class DiskImageCleanup {
public:
    /// Without images nothing is ever done. `wait` keeps the start fast.
    DiskImageCleanup(std::shared_ptr<DiskImages> images, const QString &bundlePath,
                     std::chrono::milliseconds wait = std::chrono::seconds(8));

    /// Returns at once. The work is done in the background, may outlive this object, and is
    /// abandoned when the program ends.
    void start();

private:
    std::shared_ptr<DiskImages> m_images;
    QString m_bundlePath;
    std::chrono::milliseconds m_wait;
};
