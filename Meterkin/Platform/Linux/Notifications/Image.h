#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QVariant>

/// A picture as notification servers take it, `(iiibiiay)`.
struct NotificationImage {
    int width = 0;
    int height = 0;
    int bytesPerRow = 0;
    bool hasAlpha = true;
    int bitsPerSample = 8;
    int channels = 4;
    QByteArray pixels; ///< red, green, blue, alpha, from the upper left
};

QDBusArgument &operator<<(QDBusArgument &argument, const NotificationImage &image);
const QDBusArgument &operator>>(const QDBusArgument &argument, NotificationImage &image);

/// The program's icon for a notification, drawn anew at each call.
QVariant notificationIcon();
