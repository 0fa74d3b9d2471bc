#include "Platform/Linux/Tray/FloatingStrip.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QRasterWindow>
#include <QScreen>
#include <QStyleHints>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

constexpr int Height = 24; // logical pixels, as a slim panel
constexpr int EdgeMargin = 6; // logical pixels to the screen's edge
constexpr std::chrono::seconds ReopenDelay{2}; // after the compositor has taken it away
constexpr QRect believable(-100'000, -100'000, 200'000, 200'000); // sums do not overflow

const QString positionKey = QStringLiteral("stripPosition");

/// "x,y" in logical coordinates; absent when the text is anything else.
std::optional<QPoint> parsePosition(const std::optional<QString> &text)
{
    const QStringList parts = text.value_or(QString()).split(u',');
    if (parts.size() != 2)
        return std::nullopt;
    bool isXGood = false;
    bool isYGood = false;
    const QPoint point(parts[0].trimmed().toInt(&isXGood), parts[1].trimmed().toInt(&isYGood));
    return isXGood && isYGood && believable.contains(point) ? std::optional(point) : std::nullopt;
}

QScreen &screenNear(QPoint point)
{
    QScreen *screen = QGuiApplication::screenAt(point);
    return screen != nullptr ? *screen : *QGuiApplication::primaryScreen();
}

/// The same place for a layer surface: by the corner that it is nearest to.
LayerPlace layerPlace(const QRect &area, const QRect &strip)
{
    const QPoint centre = area.center();
    const bool isRight = strip.center().x() > centre.x();
    const bool isBottom = strip.center().y() > centre.y();
    return {(isRight ? Qt::RightEdge : Qt::LeftEdge) | (isBottom ? Qt::BottomEdge : Qt::TopEdge),
            QMargins(strip.left() - area.left(), strip.top() - area.top(),
                     area.right() - strip.right(), area.bottom() - strip.bottom()),
            strip.size()};
}

QPoint keptInside(const QRect &area, QPoint position, QSize size)
{
    return QPoint(std::clamp(position.x(), area.left(),
                             std::max(area.left(), area.right() + 1 - size.width())),
                  std::clamp(position.y(), area.top(),
                             std::max(area.top(), area.bottom() + 1 - size.height())));
}

} // namespace

class FloatingStrip::Window : public QRasterWindow {
public:
    Window(FloatingStrip &strip, bool isInLayer)
        : m_strip(strip)
    {
        setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
                 | Qt::WindowDoesNotAcceptFocus);
        setFlag(Qt::BypassWindowManagerHint, isInLayer);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        PanelWindow::paintBackground(painter, size());
        QImage image = m_strip.m_painter.wide(m_strip.m_content.title,
                                              static_cast<int>(height() * devicePixelRatio()),
                                              devicePixelRatio());
        image.setDevicePixelRatio(devicePixelRatio());
        painter.drawImage(0, 0, image);
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        m_grip = event->position().toPoint();
        if (event->button() == Qt::LeftButton) {
            m_isDragged = false;
        } else if (event->button() == Qt::RightButton) {
            emit m_strip.menuRequested(m_strip.geometry().center());
        }
    }

    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (!(event->buttons() & Qt::LeftButton))
            return;
        const QPoint distance = event->position().toPoint() - m_grip;
        if (!m_isDragged
            && distance.manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
            return;
        m_isDragged = true;
        if (m_strip.m_layer) // it follows at the end, since the pointer's place counts from it
            setCursor(Qt::ClosedHandCursor);
        else
            setPosition(event->globalPosition().toPoint() - m_grip);
    }

    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() != Qt::LeftButton)
            return;
        if (m_isDragged && m_strip.m_layer) {
            unsetCursor();
            m_strip.m_placedAt += event->position().toPoint() - m_grip;
        }
        if (m_isDragged)
            m_strip.remember();
        else
            emit m_strip.clicked();
    }

    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::Leave)
            emit m_strip.hoverChanged(false);
        // What a press has opened may make a resting pointer leave and enter.
        if (event->type() == QEvent::Enter
            && static_cast<QEnterEvent *>(event)->position().toPoint() != m_grip)
            emit m_strip.hoverChanged(true);
        return QRasterWindow::event(event);
    }

private:
    FloatingStrip &m_strip;
    QPoint m_grip;
    bool m_isDragged = false;
};

FloatingStrip::FloatingStrip(TitlePainter &painter, DefaultsStore &store, QObject *parent)
    : TrayHost(parent)
    , m_painter(painter)
    , m_store(store)
{
}

FloatingStrip::~FloatingStrip() = default;

void FloatingStrip::attach()
{
    m_isAttached = true;
    if (m_window || QGuiApplication::primaryScreen() == nullptr)
        return;
    if (QGuiApplication::platformName() != u"wayland") {
        makeWindow(nullptr);
        return;
    }
    LayerShell *shell = layerShell();
    if (shell != nullptr && !shell->isAvailable())
        connect(shell, &LayerShell::known, this, [this] {
            if (m_isAttached)
                attach();
        });
    else if (shell != nullptr && *shell->isAvailable())
        makeWindow(shell);
    else
        emit refused();
}

void FloatingStrip::makeWindow(LayerShell *shell)
{
    m_window = std::make_unique<Window>(*this, shell != nullptr);
    m_window->setTitle(m_content.accessibilityLabel);
    if (shell != nullptr) {
        m_layer = shell->makeSurface(*m_window, LayerShell::Kind::Resident);
        connect(m_layer.get(), &LayerSurface::measured, this, [this](QSize free) {
            m_free = free;
            place();
        });
        connect(m_layer.get(), &LayerSurface::ready, m_window.get(), &QWindow::show);
        connect(m_layer.get(), &LayerSurface::closed, this, [this] {
            m_layer->close();
            QTimer::singleShot(ReopenDelay, m_window.get(), [this] { openLayer(); });
        });
        openLayer();
        return;
    }
    place();
    m_window->show();
    // The strip stays in sight when screens are added, removed or changed.
    const auto follow = [this](QScreen *screen) {
        connect(screen, &QScreen::availableGeometryChanged, m_window.get(), [this] { place(); });
    };
    for (QScreen *screen : QGuiApplication::screens())
        follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, m_window.get(), follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, m_window.get(), [this] { place(); });
}

void FloatingStrip::openLayer()
{
    readAnchor();
    m_screen = m_anchor ? &screenNear(m_anchor->corner) : QGuiApplication::primaryScreen();
    m_free = QSize();
    m_layer->open(m_screen);
}

void FloatingStrip::detach()
{
    m_isAttached = false;
    m_layer.reset();
    m_window.reset();
}

void FloatingStrip::setContent(const TrayContent &content)
{
    const TrayContent previous = std::exchange(m_content, content);
    if (!m_window)
        return;
    if (previous.accessibilityLabel != content.accessibilityLabel)
        m_window->setTitle(content.accessibilityLabel);
    if (previous.title == content.title)
        return;
    if (m_window->size() != wantedSize()) {
        if (!m_layer
            && m_window->position() != m_placedAt) // moved by the user through the window manager
            m_anchor = anchorOf(m_window->geometry());
        place();
    }
    m_window->update();
}

QRect FloatingStrip::geometry() const
{
    if (!m_window)
        return QRect();
    return m_layer ? QRect(m_placedAt, m_window->size()) : m_window->geometry();
}

FloatingStrip::Anchor FloatingStrip::anchorOf(const QRect &strip)
{
    const QPoint screen = screenNear(strip.center()).geometry().center();
    const bool isRight = strip.center().x() > screen.x();
    return {isRight ? strip.topRight() + QPoint(1, 0) : strip.topLeft(), isRight};
}

QSize FloatingStrip::wantedSize() const
{
    return QSize(m_painter.wideWidth(m_content.title, Height, 1.0), Height);
}

void FloatingStrip::readAnchor()
{
    if (m_anchor)
        return;
    if (const std::optional<QPoint> stored = parsePosition(m_store.text(positionKey)))
        m_anchor = anchorOf(QRect(*stored, wantedSize()));
}

void FloatingStrip::place()
{
    if (m_layer && (m_screen == nullptr || m_free.isEmpty()))
        return;
    readAnchor();
    const QSize size = wantedSize();
    // The lower right corner: the upper ones hold the buttons of maximised windows.
    const QScreen *screen = m_layer ? m_screen.data() : QGuiApplication::primaryScreen();
    QRect area =
        m_layer ? QRect(screen->geometry().topLeft(), m_free) : screen->availableGeometry();
    const Anchor anchor = m_anchor.value_or(
        Anchor{area.bottomRight() - QPoint(EdgeMargin, EdgeMargin + Height), true});
    const QPoint position = anchor.corner - QPoint(anchor.isRight ? size.width() : 0, 0);
    if (m_anchor && !m_layer)
        area = screenNear(QRect(position, size).center()).availableGeometry();
    m_window->setMinimumSize(size);
    m_window->setMaximumSize(size);
    m_placedAt = keptInside(area, position, size);
    m_window->setGeometry(QRect(m_placedAt, size));
    if (m_layer)
        m_layer->place(layerPlace(area, QRect(m_placedAt, size)));
}

void FloatingStrip::remember()
{
    m_anchor = anchorOf(geometry());
    place();
    m_store.setText(positionKey, QStringLiteral("%1,%2").arg(m_placedAt.x()).arg(m_placedAt.y()));
}
