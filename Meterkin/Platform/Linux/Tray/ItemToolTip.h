#pragma once

#include <QRasterWindow>
#include <QTimer>

/// The item's tool tip where the panel shows none. Main thread only.
class ItemToolTip : public QRasterWindow {
    Q_OBJECT

public:
    ItemToolTip();

    /// Plain text, lines separated by line feeds. A visible tip changes at once.
    void setText(const QString &text);
    /// Appears next to `anchor` after the pointer has rested a moment.
    void schedule(QPoint anchor);
    void dismiss();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void fit();

    QString m_text;
    QPoint m_anchor;
    QTimer m_delay;
};
