#pragma once

#include "Platform/Linux/Tray/FloatingStrip.h"
#include "Platform/Linux/Tray/ItemToolTip.h"
#include "Platform/Linux/Tray/Notifier/Item.h"
#include "Platform/Linux/Tray/PanelColors.h"
#include "Platform/Linux/Tray/TitlePainter.h"
#include "Platform/Linux/Tray/XembedIcon.h"
#include "Platform/StatusItem.h"

#include <QTimer>

#include <memory>

/// The status item of a Linux desktop: picks the best panel there is and moves when panels come,
/// go or are swapped for another kind.
class LinuxStatusItem : public StatusItem {
    Q_OBJECT

public:
    /// All three outlive the item.
    LinuxStatusItem(X11Connection &x11, BusConnection &bus, DefaultsStore &store,
                    QObject *parent = nullptr);
    ~LinuxStatusItem() override;

    bool hasButton() const override { return true; }
    QColor systemColor(SystemColor color) const override { return panelColor(color); }
    void setTitle(const AttributedTitle &title) override;
    void setAccessibilityLabel(const QString &label) override;
    void setToolTip(const QString &text) override;
    QRect geometry() const override;

private:
    void follow(TrayHost &host);
    TrayHost *best();
    void choose();
    void moveTo(TrayHost *host);
    void publish();
    void showMenu(QPoint anchor);
    void perform(MenuAction action);
    void showToolTip(bool inside);

    TitlePainter m_painter;
    XembedIcon m_xembed;
    NotifierItem m_notifier;
    FloatingStrip m_strip;
    TrayHost *m_current = nullptr;
    TrayContent m_content;
    QTimer m_stripDelay;
    QTimer m_publish;
    std::unique_ptr<ItemToolTip> m_toolTip; ///< from the first time the pointer rests on us
};
