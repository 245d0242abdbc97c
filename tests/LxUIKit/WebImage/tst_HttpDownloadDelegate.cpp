// CLxHttpDownloadDelegate against a real HTTP server on 127.0.0.1 started and stopped by the test:
// one request per URL, cache mode, removal, bounded concurrency, failure codes, file URLs, and a
// web image widget at the end of the road.

#include "ImageFixtures.h"
#include "LocalHttpServer.h"
#include "LxTestSupport.h"

#include <LxUIKit/WebImage/LxHttpDownloadDelegate.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QNetworkProxy>
#include <QNetworkReply>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <functional>
#include <memory>

namespace {

using lxuikit_http::HttpWorkPool;
using lxuikit_http::LxHttpDownloadCacheMode;

// Records its answers as "ok <path>" or "failed <network error> <HTTP status>", marked when one
// comes off the GUI thread.
class Receiver : public LUIKitHttpDownloadDelegate {
public:
    QStringList calls;
    std::function<void()> fnOnCall;

    void OnDownloadSuccess(const QString&, const QString& path, const QByteArray&) override { Record("ok " + path); }
    void OnDownloadFailed(const QString&, int a, int b) override {
        Record(QStringLiteral("failed %1 %2").arg(a).arg(b));
    }

private:
    void Record(const QString& call) {
        calls << call + (QThread::currentThread() == qApp->thread() ? "" : " off the GUI thread");
        if (fnOnCall)
            fnOnCall();
    }
};

}  // namespace

class tst_HttpDownloadDelegate : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    lxtest::LocalHttpServer m_server;
    CLxHttpDownloadDelegate* m_pDelegate = nullptr;  // owned by the facade
    QByteArray m_png;

    // Serves `body` at `path` (status 0: drops the connection) and answers its URL.
    QString Serve(const QString& path, const QByteArray& body, int delayMs = 0, int status = 200) {
        m_server.SetRoute(path, status, body, delayMs);
        return m_server.Url(path);
    }
    void Get(const QString& url, Receiver* r, LxHttpDownloadCacheMode mode = LxHttpDownloadCacheMode::ReuseDownloaded) {
        ILxUIKitHttpDownloadMgr::setCacheMode(url.toStdString(), mode);
        ILxUIKitHttpDownloadMgr::download(url.toStdString(), r, HttpWorkPool::Image);
    }

private slots:
    void initTestCase() {
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        QVERIFY(m_server.Start());
        m_png = lxtest::ReadAll(
            lxtest::SaveImage(m_dir.filePath("red.png"), lxtest::MakeTestImage(32, 24, Qt::red), "PNG"));
    }
    void init() {
        m_pDelegate = new CLxHttpDownloadDelegate(
            m_dir.filePath(QStringLiteral("dl%1").arg(QRandomGenerator::global()->generate())));
        ILxUIKitHttpDownloadMgr::setDelegate(m_pDelegate);
        m_server.ResetCounts();
        CLxWebImageCacheMgr::GetInstance().Clear();
    }

    void oneRequestForManyReceivers() {
        const QString url = Serve(QStringLiteral("/a.png"), m_png, 150);
        Receiver r1, r2, r3;
        Get(url, &r1);
        Get(url, &r2);
        Get(url, &r2);  // asking twice while waiting: answered once
        Get(url, &r3);
        QTRY_VERIFY(!r3.calls.empty());
        QTest::qWait(50);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/a.png")), 1);
        const QString path = m_pDelegate->FilePathFor(url);
        for (Receiver* r : {&r1, &r2, &r3})
            QCOMPARE(r->calls, QStringList{"ok " + path});
        QCOMPARE(lxtest::ReadAll(path), m_png);
        QVERIFY(!QFile::exists(path + QStringLiteral(".part")));
        QCOMPARE(m_pDelegate->PendingUrlCount(), 0);
    }

    void cacheModeFolderAndAskingAgain() {
        const QString url = Serve(QStringLiteral("/pics/c.JPG?x=1"), m_png);
        const QString dir = m_dir.filePath(QStringLiteral("custom"));
        ILxUIKitHttpDownloadMgr::setDowndloadDirPath(url.toStdString(), dir.toStdString());
        Receiver first, again, fresh;
        first.fnOnCall = [&] {
            if (first.calls.size() == 1)
                Get(url, &first);  // a retry of its own, from inside the answer
        };
        Get(url, &first);
        QTRY_COMPARE(first.calls.size(), 2);
        QCOMPARE(first.calls[1], first.calls[0]);
        const QFileInfo file(first.calls[0].mid(3));
        QCOMPARE(file.absolutePath(), QFileInfo(dir).absoluteFilePath());
        QVERIFY(QRegularExpression(QStringLiteral("^[0-9a-f]{16}\\.jpg$")).match(file.fileName()).hasMatch());
        Get(url, &again);
        QVERIFY(again.calls.empty());  // never answered from inside download()
        QTRY_COMPARE(again.calls.size(), 1);
        QTest::qWait(30);
        QCOMPARE(first.calls.size() + again.calls.size(), 3);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/pics/c.JPG?x=1")), 1);  // the others came from the disk
        Get(url, &fresh, LxHttpDownloadCacheMode::AlwaysDownload);
        QTRY_COMPARE(fresh.calls.size(), 1);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/pics/c.JPG?x=1")), 2);
    }

    void removedReceiversAreNeverCalled() {
        const QString url = Serve(QStringLiteral("/slow.png"), m_png, 150);
        Receiver a, b;
        auto* gone = new Receiver;
        auto* killedByB = new Receiver;
        for (Receiver* r : {&a, gone, &b, killedByB})
            Get(url, r);
        ILxUIKitHttpDownloadMgr::removeDownloadDelegate(&a);
        delete gone;  // unregisters itself
        b.fnOnCall = [&killedByB] {
            delete killedByB;  // removed while the answer is being delivered
            killedByB = nullptr;
        };
        QTRY_COMPARE(b.calls.size(), 1);
        QTest::qWait(30);
        QVERIFY(a.calls.empty());
        QVERIFY(!killedByB);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/slow.png")), 1);  // the running request was kept
    }

    void concurrencyIsBoundedPerPool() {
        m_pDelegate->SetMaxConcurrent(int(HttpWorkPool::Image), 2);
        std::vector<std::unique_ptr<Receiver>> receivers;
        for (int i = 0; i < 6; ++i) {
            receivers.push_back(std::make_unique<Receiver>());
            Get(Serve(QStringLiteral("/q%1.png").arg(i), m_png, 80), receivers.back().get());
        }
        // Nobody waits for the last one any more: it never reaches the server.
        receivers.back().reset();
        for (int i = 0; i < 5; ++i)
            QTRY_COMPARE(receivers[size_t(i)]->calls.size(), 1);
        QTest::qWait(120);
        QCOMPARE(m_server.MaxInFlight(), 2);
        QCOMPARE(m_server.TotalRequests(), 5);
    }

    void answers_data() {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("answer");
        QTcpServer probe;  // a port nobody listens on once the probe is gone
        QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
        const QString refused = QStringLiteral("http://127.0.0.1:%1/x.png").arg(probe.serverPort());
        probe.close();
        auto failed = [](QNetworkReply::NetworkError e, int status) {
            return QStringLiteral("failed %1 %2").arg(int(e)).arg(status);
        };
        const QString local = lxtest::WriteFile(m_dir.filePath("local pic.png"), m_png);
        QTest::newRow("file URL: the local path itself") << QUrl::fromLocalFile(local).toString() << "ok " + local;
        QTest::newRow("404") << m_server.Url("/nothing-here.png") << failed(QNetworkReply::ContentNotFoundError, 404);
        QTest::newRow("500") << Serve("/boom", "oops", 0, 500) << failed(QNetworkReply::InternalServerError, 500);
        QTest::newRow("connection dropped")
            << Serve("/drop", {}, 0, 0) << failed(QNetworkReply::RemoteHostClosedError, 0);
        QTest::newRow("connection refused") << refused << failed(QNetworkReply::ConnectionRefusedError, 0);
        QTest::newRow("body over the bound")
            << Serve("/big", QByteArray(200000, 'x')) << failed(QNetworkReply::UnknownContentError, 200);
        QTest::newRow("unsupported scheme")
            << "ftp://127.0.0.1/x.png" << failed(QNetworkReply::ProtocolUnknownError, 0);
        QTest::newRow("missing local file") << QUrl::fromLocalFile(m_dir.filePath("absent.png")).toString()
                                            << failed(QNetworkReply::ContentNotFoundError, 0);
    }
    void answers() {
        QFETCH(QString, url);
        QFETCH(QString, answer);
        m_pDelegate->SetMaxFileBytes(1000);
        Receiver r;
        Get(url, &r);
        QTRY_COMPARE(r.calls, QStringList{answer});
        const QString target = m_pDelegate->FilePathFor(url);  // a failure leaves no file, not even a part
        QVERIFY(!QFile::exists(target) && !QFile::exists(target + ".part"));
    }

    void replacingTheDelegateCancelsItsRequests() {
        Receiver r;
        Get(Serve(QStringLiteral("/late.png"), m_png, 100), &r);
        QTRY_COMPARE(m_server.RequestCount(QStringLiteral("/late.png")), 1);
        ILxUIKitHttpDownloadMgr::setDelegate(new CLxHttpDownloadDelegate(m_dir.filePath(QStringLiteral("other"))));
        m_pDelegate = nullptr;
        QTest::qWait(250);
        QVERIFY(r.calls.empty());
    }

    void webImageWidgetEndToEnd() {
        LxWebImageWidget w;
        w.SetUrl(Serve(QStringLiteral("/w.png"), m_png, 50));
        QTRY_COMPARE(w.GetImageSize(), QSize(32, 24));
    }
};

QTEST_MAIN(tst_HttpDownloadDelegate)
#include "tst_HttpDownloadDelegate.moc"
