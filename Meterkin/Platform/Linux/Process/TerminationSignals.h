#pragma once

#include <QObject>

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal on the main thread. One instance at a time.
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
