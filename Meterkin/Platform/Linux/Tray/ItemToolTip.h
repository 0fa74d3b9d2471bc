#pragma once

#include "Platform/Linux/Plugins/LayerShell.h"

#include <QRasterWindow>
#include <QTimer>

#include <functional>
#include <memory>

/// The item's tool tip where the panel shows none. Main thread only.
class ItemToolTip : public QRasterWindow {
    Q_OBJECT

public:
    /// The source is asked whenever the text comes in sight: plain, lines separated by line feeds.
    explicit ItemToolTip(std::function<QString()> source);

    /// A visible tip asks for its text again.
    void refresh();
    /// Appears next to `anchor` after the pointer has rested a moment.
    void schedule(QPoint anchor);
    void dismiss();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void readText();
    void appear();

    std::function<QString()> m_source;
    QString m_text;
    QPoint m_anchor;
    QRect m_place;
    QTimer m_delay;
    std::unique_ptr<LayerSurface> m_layer; ///< on Wayland, where it would take the focus without
};
