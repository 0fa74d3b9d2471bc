#pragma once

#include <QObject>

/// The window that shows an UpdateSession. Main thread only.
class UpdateWindow : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Shows it in the middle of the screen or brings it to the front.
    virtual void present() = 0;
    virtual void close() = 0;

signals:
    /// By whomever. Delete it later, not in the slot.
    void closed();
};
