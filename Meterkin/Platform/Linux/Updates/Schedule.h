#pragma once

#include "Platform/DefaultsStore.h"

#include <QObject>
#include <QTimer>

#include <chrono>

/// Says when to look for updates in the background: some minutes after the start, so that a login
/// is not slowed down, and once a day, over restarts too. Main thread only.
class UpdateSchedule : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::minutes FirstLook{5};

    /// The store outlives it.
    explicit UpdateSchedule(DefaultsStore &store, QObject *parent = nullptr);

    void start(std::chrono::milliseconds firstLook = FirstLook);
    void stop();
    /// Somebody has looked just now, so that it need not be done again today.
    void noteCheck();

signals:
    /// Comes again every hour until somebody has looked.
    void due();

private:
    void look();

    DefaultsStore &m_store;
    QTimer m_timer;
};
