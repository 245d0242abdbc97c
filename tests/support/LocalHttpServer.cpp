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
    m_hashRoutes.insert(path, Reply{status, body, delayMs});
}

void LocalHttpServer::ResetCounts() {
    m_hashCount.clear();
    m_i32Total = 0;
    m_i32MaxInFlight = 0;
}

void LocalHttpServer::OnReadable(QTcpSocket* socket) {
    if (socket->property("answered").toBool())
        return;
    const QByteArray data = socket->property("data").toByteArray() + socket->readAll();
    socket->setProperty("data", data);
    const int headEnd = data.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return;
    Request request;
    request.head = data.left(headEnd);
    int length = 0;
    for (const QByteArray& line : request.head.split('\n'))
        if (line.toLower().startsWith("content-length:"))
            length = line.mid(15).trimmed().toInt();
    if (data.size() < headEnd + 4 + length)
        return;
    socket->setProperty("answered", true);
    request.body = data.mid(headEnd + 4, length);
    const QList<QByteArray> requestLine = request.head.left(request.head.indexOf("\r\n")).split(' ');
    request.method = requestLine.value(0);
    request.path = QString::fromLatin1(requestLine.value(1));

    ++m_i32Total;
    ++m_hashCount[request.path];
    m_i32MaxInFlight = qMax(m_i32MaxInFlight, ++m_i32InFlight);
    const Reply reply = m_hashRoutes.contains(request.path) ? m_hashRoutes.value(request.path)
                        : m_handler                         ? m_handler(request)
                                                            : Reply();
    if (reply.i32Status == kNeverAnswer)
        return;
    QPointer<QTcpSocket> guard(socket);
    QTimer::singleShot(reply.i32DelayMs, this, [this, guard, reply] {
        --m_i32InFlight;
        if (guard)
            Respond(guard, reply);
    });
}

void LocalHttpServer::Respond(QTcpSocket* socket, const Reply& reply) {
    if (reply.i32Status == 0) {
        socket->abort();
        return;
    }
    socket->write("HTTP/1.1 " + QByteArray::number(reply.i32Status) + (reply.i32Status == 200 ? " OK" : " Error") +
                  "\r\nContent-Length: " + QByteArray::number(reply.body.size()) +
                  "\r\nContent-Type: " + reply.contentType + "\r\nConnection: close\r\n\r\n" + reply.body);
    socket->disconnectFromHost();
}

}  // namespace lxtest
