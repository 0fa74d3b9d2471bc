#include "Platform/Linux/Notifications/Image.h"

#include "Views/ApplicationIcon.h"

#include <QDBusMetaType>
#include <QImage>
#include <QPainter>

namespace {

constexpr int Side = 64; // pixels: few servers show more

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const NotificationImage &image)
{
    argument.beginStructure();
    argument << image.width << image.height << image.bytesPerRow << image.hasAlpha
             << image.bitsPerSample << image.channels << image.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, NotificationImage &image)
{
    argument.beginStructure();
    argument >> image.width >> image.height >> image.bytesPerRow >> image.hasAlpha
        >> image.bitsPerSample >> image.channels >> image.pixels;
    argument.endStructure();
    return argument;
}

QVariant notificationIcon()
{
    qDBusRegisterMetaType<NotificationImage>();
    QImage image(Side, Side, QImage::Format_RGBA8888_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawApplicationIcon(painter, image.rect());
    painter.end();
    image.convertTo(QImage::Format_RGBA8888);
    return QVariant::fromValue(
        NotificationImage{.width = image.width(),
                          .height = image.height(),
                          .bytesPerRow = static_cast<int>(image.bytesPerLine()),
                          .pixels = QByteArray(reinterpret_cast<const char *>(image.constBits()),
                                               image.sizeInBytes())});
}
