#include "Views/WindowContent.h"

#include <QEvent>
#include <QScreen>
#include <QtMath>

#include <algorithm>
#include <utility>

namespace {

constexpr QMargins LikelyFrame(2, 32, 2, 2); // until the window manager has made one

/// Keeps a window as large as its content asks for, and all of it on the screen. Belongs to the
/// window.
class WindowFit : public QObject {
public:
    WindowFit(QQuickWindow &window, QQuickItem &content, QSize least)
        : QObject(&window)
        , m_window(window)
        , m_content(content)
        , m_least(least)
    {
        if (!window.flags().testFlag(Qt::FramelessWindowHint))
            m_frame = LikelyFrame;
        connect(&content, &QQuickItem::implicitWidthChanged, this, &WindowFit::adapt);
        connect(&content, &QQuickItem::implicitHeightChanged, this, &WindowFit::adapt);
        connect(&window, &QWindow::screenChanged, this, &WindowFit::followScreen);
        window.installEventFilter(this);
        followScreen(window.screen());
        const QPoint centre = window.screen()->availableGeometry().center();
        window.setPosition(centre - QPoint(window.width() / 2, window.height() / 2));
        keepOnScreen();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // The frame is known once the window is exposed.
        if (event->type() == QEvent::Expose && m_window.isExposed()
            && std::exchange(m_frame, m_window.frameMargins()) != m_window.frameMargins())
            adapt();
        return QObject::eventFilter(watched, event);
    }

private:
    void followScreen(QScreen *screen)
    {
        disconnect(m_screenChange);
        if (screen == nullptr)
            return;
        m_screenChange =
            connect(screen, &QScreen::availableGeometryChanged, this, &WindowFit::adapt);
        adapt();
    }
    void adapt()
    {
        fit();
        keepOnScreen();
    }
    void fit()
    {
        const QSize wanted(std::max(m_least.width(), qCeil(m_content.implicitWidth())),
                           std::max(m_least.height(), qCeil(m_content.implicitHeight())));
        const QSize size = wanted.boundedTo(room().size()).expandedTo(QSize(1, 1));
        m_window.setMinimumSize(size);
        m_window.setMaximumSize(size);
        m_window.resize(size);
        m_content.setSize(size);
    }
    void keepOnScreen()
    {
        const QRect room = this->room();
        const QPoint last = room.bottomRight() - QPoint(m_window.width(), m_window.height());
        const QPoint place(
            std::clamp(m_window.x(), room.left(), std::max(room.left(), last.x() + 1)),
            std::clamp(m_window.y(), room.top(), std::max(room.top(), last.y() + 1)));
        if (place != m_window.position())
            m_window.setPosition(place);
    }
    /// Available to the window without its frame.
    QRect room() const
    {
        const QScreen &screen = *m_window.screen();
        // At other scales than 1 Qt may have rounded beyond the edge.
        const int rounding = screen.devicePixelRatio() == 1.0 ? 0 : 1;
        return screen.availableGeometry().marginsRemoved(m_frame).adjusted(0, 0, -rounding,
                                                                           -rounding);
    }

    QQuickWindow &m_window;
    QQuickItem &m_content;
    QSize m_least;
    QMargins m_frame; ///< as last seen
    QMetaObject::Connection m_screenChange;
};

/// Keeps a window in the colour of its content. Belongs to the content.
class WindowColor : public QObject {
    Q_OBJECT

public:
    WindowColor(QQuickWindow &window, QQuickItem &content)
        : QObject(&content)
        , m_window(window)
        , m_content(content)
    {
        connect(&content, SIGNAL(colorChanged()), this, SLOT(apply()));
        apply();
    }

private slots:
    void apply() { m_window.setColor(m_content.property("color").value<QColor>()); }

private:
    QQuickWindow &m_window;
    QQuickItem &m_content;
};

void layOut(QQuickItem &item)
{
    // Rows and columns need the sizes of their children first.
    for (QQuickItem *child : item.childItems())
        layOut(*child);
    item.ensurePolished();
}

} // namespace

void fillWindow(QQuickWindow &window, std::unique_ptr<QQuickItem> content, QSize least)
{
    QQuickItem *item = content.release();
    item->setParent(&window);
    item->setParentItem(window.contentItem());
    item->setFocus(true);
    new WindowFit(window, *item, least); // belongs to the window
}

void followColor(QQuickWindow &window, QQuickItem &content)
{
    new WindowColor(window, content); // belongs to the content
}

QSize wantedSize(QQuickItem &item)
{
    layOut(item);
    return QSize(qCeil(item.implicitWidth()), qCeil(item.implicitHeight())).expandedTo(QSize(1, 1));
}

#include "WindowContent.moc"
