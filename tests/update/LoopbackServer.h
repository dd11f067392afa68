#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

namespace cindertop {

/// Gives every request the same answer, or none while there is none. It leaves the hanging up to the other
/// side: who is hung up on while still sending may ask a second time.
class LoopbackServer {
public:
    QByteArray answer; ///< with its head
    int requests = 0;

    LoopbackServer() {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { accept(); });
    }

    QString address() const { return "http://127.0.0.1:" + QString::number(server_.serverPort()); }

    static QByteArray page(const QByteArray& body) { return head("200 OK", body.size()) + "\r\n" + body; }

    static QByteArray redirection(const QString& address) {
        return head("302 Found", 0) + "Location: " + address.toUtf8() + "\r\n\r\n";
    }

private:
    static QByteArray head(const QByteArray& status, qsizetype length) {
        return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(length) + "\r\n";
    }

    void accept() {
        auto* const connection = server_.nextPendingConnection();
        QObject::connect(connection, &QTcpSocket::readyRead, connection, [this, connection] {
            if (!connection->peek(connection->bytesAvailable()).endsWith("\r\n\r\n")) {
                return;
            }
            ++requests;
            connection->write(answer);
        });
    }

    QTcpServer server_;
};

} // namespace cindertop
