#pragma once

#include <QColor>
#include <QImage>
#include <QObject>
#include <QString>

/// The colours that a system has for what the views show. An invalid one leaves it to the views.
struct SystemColors {
    Q_GADGET
    Q_PROPERTY(QColor windowBackground MEMBER windowBackground FINAL)
    Q_PROPERTY(QColor controlBackground MEMBER controlBackground FINAL)
    Q_PROPERTY(QColor primary MEMBER primary FINAL)
    Q_PROPERTY(QColor secondary MEMBER secondary FINAL)
    Q_PROPERTY(QColor separator MEMBER separator FINAL)
    Q_PROPERTY(QColor accent MEMBER accent FINAL)
    Q_PROPERTY(QColor textOnAccent MEMBER textOnAccent FINAL)
    Q_PROPERTY(QColor orange MEMBER orange FINAL)
    Q_PROPERTY(QColor green MEMBER green FINAL)
    Q_PROPERTY(QColor yellow MEMBER yellow FINAL)
    Q_PROPERTY(QColor red MEMBER red FINAL)

public:
    QColor windowBackground;
    QColor controlBackground; ///< of what one types or chooses in
    QColor primary; ///< texts
    QColor secondary; ///< dimmed texts
    QColor separator;
    QColor accent;
    QColor textOnAccent;
    QColor orange;
    QColor green;
    QColor yellow;
    QColor red;

    bool operator==(const SystemColors &) const = default;
};

/// How the desktop wants programs to look. Main thread only.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    virtual bool isDark() const = 0;
    /// The factor by which texts are to be larger than designed, beyond the scale of the screen.
    virtual double textScale() const = 0;

    /// Whether the reader asks for less motion. Not by default.
    virtual bool reducesMotion() const { return false; }

    /// As they look now. None by default.
    virtual SystemColors systemColors() const { return {}; }

    /// The system's drawing of a symbol, beside a text of that many points and that weight: a
    /// stencil, whose opacity counts and whose colours do not, with `scale` pixels a point set as
    /// its device pixel ratio. Null where the system does not have that symbol.
    virtual QImage symbol(const QString &name, double pointSize, bool isSemibold,
                          double scale) const
    {
        Q_UNUSED(name)
        Q_UNUSED(pointSize)
        Q_UNUSED(isSemibold)
        Q_UNUSED(scale)
        return {};
    }

signals:
    void changed();
};
