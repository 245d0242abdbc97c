#pragma once
// A small HTTP/1.1 server on 127.0.0.1 for tests of code that downloads. Each route answers with a
// status and a body, optionally after a delay, or drops the connection; every request is counted.
// Connections are closed after each answer. The server listens only on the loopback address and
// stops with the object.

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>

class QTcpServer;
class QTcpSocket;

namespace lxtest {

class LocalHttpServer : public QObject {
public:
    struct Route {
        int i32Status = 200;
        QByteArray body;
        int i32DelayMs = 0;
        bool bDropConnection = false;  // close without answering
    };

    explicit LocalHttpServer(QObject* parent = nullptr);
    ~LocalHttpServer() override;

    bool Start();
    void Stop();
    quint16 Port() const;
    QString Url(const QString& path) const;  // "http://127.0.0.1:<port><path>"

    void SetRoute(const QString& path, const Route& route);
    void SetRoute(const QString& path, int status, const QByteArray& body, int delayMs = 0);

    int RequestCount(const QString& path) const { return m_hashCount.value(path); }
    int TotalRequests() const { return m_i32Total; }
    int MaxInFlight() const { return m_i32MaxInFlight; }
    void ResetCounts();

private:
    void OnConnection();
    void OnReadable(QTcpSocket* socket);
    void Respond(QTcpSocket* socket, const QString& path);

    QTcpServer* m_pServer = nullptr;
    QHash<QString, Route> m_hashRoutes;
    QHash<QString, int> m_hashCount;
    int m_i32Total = 0;
    int m_i32InFlight = 0;
    int m_i32MaxInFlight = 0;
};

}  // namespace lxtest
