#pragma once

#include "Platform/DesktopAppearance.h"

#include <QGuiApplication>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

/// The desktop's look, as far as the views need it. One for each ViewEngine. Main thread only.
class Appearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark NOTIFY darkChanged BINDABLE bindableDark FINAL)
    Q_PROPERTY(
        double textScale READ textScale NOTIFY textScaleChanged BINDABLE bindableTextScale FINAL)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY reducesMotionChanged BINDABLE
                   bindableReducesMotion FINAL)
    Q_PROPERTY(bool mirrored READ isMirrored CONSTANT FINAL)
    Q_PROPERTY(SystemColors systemColors READ systemColors NOTIFY systemColorsChanged BINDABLE
                   bindableSystemColors FINAL)

public:
    // No default constructor: QML would use it rather than create().
    explicit Appearance(QObject *parent)
        : QObject(parent)
    {
    }

    /// Called by QML: gives the instance of the engine.
    static Appearance *create(QQmlEngine *engine, QJSEngine *);

    /// Takes everything from there, now and whenever it changes.
    void follow(const DesktopAppearance &desktop);

    bool isDark() const { return m_dark; }
    void setDark(bool dark) { m_dark = dark; }
    QBindable<bool> bindableDark() const { return &m_dark; }

    /// The factor by which texts are larger than designed.
    double textScale() const { return m_textScale; }
    void setTextScale(double scale) { m_textScale = scale; }
    QBindable<double> bindableTextScale() const { return &m_textScale; }

    /// Whether animations that only decorate are left out.
    bool reducesMotion() const { return m_reducesMotion; }
    void setReducesMotion(bool reduces) { m_reducesMotion = reduces; }
    QBindable<bool> bindableReducesMotion() const { return &m_reducesMotion; }

    /// Whether the user's language is written from right to left.
    bool isMirrored() const { return QGuiApplication::isRightToLeft(); }

    SystemColors systemColors() const { return m_systemColors; }
    QBindable<SystemColors> bindableSystemColors() const { return &m_systemColors; }

    /// See DesktopAppearance. Null, too, without a desktop to follow.
    QImage symbol(const QString &name, double pointSize, bool isSemibold, double scale) const;

signals:
    void darkChanged();
    void textScaleChanged();
    void reducesMotionChanged();
    void systemColorsChanged();

private:
    void take();

    QPointer<const DesktopAppearance> m_desktop;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Appearance, bool, m_dark, false, &Appearance::darkChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Appearance, double, m_textScale, 1.0,
                                         &Appearance::textScaleChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Appearance, bool, m_reducesMotion, false,
                                         &Appearance::reducesMotionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Appearance, SystemColors, m_systemColors,
                               &Appearance::systemColorsChanged)
};
