#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/Linux/Tray/TitlePainter.h"
#include "Platform/Linux/Tray/Host.h"

#include <memory>
#include <optional>

class QWindow;

/// The last resort of a session without any tray: a small strip of our own at the screen's edge.
/// It never takes the keyboard, stays below full-screen windows, and can be dragged out of the way;
/// its position is remembered.
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

signals:
    /// The pointer has come over the strip or left it.
    void hoverChanged(bool inside);

private:
    class Window;

    /// What stays in place when the width changes.
    struct Anchor {
        QPoint corner; ///< the upper left one of the strip, or the point right of its upper right
        bool isRight;
    };

    static Anchor anchorOf(const QRect &strip);
    QSize wantedSize() const;
    void place();
    void remember();

    TitlePainter &m_painter;
    DefaultsStore &m_store;
    TrayContent m_content;
    std::unique_ptr<Window> m_window; ///< only while attached: it costs memory
    std::optional<Anchor> m_anchor; ///< absent while the strip stands where it does by default
    QPoint m_placedAt; ///< where the window was last put; elsewhere it has been moved from outside
};
