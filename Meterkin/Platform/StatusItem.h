#pragma once

#include <QColor>
#include <QObject>
#include <QRect>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

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
    /// Belongs to the title that is set next.
    virtual void setAccessibilityLabel(const QString &label) = 0;
    /// The tool tip is asked for whenever somebody reads it: plain text, lines separated by line
    /// feeds.
    virtual void setToolTipSource(std::function<QString()> source) = 0;
    /// Tells that the tool tip may have another text. A tip in sight asks for it.
    virtual void refreshToolTip() = 0;
    /// Where a panel keeps a tool tip, so that it must be told though nobody may look: the shortest
    /// time from one text to the next. Absent where a tip is read when it is shown.
    virtual std::optional<std::chrono::seconds> toolTipPeriod() const = 0;
    /// Where the item is, in logical coordinates of the screens; empty when that is not known.
    virtual QRect geometry() const = 0;

signals:
    /// systemColor() has others now, for the item stands on another background.
    void colorsChanged();
    void clicked();
    void openDashboardRequested();
    void openSettingsRequested();
    void quitRequested();
};
