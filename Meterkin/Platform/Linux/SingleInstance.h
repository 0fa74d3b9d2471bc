#pragma once

#include <QObject>

#include <memory>

class QLocalServer;

/// Sees to it that one instance runs a user and display, by a socket that only this user reaches.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;

    /// False when another instance runs already: it has been told of this start then. Blocks for
    /// a moment at most; to be called before the event loop.
    bool claim();

signals:
    /// Somebody started the program once more.
    void startedAgain();

private:
    std::unique_ptr<QLocalServer> m_server;
};
