#pragma once
// A small HTTP/1.1 server on 127.0.0.1 for tests and benchmarks of code that downloads or posts.
// A request goes to its path's route when it has one, else to the handler, else answers 404.
// An answer may come after a delay; status 0 drops the connection unanswered and kNeverAnswer
// holds it open without a word. Every request is counted; connections close after each answer.

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTcpServer>

#include <functional>

class QTcpSocket;

namespace lxtest {

class LocalHttpServer : public QObject {
public:
    static constexpr int kNeverAnswer = -1;

    struct Request {
        QByteArray method;
        QString path;
        QByteArray head;  // request line and header lines
        QByteArray body;  // as long as its Content-Length says
    };
    struct Reply {
        int i32Status = 404;
        QByteArray body = "not found";
        int i32DelayMs = 0;
        QByteArray contentType = "application/octet-stream";
    };
    using Handler = std::function<Reply(const Request&)>;

    bool Start();
    QString Url(const QString& path) const;  // "http://127.0.0.1:<port><path>"
    void SetRoute(const QString& path, int status, const QByteArray& body, int delayMs = 0);
    void SetHandler(Handler handler) { m_handler = std::move(handler); }

    int RequestCount(const QString& path) const { return m_hashCount.value(path); }
    int TotalRequests() const { return m_i32Total; }
    int MaxInFlight() const { return m_i32MaxInFlight; }  // requests being answered at once, at most
    void ResetCounts();

private:
    void OnReadable(QTcpSocket* socket);
    void Respond(QTcpSocket* socket, const Reply& reply);

    QTcpServer m_server;  // its sockets are its children
    QHash<QString, Reply> m_hashRoutes;
    Handler m_handler;
    QHash<QString, int> m_hashCount;
    int m_i32Total = 0;
    int m_i32InFlight = 0;
    int m_i32MaxInFlight = 0;
};

}  // namespace lxtest
