#pragma once

#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

/// A web server on this machine that answers each path with the bytes that the test says.
class ScriptedHttpServer : public QTcpServer {
public:
    /// What follows the bytes: the end, nothing, one letter now and then, or no end of letters.
    enum class Then { Close, Wait, Drip, Flood };
    struct Answer {
        QByteArray bytes;
        Then then = Then::Close;
    };

    QHash<QByteArray, Answer> answers; ///< by path
    QByteArrayList requests; ///< what has been sent to it, in order

    ScriptedHttpServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *client = nextPendingConnection();
            connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
            connect(client, &QTcpSocket::readyRead, this, [this, client] { serve(*client); });
        });
    }

    QString address(const QString &path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path);
    }

private:
    void serve(QTcpSocket &client)
    {
        requests << client.readAll(); // a request this short comes in one piece
        const Answer answer = answers.value(requests.last().split(' ').value(1));
        client.write(answer.bytes);
        if (answer.then == Then::Close)
            client.disconnectFromHost();
        const auto more = [&client, count = answer.then == Then::Drip ? 1 : 100'000] {
            client.write(QByteArray(count, '.'));
        };
        if (answer.then == Then::Flood)
            connect(&client, &QTcpSocket::bytesWritten, &client, more);
        if (answer.then == Then::Drip) {
            auto *timer = new QTimer(&client);
            connect(timer, &QTimer::timeout, &client, more);
            timer->start(10);
        }
    }
};
