#pragma once

#include "Platform/Linux/Display/DesktopAppearance.h"
#include "Platform/Linux/Tray/FloatingStrip.h"
#include "Platform/Linux/Tray/ItemToolTip.h"
#include "Platform/Linux/Tray/MissingPanelNotice.h"
#include "Platform/Linux/Tray/Notifier/Item.h"
#include "Platform/Linux/Tray/Title/Color.h"
#include "Platform/Linux/Tray/Title/Painter.h"
#include "Platform/StatusItem.h"

#include <QTimer>

#include <array>
#include <memory>

class DisplayServer;

/// The status item of a Linux desktop: sits in the best host there is, and moves when panels start,
/// end or are replaced by another kind.
class LinuxStatusItem : public StatusItem {
    Q_OBJECT

public:
    /// All of them outlive the item.
    LinuxStatusItem(DisplayServer &displayServer, BusConnection &bus, DefaultsStore &store,
                    const LinuxDesktopAppearance &appearance, NotificationCentre &notifications,
                    QObject *parent = nullptr);
    ~LinuxStatusItem() override;

    bool hasButton() const override { return true; }
    QColor systemColor(SystemColor color) const override;
    void setTitle(const AttributedTitle &title) override;
    void setAccessibilityLabel(const QString &label) override;
    void setToolTipSource(std::function<QString()> source) override;
    void refreshToolTip() override;
    std::optional<std::chrono::seconds> toolTipPeriod() const override;
    QRect geometry() const override;

private:
    /// A host, or none, and why, for the log.
    struct Choice {
        TrayHost *host;
        const char *reason;
    };

    void follow(TrayHost &host);
    Choice best();
    void choose();
    void moveTo(const Choice &choice);
    void updateBackground();
    void showMenu(QPoint anchor);
    void perform(MenuAction action);
    void showToolTip(bool isInside);

    DisplayServer &m_displayServer;
    const LinuxDesktopAppearance &m_appearance;
    TitlePainter m_painter;
    const std::unique_ptr<TrayHost> m_x11Tray; ///< null without X11
    NotifierItem m_notifier;
    FloatingStrip m_strip;
    TrayHost *m_current = nullptr;
    std::optional<QColor> m_background; ///< what the item stands on, where that is known
    std::array<QColor, 3> m_colors = titleColors({}); ///< on it, by SystemColor
    TrayContent m_content;
    std::function<QString()> m_toolTipSource;
    QTimer m_stripDelay;
    MissingPanelNotice m_notice;
    std::unique_ptr<ItemToolTip> m_toolTip; ///< from the first time that the pointer rests on it
};
