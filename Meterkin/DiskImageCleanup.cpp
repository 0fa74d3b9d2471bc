#include "DiskImageCleanup.h"

#include "Platform/DiskImages.h"

#include <QDir>
#include <QThread>

#include <optional>
#include <thread>
#include <utility>

namespace {

bool isInstalled(const QString &bundlePath)
{
    const QString everybodys = QStringLiteral("/Applications");
    const QString own = QDir::home().filePath(QStringLiteral("Applications"));
    // A program that is not in a bundle must not be taken for one by its folder's name: disk images
    // of other programs may have that name.
    if (bundlePath == everybodys || bundlePath == own || bundlePath.endsWith(u"/bin"))
        return false;
    return bundlePath.startsWith(everybodys) || bundlePath.startsWith(own);
}

void discardSourceImage(DiskImages &images, const QString &bundlePath)
{
    const QString name = bundlePath.section(u'/', -1);
    const std::optional<QList<DiskImage>> attached = images.attachedImages();
    if (!attached)
        return;
    for (const DiskImage &image : *attached) {
        for (const QString &mountPoint : image.mountPoints) {
            // The image that the program runs from is still needed.
            if (mountPoint + u'/' + name != bundlePath && images.holdsBundle(mountPoint, name)) {
                images.detachAndDiscard(image, mountPoint);
                return;
            }
        }
    }
}

} // namespace

DiskImageCleanup::DiskImageCleanup(std::shared_ptr<DiskImages> images, const QString &bundlePath,
                                   std::chrono::milliseconds wait)
    : m_images(std::move(images))
    , m_bundlePath(bundlePath)
    , m_wait(wait)
{
}

void DiskImageCleanup::start()
{
    if (!m_images || !isInstalled(m_bundlePath))
        return;
    QThread *worker = QThread::create([images = m_images, path = m_bundlePath, wait = m_wait] {
        std::this_thread::sleep_for(wait);
        discardSourceImage(*images, path);
    });
    QObject::connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start(QThread::IdlePriority);
}
