#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/Linux/TitlePainter.h"
#include "Platform/Linux/TrayHost.h"

#include <memory>

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

    void resizeToContent();
    void place();
    void remember(QPoint position);

    TitlePainter &m_painter;
    DefaultsStore &m_store;
    TrayContent m_content;
    std::unique_ptr<Window> m_window; ///< only while attached: it costs memory
};
