#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/Linux/Plugins/LayerShell.h"
#include "Platform/Linux/Tray/Host.h"
#include "Platform/Linux/Tray/PanelWindow.h"
#include "Platform/Linux/Tray/Title/Painter.h"

#include <QPointer>
#include <QScreen>

#include <memory>
#include <optional>

/// The host of last resort, in a session without any tray: a small strip at the screen's edge. It
/// never takes the keyboard focus, stays below full-screen windows, and can be dragged out of the
/// way; its position is remembered. On Wayland it needs a layer shell: any other window would take
/// the focus, and appear anywhere. Main thread only.
class FloatingStrip : public TrayHost {
    Q_OBJECT

public:
    FloatingStrip(TitlePainter &painter, DefaultsStore &store, QObject *parent = nullptr);
    ~FloatingStrip() override;

    bool isAvailable() const override { return true; }
    void attach() override;
    void detach() override;
    void setContent(const TrayContent &content) override;
    QRect geometry() const override;
    std::optional<QColor> background(std::optional<bool>) const override
    {
        return PanelWindow::background;
    }

signals:
    /// Attached, but the compositor has no place for it.
    void refused();

private:
    class Window;

    /// The corner that stays in place when the width changes.
    struct Anchor {
        QPoint corner; ///< the upper left one, or the point to the right of the upper right one
        bool isRight;
    };

    static Anchor anchorOf(const QRect &strip);
    QSize wantedSize() const;
    void makeWindow(LayerShell *shell);
    void openLayer();
    void readAnchor();
    void place();
    void remember();

    TitlePainter &m_painter;
    DefaultsStore &m_store;
    TrayContent m_content;
    std::unique_ptr<Window> m_window; ///< only while attached: it costs memory
    std::unique_ptr<LayerSurface> m_layer; ///< of the window, on Wayland
    QPointer<QScreen> m_screen; ///< with the layer
    QSize m_free; ///< the part of that screen without panels, once it is known
    bool m_isAttached = false;
    std::optional<Anchor> m_anchor; ///< absent while the strip is in its default corner
    QPoint m_placedAt; ///< where place() put it; anywhere else the window manager has moved it
};
