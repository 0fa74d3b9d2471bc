#pragma once

#include "Platform/Linux/Display/PopupWatch.h"
#include "Platform/Linux/Plugins/LayerBackdrops.h"
#include "Platform/Linux/Tray/MenuEntries.h"

#include <QRasterWindow>

class DisplayServer;

/// The item's menu where the panel shows none. Closes on a choice, on Escape and on a click
/// elsewhere, and then deletes itself. Main thread only.
class ItemMenu : public QRasterWindow {
    Q_OBJECT

public:
    /// Opens next to `anchor`, a point in the panel, and entirely on that screen.
    ItemMenu(DisplayServer &displayServer, QPoint anchor);

signals:
    void chosen(MenuAction action);

protected:
    void paintEvent(QPaintEvent *event) override;
    void exposeEvent(QExposeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    static constexpr int NoRow = -1;

    int rowAt(QPoint position) const;
    QRect rowRect(int row) const;
    void select(int row);
    void choose(int row);
    void watch();
    void dismiss();

    const std::unique_ptr<PopupWatch> m_watch; ///< under Xwayland
    const bool m_takesFocus; ///< as a window of its own, where grabs are not honoured
    QRect m_place;
    std::unique_ptr<LayerSurface> m_layer; ///< on Wayland, which lets no other window grab
    LayerBackdrops m_backdrops;
    int m_selected = NoRow;
    bool m_isPressed = false;
};
