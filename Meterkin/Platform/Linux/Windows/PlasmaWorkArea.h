#pragma once

#include "Platform/Linux/Bus/Connection.h"

#include <QRect>
#include <QTimer>

class QScreen;

/// The part of a screen that Plasma's panels leave free. Before Plasma 6 these keep no layer
/// surface away from them. Main thread only.
class PlasmaWorkArea : public QObject {
    Q_OBJECT

public:
    PlasmaWorkArea();

    /// found() follows once, unless it is asked again before.
    void ask(const QScreen &screen);
    void cancel();

signals:
    /// In logical coordinates; empty when there is no Plasma, or it does not answer in time.
    void found(const QRect &area);

private:
    void send();
    void answer(const QRect &area);

    BusConnection m_bus;
    QTimer m_patience; ///< active while an answer is awaited
    QString m_screen;
};
