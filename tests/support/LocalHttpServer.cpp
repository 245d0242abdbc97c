#include "LocalHttpServer.h"

#include <QHostAddress>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

namespace lxtest {

bool LocalHttpServer::Start() {
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { OnReadable(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
    return m_server.listen(QHostAddress::LocalHost, 0);
}

QString LocalHttpServer::Url(const QString& path) const {
    return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
}

void LocalHttpServer::SetRoute(const QString& path, int status, const QByteArray& body, int delayMs) {
    m_hashRoutes.insert(path, Route{status, body, delayMs});
}

void LocalHttpServer::ResetCounts() {
    m_hashCount.clear();
    m_i32Total = 0;
    m_i32MaxInFlight = 0;
}

void LocalHttpServer::OnReadable(QTcpSocket* socket) {
    if (socket->property("answered").toBool())
        return;
    const QByteArray head = socket->property("head").toByteArray() + socket->readAll();
    if (!head.contains("\r\n\r\n")) {
        socket->setProperty("head", head);
        return;
    }
    socket->setProperty("answered", true);
    const QList<QByteArray> requestLine = head.left(head.indexOf("\r\n")).split(' ');
    const QString path = QString::fromLatin1(requestLine.value(1));
    ++m_i32Total;
    ++m_hashCount[path];
    m_i32MaxInFlight = qMax(m_i32MaxInFlight, ++m_i32InFlight);
    QPointer<QTcpSocket> guard(socket);
    QTimer::singleShot(m_hashRoutes.value(path).i32DelayMs, this, [this, guard, path] {
        --m_i32InFlight;
        if (guard)
            Respond(guard, path);
    });
}

void LocalHttpServer::Respond(QTcpSocket* socket, const QString& path) {
    const Route route = m_hashRoutes.value(path);
    if (route.i32Status == 0) {
        socket->abort();
        return;
    }
    socket->write("HTTP/1.1 " + QByteArray::number(route.i32Status) + (route.i32Status == 200 ? " OK" : " Error") +
                  "\r\nContent-Length: " + QByteArray::number(route.body.size()) +
                  "\r\nContent-Type: application/octet-stream\r\nConnection: close\r\n\r\n" + route.body);
    socket->disconnectFromHost();
}

}  // namespace lxtest
