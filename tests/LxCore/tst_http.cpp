// HTTP over QNetworkAccessManager against a small server on 127.0.0.1 run by the test.

#include <LxCore/Http.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QtTest>

#include "LxTestSupport.h"

namespace {

// Answers by path: /hello, /missing (404), /echo (method + body), /upload (multipart fields back),
// /big (1 MiB), /slow (never answers).
class MiniHttpServer : public QObject {
public:
    MiniHttpServer() {
        QVERIFY(m_server.listen(QHostAddress::LocalHost));
        QObject::connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* s = m_server.nextPendingConnection()) {
                QObject::connect(s, &QTcpSocket::readyRead, s, [this, s] { OnData(s); });
                QObject::connect(s, &QTcpSocket::disconnected, s, &QObject::deleteLater);
            }
        });
    }
    QString url(const QString& path) const {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
    }
    int requests = 0;

private:
    void OnData(QTcpSocket* s) {
        QByteArray& buf = m_buffers[s];
        buf += s->readAll();
        const int headerEnd = buf.indexOf("\r\n\r\n");
        if (headerEnd < 0)
            return;
        const QByteArray head = buf.left(headerEnd);
        int length = 0;
        for (const QByteArray& line : head.split('\n'))
            if (line.toLower().startsWith("content-length:"))
                length = line.mid(15).trimmed().toInt();
        if (buf.size() < headerEnd + 4 + length)
            return;
        const QByteArray body = buf.mid(headerEnd + 4, length);
        const QList<QByteArray> first = head.left(head.indexOf("\r\n")).split(' ');
        buf.clear();
        ++requests;
        const QByteArray method = first.value(0), path = first.value(1);
        if (path == "/slow")
            return;
        int status = 200;
        QByteArray out;
        if (path == "/hello") {
            out = "hello world";
        } else if (path == "/echo") {
            out = method + ":" + body;
        } else if (path == "/upload") {
            const bool multipart = head.contains("multipart/form-data; boundary=");
            const bool hasField = body.contains("name=\"note\"") && body.contains("a note");
            const bool hasFile = body.contains("filename=\"chart.png\"") && body.contains("PNGDATA-123");
            out = QByteArray("multipart=") + (multipart ? "1" : "0") + " field=" + (hasField ? "1" : "0") +
                  " file=" + (hasFile ? "1" : "0");
        } else if (path == "/big") {
            out = QByteArray(1 << 20, 'z');
        } else {
            status = 404;
            out = "nope";
        }
        s->write("HTTP/1.1 " + QByteArray::number(status) + (status == 200 ? " OK" : " Not Found") +
                 "\r\nContent-Length: " + QByteArray::number(out.size()) + "\r\nConnection: close\r\n\r\n" + out);
        s->disconnectFromHost();
    }
    QTcpServer m_server;
    QHash<QTcpSocket*, QByteArray> m_buffers;
};

struct Result {
    bool done = false;
    core::network::http::Response resp;
    bool onMain = false;
};

core::network::http::DoneCallback Into(Result& r) {
    return [&r](const core::network::http::Response& resp) {
        r.done = true;
        r.resp = resp;
        r.onMain = QThread::currentThread() == QCoreApplication::instance()->thread();
    };
}

}  // namespace

class TestHttp : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void getPostAndStatus();
    void multipartCarriesFieldsAndFiles();
    void saveToFileStreamsAndNeverLeavesPartialFiles();
    void cancelNeverCallsBack();
    void failuresCarryNetworkErrorAndStatus();
    void startFromWorkerThreadAnswersOnMain();
};

void TestHttp::getPostAndStatus() {
    MiniHttpServer server;
    Result get, post, missing;
    core::network::http::Start({server.url(QStringLiteral("/hello"))}, Into(get));
    core::network::http::Request req{server.url(QStringLiteral("/echo"))};
    req.method = "POST";
    req.body = "payload";
    core::network::http::Start(req, Into(post));
    core::network::http::Start({server.url(QStringLiteral("/nothing-here"))}, Into(missing));
    QTRY_VERIFY(get.done && post.done && missing.done);
    QVERIFY(get.resp.Ok());
    QCOMPARE(get.resp.i32HttpStatus, 200);
    QCOMPARE(get.resp.body, QByteArray("hello world"));
    QCOMPARE(get.resp.headers.value("content-length"), QByteArray("11"));
    QCOMPARE(post.resp.body, QByteArray("POST:payload"));
    QVERIFY(!missing.resp.Ok());
    QCOMPARE(missing.resp.i32HttpStatus, 404);
    QVERIFY(missing.resp.i32NetworkError != 0);
    QVERIFY(get.onMain && post.onMain && missing.onMain);
}

void TestHttp::multipartCarriesFieldsAndFiles() {
    MiniHttpServer server;
    lxtest::TempProductRoot root;
    const QString file = lxtest::WriteFile(root.path() + QStringLiteral("/chart.png"), "PNGDATA-123");
    core::network::http::Request req{server.url(QStringLiteral("/upload"))};
    req.formFields.append({QStringLiteral("note"), QByteArray("a note")});
    req.fileFields.append({QStringLiteral("image"), file, QString(), QByteArray("image/png")});
    Result r;
    core::network::http::Start(req, Into(r));
    QTRY_VERIFY(r.done);
    QCOMPARE(r.resp.body, QByteArray("multipart=1 field=1 file=1"));

    // A file that cannot be read fails the request instead of sending a truncated form.
    req.fileFields[0].strFilePath = root.path() + QStringLiteral("/missing.png");
    Result bad;
    core::network::http::Start(req, Into(bad));
    QTRY_VERIFY(bad.done);
    QVERIFY(!bad.resp.Ok());
    QVERIFY(bad.resp.strError.contains(QStringLiteral("missing.png")));
}

void TestHttp::saveToFileStreamsAndNeverLeavesPartialFiles() {
    MiniHttpServer server;
    lxtest::TempProductRoot root;
    core::network::http::Request req{server.url(QStringLiteral("/big"))};
    req.strSaveToFile = root.path() + QStringLiteral("/dl/big.bin");
    qint64 lastProgress = 0;
    Result r;
    core::network::http::Start(req, Into(r), [&](qint64 rec, qint64) { lastProgress = rec; });
    QTRY_VERIFY(r.done);
    QVERIFY(r.resp.Ok());
    QCOMPARE(r.resp.strSavedFile, req.strSaveToFile);
    QVERIFY(r.resp.body.isEmpty());
    QCOMPARE(QFileInfo(req.strSaveToFile).size(), qint64(1 << 20));
    QCOMPARE(lastProgress, qint64(1 << 20));
    QVERIFY(!QFile::exists(req.strSaveToFile + QStringLiteral(".part")));

    req.strUrl = server.url(QStringLiteral("/missing"));
    req.strSaveToFile = root.path() + QStringLiteral("/dl/missing.bin");
    Result failed;
    core::network::http::Start(req, Into(failed));
    QTRY_VERIFY(failed.done);
    QVERIFY(!QFile::exists(req.strSaveToFile));
    QVERIFY(!QFile::exists(req.strSaveToFile + QStringLiteral(".part")));
}

void TestHttp::cancelNeverCallsBack() {
    MiniHttpServer server;
    Result r;
    const auto id = core::network::http::Start({server.url(QStringLiteral("/slow"))}, Into(r));
    QTRY_COMPARE(server.requests, 1);
    QCOMPARE(core::network::http::RunningCount(), 1);
    QVERIFY(core::network::http::Cancel(id));
    QVERIFY(!core::network::http::Cancel(id));
    QTest::qWait(100);
    QVERIFY(!r.done);
    QCOMPARE(core::network::http::RunningCount(), 0);
}

void TestHttp::failuresCarryNetworkErrorAndStatus() {
    // A port nobody listens on: connection refused, no HTTP status.
    QTcpServer probe;
    QVERIFY(probe.listen(QHostAddress::LocalHost));
    const quint16 port = probe.serverPort();
    probe.close();
    Result refused, invalid;
    core::network::http::Start({QStringLiteral("http://127.0.0.1:%1/x").arg(port)}, Into(refused));
    core::network::http::Start({QStringLiteral("no scheme at all")}, Into(invalid));
    QVERIFY(!invalid.done);  // answered asynchronously, never inside Start
    QTRY_VERIFY(refused.done && invalid.done);
    QCOMPARE(refused.resp.i32NetworkError, int(QNetworkReply::ConnectionRefusedError));
    QCOMPARE(refused.resp.i32HttpStatus, 0);
    QVERIFY(!invalid.resp.Ok());
}

void TestHttp::startFromWorkerThreadAnswersOnMain() {
    MiniHttpServer server;
    Result r;
    const QString url = server.url(QStringLiteral("/hello"));
    QThread* worker = QThread::create([&] { core::network::http::Start({url}, Into(r)); });
    worker->start();
    QVERIFY(worker->wait(5000));
    delete worker;
    QTRY_VERIFY(r.done);
    QVERIFY(r.onMain);
    QCOMPARE(r.resp.body, QByteArray("hello world"));
}

QTEST_GUILESS_MAIN(TestHttp)
#include "tst_http.moc"
