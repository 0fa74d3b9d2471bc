#pragma once

#include "Platform/DefaultsStore.h"

#include <QObject>
#include <QTimer>

#include <chrono>

/// Tells when to check for updates in the background: some minutes after the start, so that a login
/// is not slowed down, and once a day, also across restarts. Main thread only.
class UpdateSchedule : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::minutes FirstCheck{5};

    /// The store outlives it.
    explicit UpdateSchedule(DefaultsStore &store, QObject *parent = nullptr);

    void start(std::chrono::milliseconds firstCheck = FirstCheck);
    void stop();
    /// A check was made: none is due for a day.
    void noteCheck();

signals:
    /// Repeated every hour until a check is noted.
    void due();

private:
    void tellIfDue();

    DefaultsStore &m_store;
    QTimer m_timer;
};
