// HTTP over QNetworkAccessManager against the shared local server on 127.0.0.1.

#include <LxCore/Http.h>

#include <QTcpServer>
#include <QThread>
#include <QtTest>

#include "LocalHttpServer.h"
#include "LxTestSupport.h"

namespace {

using lxtest::LocalHttpServer;

// The shared local server, answering by path: /hello, /echo (method and body), /upload (which
// multipart fields arrived), /big (1 MiB), /slow (never answers); anything else 404.
struct Server : LocalHttpServer {
    Server() {
        QVERIFY(Start());
        SetRoute(QStringLiteral("/hello"), 200, "hello world");
        SetRoute(QStringLiteral("/big"), 200, QByteArray(1 << 20, 'z'));
        SetRoute(QStringLiteral("/slow"), kNeverAnswer, QByteArray());
        SetHandler([](const Request& r) -> Reply {
            if (r.path == QLatin1String("/echo"))
                return {200, r.method + ":" + r.body};
            if (r.path != QLatin1String("/upload"))
                return {};
            const auto has = [&r](const char* a, const char* b) { return r.body.contains(a) && r.body.contains(b); };
            return {200, QByteArray("multipart=") + (r.head.contains("multipart/form-data; boundary=") ? "1" : "0") +
                             " field=" + (has("name=\"note\"", "a note") ? "1" : "0") +
                             " file=" + (has("filename=\"chart.png\"", "PNGDATA-123") ? "1" : "0")};
        });
    }
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
    void cleanup() { lxtest::ResetGlobals(); }

    void getPostAndStatus() {
        Server server;
        Result get, post, missing;
        // Started from another thread, answered on the GUI thread like the others.
        const QString hello = server.Url(QStringLiteral("/hello"));
        QThread* worker = QThread::create([&] { core::network::http::Start({hello}, Into(get)); });
        worker->start();
        QVERIFY(worker->wait(5000));
        delete worker;
        core::network::http::Request req{server.Url(QStringLiteral("/echo"))};
        req.method = "POST";
        req.body = "payload";
        core::network::http::Start(req, Into(post));
        core::network::http::Start({server.Url(QStringLiteral("/nothing-here"))}, Into(missing));
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

    void multipartCarriesFieldsAndFiles() {
        Server server;
        lxtest::TempProductRoot root;
        const QString file = lxtest::WriteFile(root.path() + QStringLiteral("/chart.png"), "PNGDATA-123");
        core::network::http::Request req{server.Url(QStringLiteral("/upload"))};
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

    void saveToFileStreamsAndNeverLeavesPartialFiles() {
        Server server;
        lxtest::TempProductRoot root;
        core::network::http::Request req{server.Url(QStringLiteral("/big"))};
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

        req.strUrl = server.Url(QStringLiteral("/missing"));
        req.strSaveToFile = root.path() + QStringLiteral("/dl/missing.bin");
        Result failed;
        core::network::http::Start(req, Into(failed));
        QTRY_VERIFY(failed.done);
        QVERIFY(!QFile::exists(req.strSaveToFile));
        QVERIFY(!QFile::exists(req.strSaveToFile + QStringLiteral(".part")));
    }

    void cancelNeverCallsBack() {
        Server server;
        Result r;
        const auto id = core::network::http::Start({server.Url(QStringLiteral("/slow"))}, Into(r));
        QTRY_COMPARE(server.TotalRequests(), 1);
        QCOMPARE(core::network::http::RunningCount(), 1);
        QVERIFY(core::network::http::Cancel(id));
        QVERIFY(!core::network::http::Cancel(id));
        QTest::qWait(100);
        QVERIFY(!r.done);
        QCOMPARE(core::network::http::RunningCount(), 0);
    }

    void failuresCarryNetworkErrorAndStatus() {
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
};

QTEST_GUILESS_MAIN(TestHttp)
#include "tst_Http.moc"
