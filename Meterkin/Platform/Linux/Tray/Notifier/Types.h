#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QString>
#include <QVariantMap>

class QColor;
class QImage;

// From the "StatusNotifierItem" specification of freedesktop.org and from com.canonical.dbusmenu.

/// A picture on the bus, `(iiay)`: non-premultiplied ARGB32 in network byte order.
struct NotifierPixmap {
    int width = 0; ///< device pixels
    int height = 0;
    QByteArray data;

    /// Of premultiplied ARGB in one colour, as TitlePainter draws it: only the alpha is read, which
    /// is much less work than to divide the colour by it.
    static NotifierPixmap fromImage(const QImage &image, const QColor &color);
    /// Premultiplied as it is, for panels that do not multiply.
    static NotifierPixmap fromImage(const QImage &image);
};

/// A tool tip on the bus, `(sa(iiay)ss)`.
struct NotifierToolTip {
    QString iconName;
    QList<NotifierPixmap> iconPixmap;
    QString title;
    QString text; ///< with the protocol's markup
};

/// A menu entry with its children, `(ia{sv}av)`.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};

/// A menu entry alone, `(ia{sv})`.
struct MenuProperties {
    int id = 0;
    QVariantMap properties;
};

/// An event of a menu entry, `(isvu)`.
struct MenuEvent {
    int id = 0;
    QString event;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const NotifierPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const NotifierToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierToolTip &toolTip);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuLayout &layout);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLayout &layout);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuProperties &properties);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuProperties &properties);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event);

/// Registers the types above with Qt's D-Bus module; cheap after the first time.
void registerNotifierTypes();
