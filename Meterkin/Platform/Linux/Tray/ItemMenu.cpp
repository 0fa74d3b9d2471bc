#include "Platform/Linux/Tray/ItemMenu.h"

#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Tray/PanelWindow.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace {

// Logical pixels.
constexpr int RowHeight = 26;
constexpr int EntryPadding = 14;
constexpr int EdgePadding = 5;
constexpr int GroupGap = 9;

constexpr int rows = static_cast<int>(menuEntries.size());

const MenuEntry &entry(int row)
{
    return menuEntries[static_cast<std::size_t>(row)];
}

int gapsBefore(int row)
{
    int gaps = 0;
    for (int i = 0; i <= row; ++i)
        gaps += entry(i).startsGroup ? 1 : 0;
    return gaps;
}

} // namespace

ItemMenu::ItemMenu(DisplayServer &displayServer, QPoint anchor)
    : m_watch(displayServer.makePopupWatch())
    , m_takesFocus(isWaylandDesktop() && !displayServer.mayBypassWindowManager())
{
    setFlags((m_takesFocus ? Qt::Tool | Qt::WindowStaysOnTopHint : Qt::Popup)
             | Qt::FramelessWindowHint);
    connect(m_watch.get(), &PopupWatch::left, this, [this] {
        m_watch->stop();
        close();
    });
    connect(m_watch.get(), &PopupWatch::released, this, &QObject::deleteLater);
    setTitle(QStringLiteral("meterkin"));
    const QFontMetrics metrics(PanelWindow::font());
    int widest = 0;
    for (const MenuEntry &item : menuEntries)
        widest = std::max(widest, metrics.horizontalAdvance(item.text()));
    const QSize size(widest + 2 * EntryPadding,
                     rows * RowHeight + gapsBefore(rows - 1) * GroupGap + 2 * EdgePadding);
    m_place = PanelWindow::beside(anchor, size);
    setGeometry(m_place);
    m_layer = PanelWindow::makeLayer(*this, LayerShell::Kind::Transient, m_place);
    if (!m_layer) {
        show();
        if (m_takesFocus)
            requestActivate();
        return;
    }
    connect(m_layer.get(), &LayerSurface::closed, this, &ItemMenu::dismiss);
    connect(&m_backdrops, &LayerBackdrops::pressed, this, &ItemMenu::dismiss);
    QScreen *screen = QGuiApplication::screenAt(m_place.center());
    m_backdrops.open(*layerShell());
    if (screen != nullptr)
        m_backdrops.spare(*screen, m_place);
    m_layer->open(screen);
}

void ItemMenu::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    PanelWindow::paintBackground(painter, size());
    painter.setFont(PanelWindow::font());
    painter.setLayoutDirection(QGuiApplication::layoutDirection());
    for (int row = 0; row < rows; ++row) {
        const QRect rect = rowRect(row);
        if (entry(row).startsGroup)
            painter.fillRect(rect.left() + EntryPadding / 2, rect.top() - GroupGap / 2 - 1,
                             rect.width() - EntryPadding, 1, PanelWindow::border);
        if (row == m_selected)
            painter.fillRect(rect, PanelWindow::selection);
        painter.setPen(PanelWindow::text);
        painter.drawText(rect.adjusted(EntryPadding - 1, 0, 1 - EntryPadding, 0),
                         Qt::AlignVCenter | Qt::TextDontClip, entry(row).text());
    }
}

void ItemMenu::exposeEvent(QExposeEvent *event)
{
    QRasterWindow::exposeEvent(event);
    if (!isExposed() || m_layer)
        return;
    // So that keys and clicks elsewhere reach the menu, whatever window is active. Under Xwayland
    // grabs of the mouse end at the borders of X windows, and mostly those of the keyboard, too.
    if (isWaylandDesktop())
        watch();
    else
        setMouseGrabEnabled(true);
    if (!m_takesFocus)
        setKeyboardGrabEnabled(true);
}

void ItemMenu::moveEvent(QMoveEvent *event)
{
    QRasterWindow::moveEvent(event);
    if (isExposed() && isWaylandDesktop())
        watch();
}

void ItemMenu::focusOutEvent(QFocusEvent *)
{
    if (m_takesFocus && isVisible())
        dismiss();
}

void ItemMenu::mouseMoveEvent(QMouseEvent *event)
{
    select(rowAt(event->position().toPoint()));
}

void ItemMenu::mousePressEvent(QMouseEvent *event)
{
    m_isPressed = true;
    if (!QRect(QPoint(), size()).contains(event->position().toPoint()))
        dismiss();
}

void ItemMenu::mouseReleaseEvent(QMouseEvent *event)
{
    // The release of the press that opened the menu chooses nothing, unless the pointer was dragged
    // to a row.
    const int row = rowAt(event->position().toPoint());
    if (row != NoRow && (m_isPressed || event->button() == Qt::RightButton))
        choose(row);
}

void ItemMenu::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        dismiss();
        break;
    case Qt::Key_Down:
    case Qt::Key_Tab:
        select(m_selected == NoRow ? 0 : (m_selected + 1) % rows);
        break;
    case Qt::Key_Up:
    case Qt::Key_Backtab:
        select(m_selected == NoRow ? rows - 1 : (m_selected + rows - 1) % rows);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (m_selected != NoRow)
            choose(m_selected);
        break;
    default:
        break;
    }
}

int ItemMenu::rowAt(QPoint position) const
{
    for (int row = 0; row < rows; ++row) {
        if (rowRect(row).contains(position))
            return row;
    }
    return NoRow;
}

QRect ItemMenu::rowRect(int row) const
{
    return QRect(1, EdgePadding + row * RowHeight + gapsBefore(row) * GroupGap, width() - 2,
                 RowHeight);
}

void ItemMenu::select(int row)
{
    if (std::exchange(m_selected, row) != row)
        update();
}

void ItemMenu::choose(int row)
{
    dismiss();
    emit chosen(entry(row).action);
}

void ItemMenu::watch()
{
    m_watch->start(*this, QRect(QPoint(), size()));
}

void ItemMenu::dismiss()
{
    m_watch->stop();
    if (m_layer) {
        m_layer->close();
    } else {
        setMouseGrabEnabled(false);
        setKeyboardGrabEnabled(false);
        close();
    }
    deleteLater();
}
