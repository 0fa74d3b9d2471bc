#pragma once

#include <QColor>
#include <QObject>
#include <QRect>
#include <QString>

/// The colours by which a system marks what is good, doubtful and bad.
enum class SystemColor { Green, Yellow, Red };

/// The title in the menu bar or panel: the system font with digits of one width, 12 points, medium.
struct AttributedTitle {
    static constexpr int FontSize = 12; ///< logical pixels

    QString text;
    QColor color;
    /// The widest text to be expected here: hosts keep its width free, so that neighbours stay put.
    QString widestText;

    bool operator==(const AttributedTitle &) const = default;
};

/// The program's item in the menu bar or panel. Main thread only. While there is no panel the last
/// values are kept and shown as soon as there is one.
class StatusItem : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// False when the system gives an item without a button; nothing can be shown or clicked then.
    virtual bool hasButton() const = 0;
    /// As the system has it on the item's background just now, in device RGB.
    virtual QColor systemColor(SystemColor color) const = 0;
    virtual void setTitle(const AttributedTitle &title) = 0;
    virtual void setAccessibilityLabel(const QString &label) = 0;
    /// Plain text, lines separated by line feeds.
    virtual void setToolTip(const QString &text) = 0;
    /// Where the item is, in logical coordinates of the screens; empty when that is not known.
    virtual QRect geometry() const = 0;

signals:
    void clicked();
    void openDashboardRequested();
    void openSettingsRequested();
    void quitRequested();
};
