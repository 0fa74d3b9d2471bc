#include "Platform/Linux/Plugins/LayerBackdrops.h"

#include <QEnterEvent>
#include <QGuiApplication>
#include <QRasterWindow>
#include <QScreen>

class LayerBackdrops::Window : public QRasterWindow {
public:
    Window(LayerBackdrops &backdrops, LayerShell &shell, QScreen &screen)
        : m_backdrops(backdrops)
        , m_surface(shell.makeSurface(*this, LayerShell::Kind::Backdrop))
    {
        QSurfaceFormat format;
        format.setAlphaBufferSize(8);
        setFormat(format);
        setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        resize(1, 1);
        connect(m_surface.get(), &LayerSurface::measured, this, [this](QSize size) {
            m_size = size;
            limitInput();
            m_surface->place(
                {Qt::TopEdge | Qt::LeftEdge | Qt::BottomEdge | Qt::RightEdge, {}, size});
        });
        connect(m_surface.get(), &LayerSurface::ready, this, [this] {
            show();
            emit m_backdrops.shown();
        });
        m_surface->open(&screen);
    }

    void spare(const QRect &place)
    {
        m_spared = place;
        limitInput();
    }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::Enter)
            emit m_backdrops.pointerFound(*screen(),
                                          static_cast<QEnterEvent *>(event)->position().toPoint());
        return QRasterWindow::event(event);
    }

    void mousePressEvent(QMouseEvent * /*event*/) override { emit m_backdrops.pressed(); }

private:
    void limitInput()
    {
        // On Wayland a mask limits only the input; it counts from the next frame on.
        setMask(QRegion(QRect(QPoint(), m_size)) - m_spared);
        update();
    }

    LayerBackdrops &m_backdrops;
    const std::unique_ptr<LayerSurface> m_surface;
    QSize m_size; ///< that it covers
    QRect m_spared;
};

LayerBackdrops::LayerBackdrops() = default;

LayerBackdrops::~LayerBackdrops() = default;

void LayerBackdrops::open(LayerShell &shell)
{
    for (QScreen *screen : QGuiApplication::screens())
        m_windows.push_back(std::make_unique<Window>(*this, shell, *screen));
}

void LayerBackdrops::spare(const QScreen &screen, const QRect &place)
{
    for (const auto &window : m_windows) {
        if (window->screen() == &screen)
            window->spare(place.translated(-screen.geometry().topLeft()));
    }
}

void LayerBackdrops::close()
{
    m_windows.clear();
}
