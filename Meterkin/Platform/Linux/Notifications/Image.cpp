#include "Platform/Linux/Notifications/Image.h"

#include <QDBusMetaType>
#include <QImage>
#include <QImageReader>

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
    // Through Qt's plugin, since Qt Svg is not worth linking for a picture that is rarely sent.
    QImageReader reader(QStringLiteral(":/icons/org.meterkin.Meterkin.svg"));
    reader.setScaledSize({Side, Side});
    const QImage image = reader.read().convertToFormat(QImage::Format_RGBA8888);
    return QVariant::fromValue(
        NotificationImage{.width = image.width(),
                          .height = image.height(),
                          .bytesPerRow = static_cast<int>(image.bytesPerLine()),
                          .pixels = QByteArray(reinterpret_cast<const char *>(image.constBits()),
                                               image.sizeInBytes())});
}
