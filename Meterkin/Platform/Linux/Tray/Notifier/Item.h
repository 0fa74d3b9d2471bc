#pragma once

#include "Platform/Linux/Tray/Host.h"
#include "Platform/Linux/Tray/Notifier/Address.h"
#include "Platform/Linux/Tray/Notifier/Interface.h"
#include "Platform/Linux/Tray/Notifier/Menu.h"
#include "Platform/Linux/Tray/Notifier/Watcher.h"
#include "Platform/Linux/Tray/Title/Painter.h"

#include <QElapsedTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// The tray of panels that support org.kde.StatusNotifierItem. Main thread only.
class NotifierItem : public TrayHost {
    Q_OBJECT

public:
    /// Bus and painter outlive the item.
    NotifierItem(BusConnection &bus, TitlePainter &painter, QObject *parent = nullptr);
    ~NotifierItem() override;

    bool isAvailable() const override;
    void attach() override;
    void detach() override;
    void setContent(const TrayContent &content) override;
    /// A small rectangle around the last click, if the panel gave a place on a screen.
    QRect geometry() const override;
    std::optional<QColor> background(std::optional<bool> isDesktopDark) const override;

    /// Asked for when a panel reads the tool tip.
    void setToolTipSource(std::function<QString()> source) { m_toolTipSource = std::move(source); }
    void refreshToolTip();
    /// Absent where the panel shows no tool tips.
    std::optional<std::chrono::seconds> toolTipPeriod() const;

private:
    void handleWatcher();
    void updateAvailability();
    void present();
    void registerWithPanel();
    void checkPresence(const QStringList &items);
    bool isIn(const QStringList &items) const;
    void handleFailure(const QString &reason);
    void withdraw();

    BusConnection &m_bus;
    TitlePainter &m_painter;
    NotifierWatcher m_watcher;
    TrayContent m_content;
    std::function<QString()> m_toolTipSource = [] { return QString(); };
    bool m_attached = false;
    bool m_wasAvailable = false; ///< when availabilityChanged() was last emitted

    // One presentation to one panel: two objects, and a bus name where panels find them by that.
    std::optional<NotifierAddress> m_address; ///< absent while there is none
    bool m_isRegistered = false;
    QElapsedTimer m_age;
    std::unique_ptr<NotifierInterface> m_interface;
    std::unique_ptr<NotifierMenu> m_menu;
    QString m_presentedTo; ///< the panel's unique bus name
    QString m_refusedBy; ///< the unique bus name of a panel that does not take the item, for now
    QString m_warnedAbout; ///< the one that the last warning is about
    bool m_wasListed = false; ///< by that panel, so that its list can be relied on
    int m_failures = 0; ///< in a row
    QTimer m_presenceCheck;
    QTimer m_retry;
    RetryTimer m_refusalRetry; ///< for a panel that never took the item
    std::optional<QPoint> m_clickedAt; ///< as the panel gave it
};
