#include "DiskImageCleanup.h"

DiskImageCleanup::DiskImageCleanup(DiskImages *images, const QString &bundlePath)
    : m_images(images)
    , m_bundlePath(bundlePath)
{
}

void DiskImageCleanup::start() { }
