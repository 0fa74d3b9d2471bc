#pragma once

#include <QObject>

/// Turns SIGTERM, SIGINT and SIGHUP into a signal of the main thread. One at a time.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

signals:
    void received();

private:
    int m_readEnd = -1;
};
