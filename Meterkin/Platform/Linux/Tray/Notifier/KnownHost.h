#pragma once

#include <QString>

/// How a panel shows an item.
enum class NotifierHostKind {
    Wide, ///< keeps the aspect ratio of a picture
    Label, ///< shows XAyatanaLabel beside the picture
    Square, ///< squeezes every picture into a square
    Titled, ///< the same, and shows the item's name instead of its tool tip
    Premultiplied, ///< a square, and takes its colours for multiplied by their alpha
};

/// What a panel puts behind an item.
enum class NotifierBackground {
    Unknown,
    Black,
    AsDesktop, ///< dark or light as the desktop's colour scheme
    AsPlasmaTheme,
};

/// What is known of a panel.
struct NotifierHost {
    NotifierHostKind kind = NotifierHostKind::Square;
    NotifierBackground background = NotifierBackground::Unknown;
};

/// The panel whose process has that name, as the kernel gives it; a plain square for others.
NotifierHost notifierHost(const QString &process);
