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
    // A program that lies loose in there, or as part of a tree, has no bundle. The folder's name
    // must not stand in for one: many an image carries that name, and is no left-over of ours.
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
            // An image that is mounted where we run from is no left-over.
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
