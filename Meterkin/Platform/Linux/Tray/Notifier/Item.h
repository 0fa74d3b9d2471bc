#pragma once

#include "Platform/Linux/Tray/Notifier/Interface.h"
#include "Platform/Linux/Tray/Notifier/Menu.h"
#include "Platform/Linux/Tray/Notifier/Watcher.h"
#include "Platform/Linux/Tray/TitlePainter.h"
#include "Platform/Linux/Tray/Host.h"

#include <memory>
#include <optional>

/// The tray of panels that speak org.kde.StatusNotifierItem.
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
    /// A small rectangle where the item was last clicked, if the panel told a believable place.
    QRect geometry() const override;

private:
    void handleWatcher();
    void updateAvailability();
    void present();
    void registerWithPanel();
    void handleFailure();
    void withdraw();

    BusConnection &m_bus;
    TitlePainter &m_painter;
    NotifierWatcher m_watcher;
    TrayContent m_content;
    bool m_attached = false;
    bool m_wasAvailable = false; ///< as last told

    // One presentation to one panel: a bus name with two objects.
    QString m_name; ///< empty while there is none
    std::unique_ptr<NotifierInterface> m_interface;
    std::unique_ptr<NotifierMenu> m_menu;
    QString m_presentedTo; ///< the panel's unique bus name
    QString m_refusedBy; ///< the unique bus name of a panel that has not taken the item, for now
    int m_failures = 0;
    QTimer m_retry;
    RetryTimer m_nextChance; ///< for a panel that never took the item
    std::optional<QPoint> m_clickedAt; ///< as the panel gave it
};
