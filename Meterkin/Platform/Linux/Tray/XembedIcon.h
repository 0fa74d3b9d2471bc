#pragma once

#include "Platform/Linux/Tray/TitlePainter.h"
#include "Platform/Linux/Tray/Host.h"
#include "Platform/Linux/X11/Picture.h"
#include "Platform/Linux/Tray/XembedManager.h"

#include <QTimer>

/// The tray of X11 panels: a small window of ours that lives inside the panel's. Wide coloured text
/// where the panel grants the width, a stacked square where it does not.
class XembedIcon : public TrayHost {
    Q_OBJECT

public:
    /// The connection outlives the tray and may be closed.
    XembedIcon(X11Connection &connection, TitlePainter &painter, QObject *parent = nullptr);
    ~XembedIcon() override;

    bool isAvailable() const override;
    void attach() override;
    void detach() override;
    void setContent(const TrayContent &content) override;
    QRect geometry() const override;

    /// Whether this tray has turned out to squeeze every item into a square.
    bool isSqueezed() const { return m_squeezed; }

signals:
    void squeezedChanged();
    /// The pointer has come over the item or left it.
    void hoverChanged(bool inside);

private:
    void handleEvent(const xcb_generic_event_t *event);
    void handleButton(const xcb_button_press_event_t &event, bool released);
    void handleReparent(const xcb_reparent_notify_event_t &event);
    void handleConfigure(const xcb_configure_notify_event_t &event);
    void handleLoss();
    void handleManager();
    void createWindow();
    void forgetWindow();
    void requestDock();
    void requestSize();
    void writeNames();
    void settle();
    void setRefused(bool refused);
    int wantedWidth() const;
    double scale() const;
    void paint();

    X11Connection &m_connection;
    TitlePainter &m_painter;
    XembedManager m_manager;
    TrayContent m_content;

    bool m_refused = false; ///< this panel did not take the item
    bool m_squeezed = false;

    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_colormap_t m_colormap = XCB_NONE;
    X11Picture m_picture;
    QSize m_size; ///< device pixels, as granted
    QSize m_requestedSize;
    bool m_embedded = false;
    bool m_pressed = false;
    QTimer m_settleTimer;
    QTimer m_retryTimer;
};
