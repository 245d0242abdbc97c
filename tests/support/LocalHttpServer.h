#pragma once
// A small HTTP/1.1 server on 127.0.0.1 for tests of code that downloads. Each route answers with a
// status and a body, optionally after a delay; status 0 drops the connection unanswered, and a path
// without a route answers 404. Every request is counted; connections close after each answer.

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTcpServer>

class QTcpSocket;

namespace lxtest {

class LocalHttpServer : public QObject {
public:
    bool Start();
    QString Url(const QString& path) const;  // "http://127.0.0.1:<port><path>"
    void SetRoute(const QString& path, int status, const QByteArray& body, int delayMs = 0);

    int RequestCount(const QString& path) const { return m_hashCount.value(path); }
    int TotalRequests() const { return m_i32Total; }
    int MaxInFlight() const { return m_i32MaxInFlight; }  // requests being answered at once, at most
    void ResetCounts();

private:
    struct Route {
        int i32Status = 404;
        QByteArray body = "not found";
        int i32DelayMs = 0;
    };
    void OnReadable(QTcpSocket* socket);
    void Respond(QTcpSocket* socket, const QString& path);

    QTcpServer m_server;  // its sockets are its children
    QHash<QString, Route> m_hashRoutes;
    QHash<QString, int> m_hashCount;
    int m_i32Total = 0;
    int m_i32InFlight = 0;
    int m_i32MaxInFlight = 0;
};

}  // namespace lxtest
