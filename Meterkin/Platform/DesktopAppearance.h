#pragma once

#include <QObject>

/// How the desktop wants programs to look. Main thread only.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    virtual bool isDark() const = 0;
    /// The factor by which texts are to be larger than designed, beyond the scale of the screen.
    virtual double textScale() const = 0;

signals:
    void changed();
};
