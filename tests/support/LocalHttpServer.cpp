#include "LocalHttpServer.h"

#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace lxtest {
namespace {

constexpr int kMaxHeaderBytes = 16 * 1024;

QByteArray Reason(int status) {
    switch (status) {
    case 200: return "OK";
    case 404: return "Not Found";
    case 500: return "Internal Server Error";
    case 503: return "Service Unavailable";
    default: return "Status";
    }
}

}  // namespace

LocalHttpServer::LocalHttpServer(QObject* parent) : QObject(parent) {}

LocalHttpServer::~LocalHttpServer() { Stop(); }

bool LocalHttpServer::Start() {
    Stop();
    m_pServer = new QTcpServer(this);
    connect(m_pServer, &QTcpServer::newConnection, this, &LocalHttpServer::OnConnection);
    return m_pServer->listen(QHostAddress::LocalHost, 0);
}

void LocalHttpServer::Stop() {
    if (!m_pServer)
        return;
    m_pServer->close();
    delete m_pServer;  // its sockets are its children
    m_pServer = nullptr;
}

quint16 LocalHttpServer::Port() const { return m_pServer ? m_pServer->serverPort() : 0; }

QString LocalHttpServer::Url(const QString& path) const {
    return QStringLiteral("http://127.0.0.1:%1%2").arg(Port()).arg(path);
}

void LocalHttpServer::SetRoute(const QString& path, const Route& route) { m_hashRoutes.insert(path, route); }

void LocalHttpServer::SetRoute(const QString& path, int status, const QByteArray& body, int delayMs) {
    Route r;
    r.i32Status = status;
    r.body = body;
    r.i32DelayMs = delayMs;
    SetRoute(path, r);
}

void LocalHttpServer::ResetCounts() {
    m_hashCount.clear();
    m_i32Total = 0;
    m_i32MaxInFlight = 0;
}

void LocalHttpServer::OnConnection() {
    while (QTcpSocket* socket = m_pServer->nextPendingConnection()) {
        socket->setParent(m_pServer);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { OnReadable(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void LocalHttpServer::OnReadable(QTcpSocket* socket) {
    if (socket->property("answered").toBool())
        return;
    QByteArray head = socket->property("head").toByteArray() + socket->readAll();
    const int end = head.indexOf("\r\n\r\n");
    if (end < 0) {
        if (head.size() > kMaxHeaderBytes)
            socket->abort();
        else
            socket->setProperty("head", head);
        return;
    }
    socket->setProperty("answered", true);
    const QList<QByteArray> requestLine = head.left(head.indexOf("\r\n")).split(' ');
    const QString path = requestLine.size() >= 2 ? QString::fromLatin1(requestLine[1]) : QString();
    ++m_i32Total;
    ++m_hashCount[path];
    ++m_i32InFlight;
    m_i32MaxInFlight = qMax(m_i32MaxInFlight, m_i32InFlight);
    const int delay = m_hashRoutes.value(path).i32DelayMs;
    if (delay <= 0) {
        Respond(socket, path);
        return;
    }
    QPointer<QTcpSocket> guard(socket);
    QTimer::singleShot(delay, this, [this, guard, path] {
        if (guard)
            Respond(guard, path);
        else
            --m_i32InFlight;
    });
}

void LocalHttpServer::Respond(QTcpSocket* socket, const QString& path) {
    --m_i32InFlight;
    auto it = m_hashRoutes.constFind(path);
    Route route;
    if (it != m_hashRoutes.constEnd()) {
        route = it.value();
    } else {
        route.i32Status = 404;
        route.body = "not found";
    }
    if (route.bDropConnection) {
        socket->abort();
        return;
    }
    QByteArray out = "HTTP/1.1 " + QByteArray::number(route.i32Status) + ' ' + Reason(route.i32Status) + "\r\n";
    out += "Content-Length: " + QByteArray::number(route.body.size()) + "\r\n";
    out += "Content-Type: application/octet-stream\r\nConnection: close\r\n\r\n";
    out += route.body;
    socket->write(out);
    socket->disconnectFromHost();
}

}  // namespace lxtest
