#pragma once

#include <QObject>
#include <QProperty>

#include <functional>

/// Watches the bindable properties that a function reads. When any of them changes, `changed` is
/// called from the event loop, once for all changes until then. Later changes, also those that
/// `changed` makes, lead to another call. The destructor ends the watching.
/// Main thread only.
class ObservationScope : public QObject {
    Q_OBJECT

public:
    /// Calls `reads` at once, and again before each call of `changed`; it must write nothing.
    ObservationScope(std::function<void()> reads, std::function<void()> changed,
                     QObject *parent = nullptr);

private:
    void observe();
    void react();

    std::function<void()> m_reads;
    std::function<void()> m_changed;
    bool m_isReading = false;
    QProperty<int> m_probe; ///< depends, through its binding, on what was read
};
