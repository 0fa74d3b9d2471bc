#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QVariant>

/// A picture on the bus, `(iiibiiay)`: the hint "image-data" of the "Desktop Notifications
/// Specification" of freedesktop.org.
struct NotificationImage {
    int width = 0;
    int height = 0;
    int bytesPerRow = 0;
    bool hasAlpha = true;
    int bitsPerSample = 8;
    int channels = 4;
    QByteArray pixels; ///< red, green, blue and alpha each, from the upper left on
};

QDBusArgument &operator<<(QDBusArgument &argument, const NotificationImage &image);
const QDBusArgument &operator>>(const QDBusArgument &argument, NotificationImage &image);

/// The program's icon for a notification, drawn at each call.
QVariant notificationIcon();
