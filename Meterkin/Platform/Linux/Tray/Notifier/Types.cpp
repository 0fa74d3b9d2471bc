#include "Platform/Linux/Tray/Notifier/Types.h"

#include <QColor>
#include <QDBusMetaType>
#include <QImage>
#include <QtEndian>

#include <algorithm>

NotifierPixmap NotifierPixmap::fromImage(const QImage &image, const QColor &color)
{
    NotifierPixmap pixmap{image.width(), image.height(),
                          QByteArray(image.sizeInBytes(), Qt::Uninitialized)};
    // Lines of 32-bit pixels have no padding.
    const auto *from = reinterpret_cast<const QRgb *>(image.constBits());
    auto *to = reinterpret_cast<quint32 *>(pixmap.data.data());
    const QRgb opaque = color.rgb() & RGB_MASK;
    std::transform(from, from + image.sizeInBytes() / qsizetype(sizeof(QRgb)), to,
                   [opaque](QRgb pixel) {
                       const QRgb alpha = pixel & ~RGB_MASK;
                       return alpha == 0 ? 0 : qToBigEndian<quint32>(alpha | opaque);
                   });
    return pixmap;
}

NotifierPixmap NotifierPixmap::fromImage(const QImage &image)
{
    NotifierPixmap pixmap{image.width(), image.height(),
                          QByteArray(image.sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / qsizetype(sizeof(QRgb)),
                          pixmap.data.data());
    return pixmap;
}

QDBusArgument &operator<<(QDBusArgument &argument, const NotifierPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.data;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.data;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const NotifierToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmap << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, NotifierToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmap >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuLayout &layout)
{
    argument.beginStructure();
    argument << layout.id << layout.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const MenuLayout &child : layout.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLayout &layout)
{
    argument.beginStructure();
    argument >> layout.id >> layout.properties;
    layout.children.clear();
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        layout.children.append(qdbus_cast<MenuLayout>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuProperties &properties)
{
    argument.beginStructure();
    argument << properties.id << properties.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuProperties &properties)
{
    argument.beginStructure();
    argument >> properties.id >> properties.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.event << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.event >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

void registerNotifierTypes()
{
    [[maybe_unused]] static const bool registered = [] {
        qDBusRegisterMetaType<NotifierPixmap>();
        qDBusRegisterMetaType<QList<NotifierPixmap>>();
        qDBusRegisterMetaType<NotifierToolTip>();
        qDBusRegisterMetaType<MenuLayout>();
        qDBusRegisterMetaType<MenuProperties>();
        qDBusRegisterMetaType<QList<MenuProperties>>();
        qDBusRegisterMetaType<MenuEvent>();
        qDBusRegisterMetaType<QList<MenuEvent>>();
        return true;
    }();
}
