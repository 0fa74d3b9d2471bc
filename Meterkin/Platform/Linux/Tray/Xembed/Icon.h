#pragma once

#include "Platform/Linux/Tray/Host.h"
#include "Platform/Linux/Tray/Title/Painter.h"
#include "Platform/Linux/Tray/Xembed/Window.h"

#include <QDeadlineTimer>
#include <QTimer>

/// The tray of X11 panels: wide coloured text where the panel grants the width, a stacked square
/// where it does not.
class XembedIcon : public TrayHost {
    Q_OBJECT

public:
    /// The connection outlives the tray and may be closed.
    XembedIcon(X11Connection &connection, TitlePainter &painter, QObject *parent = nullptr);
    ~XembedIcon() override;

    bool isAvailable() const override;
    bool isSqueezed() const override { return m_isSqueezed; }
    void attach() override;
    void detach() override;
    void setContent(const TrayContent &content) override;
    QRect geometry() const override;
    std::optional<QColor> background(std::optional<bool>) const override { return m_background; }
    /// A little later.
    void lookAgain() override;

private:
    void handleEvent(const xcb_generic_event_t *event);
    void handleButton(const xcb_button_press_event_t &event, bool isRelease);
    void handleReparent(const xcb_reparent_notify_event_t &event);
    void handleConfigure(const xcb_configure_notify_event_t &event);
    void handleLoss();
    void handleManager();
    void requestSize();
    void settle();
    void setRefused(bool isRefused);
    QSize wantedSize() const;
    void readBackground();
    double scale() const;
    void paint();

    X11Connection &m_connection;
    TitlePainter &m_painter;
    XembedManager m_manager;
    TrayContent m_content;

    bool m_isRefused = false; ///< by this panel, for now
    int m_refusals = 0; ///< by this panel in a row
    bool m_isSqueezed = false;

    XembedWindow m_window;
    QSize m_size; ///< device pixels, as granted
    std::optional<QColor> m_background; ///< of the panel, once it was looked at
    QDeadlineTimer m_nextLook;
    bool m_isEmbedded = false;
    bool m_isPressed = false;
    QTimer m_settleTimer;
    QTimer m_retryTimer;
};
