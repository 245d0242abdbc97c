// CLxHttpDownloadDelegate against a real HTTP server on 127.0.0.1 started and stopped by the test:
// one request per URL, cache mode, removal, bounded concurrency, failure codes, file URLs, and a
// web image widget at the end of the road.

#include "ImageFixtures.h"
#include "LocalHttpServer.h"
#include "LxTestSupport.h"

#include <LxUIKit/WebImage/LWebImageReloadHelper.h>
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

class Receiver : public LUIKitHttpDownloadDelegate {
public:
    struct Call {
        bool bOk = false;
        QString strUrl, strPath;
        int i32Code1 = 0, i32Code2 = 0;
        bool bGuiThread = false;
    };
    std::vector<Call> vecCalls;
    std::function<void()> fnOnCall;

    void OnDownloadSuccess(const QString& url, const QString& filePath, const QByteArray&) override {
        vecCalls.push_back({true, url, filePath, 0, 0, QThread::currentThread() == qApp->thread()});
        if (fnOnCall)
            fnOnCall();
    }
    void OnDownloadFailed(const QString& url, int a, int b) override {
        vecCalls.push_back({false, url, QString(), a, b, QThread::currentThread() == qApp->thread()});
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

    void Get(const QString& url, Receiver* r, LxHttpDownloadCacheMode mode = LxHttpDownloadCacheMode::ReuseDownloaded) {
        ILxUIKitHttpDownloadMgr::setCacheMode(url.toStdString(), mode);
        ILxUIKitHttpDownloadMgr::download(url.toStdString(), r, HttpWorkPool::Image);
    }

private slots:
    void initTestCase() {
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        QVERIFY(m_server.Start());
        QBuffer buffer(&m_png);
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(lxtest::MakeTestImage(32, 24, Qt::red).save(&buffer, "PNG"));
    }
    void init() {
        m_pDelegate = new CLxHttpDownloadDelegate(
            m_dir.filePath(QStringLiteral("dl%1").arg(QRandomGenerator::global()->generate())));
        ILxUIKitHttpDownloadMgr::setDelegate(m_pDelegate);
        m_server.ResetCounts();
        CLxWebImageCacheMgr::GetInstance().Clear();
    }
    void cleanupTestCase() { m_server.Stop(); }

    void oneRequestForManyReceivers() {
        m_server.SetRoute(QStringLiteral("/a.png"), 200, m_png, 150);
        const QString url = m_server.Url(QStringLiteral("/a.png"));
        Receiver r1, r2, r3;
        Get(url, &r1);
        Get(url, &r2);
        Get(url, &r2);  // asking twice while waiting: answered once
        Get(url, &r3);
        QTRY_VERIFY(!r3.vecCalls.empty());
        QTest::qWait(50);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/a.png")), 1);
        for (Receiver* r : {&r1, &r2, &r3}) {
            QCOMPARE(r->vecCalls.size(), size_t(1));
            QVERIFY(r->vecCalls[0].bOk);
            QVERIFY(r->vecCalls[0].bGuiThread);
            QCOMPARE(r->vecCalls[0].strUrl, url);
            QCOMPARE(r->vecCalls[0].strPath, m_pDelegate->FilePathFor(url));
        }
        QVERIFY(r1.vecCalls[0].strPath.endsWith(QLatin1String(".png")));
        QCOMPARE(lxtest::ReadAll(r1.vecCalls[0].strPath), m_png);
        QVERIFY(!QFile::exists(r1.vecCalls[0].strPath + QStringLiteral(".part")));
        QCOMPARE(m_pDelegate->GetStatistics().u64Requests, 1u);
        QCOMPARE(m_pDelegate->GetStatistics().u64Coalesced, 2u);
        QCOMPARE(m_pDelegate->PendingUrlCount(), 0);
    }

    void cacheModeReusesTheFile() {
        m_server.SetRoute(QStringLiteral("/c.png"), 200, m_png);
        const QString url = m_server.Url(QStringLiteral("/c.png"));
        Receiver first;
        Get(url, &first);
        QTRY_COMPARE(first.vecCalls.size(), size_t(1));

        Receiver again;
        Get(url, &again);
        QVERIFY(again.vecCalls.empty());  // never answered from inside download()
        QTRY_COMPARE(again.vecCalls.size(), size_t(1));
        QVERIFY(again.vecCalls[0].bOk);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/c.png")), 1);
        QCOMPARE(m_pDelegate->GetStatistics().u64DiskHits, 1u);

        Receiver fresh;
        Get(url, &fresh, LxHttpDownloadCacheMode::AlwaysDownload);
        QTRY_COMPARE(fresh.vecCalls.size(), size_t(1));
        QCOMPARE(m_server.RequestCount(QStringLiteral("/c.png")), 2);
    }

    void downloadFolderPerUrl() {
        m_server.SetRoute(QStringLiteral("/pics/d.JPG?x=1"), 200, m_png);
        const QString url = m_server.Url(QStringLiteral("/pics/d.JPG?x=1"));
        const QString dir = m_dir.filePath(QStringLiteral("custom"));
        ILxUIKitHttpDownloadMgr::setDowndloadDirPath(url.toStdString(), dir.toStdString());
        Receiver r;
        Get(url, &r);
        QTRY_COMPARE(r.vecCalls.size(), size_t(1));
        QVERIFY(r.vecCalls[0].bOk);
        QCOMPARE(QFileInfo(r.vecCalls[0].strPath).absolutePath(), QFileInfo(dir).absoluteFilePath());
        QVERIFY(QRegularExpression(QStringLiteral("^[0-9a-f]{16}\\.jpg$"))
                    .match(QFileInfo(r.vecCalls[0].strPath).fileName())
                    .hasMatch());
    }

    void removedReceiversAreNeverCalled() {
        m_server.SetRoute(QStringLiteral("/slow.png"), 200, m_png, 150);
        const QString url = m_server.Url(QStringLiteral("/slow.png"));
        Receiver a, b;
        auto* gone = new Receiver;
        auto* killedByB = new Receiver;
        Get(url, &a);
        Get(url, gone);
        Get(url, &b);
        Get(url, killedByB);
        ILxUIKitHttpDownloadMgr::removeDownloadDelegate(&a);
        delete gone;  // unregisters itself
        b.fnOnCall = [&killedByB] {
            delete killedByB;  // removed while the answer is being delivered
            killedByB = nullptr;
        };
        QTRY_COMPARE(b.vecCalls.size(), size_t(1));
        QTest::qWait(30);
        QVERIFY(a.vecCalls.empty());
        QVERIFY(!killedByB);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/slow.png")), 1);  // the running request was kept
    }

    void concurrencyIsBoundedPerPool() {
        m_pDelegate->SetMaxConcurrent(int(HttpWorkPool::Image), 2);
        std::vector<std::unique_ptr<Receiver>> receivers;
        for (int i = 0; i < 6; ++i) {
            const QString path = QStringLiteral("/q%1.png").arg(i);
            m_server.SetRoute(path, 200, m_png, 80);
            receivers.push_back(std::make_unique<Receiver>());
            Get(m_server.Url(path), receivers.back().get());
        }
        QCOMPARE(m_pDelegate->RunningCount(int(HttpWorkPool::Image)), 2);
        QCOMPARE(m_pDelegate->QueuedCount(int(HttpWorkPool::Image)), 4);
        // Nobody waits for the last one any more: it never reaches the server.
        receivers.back().reset();
        for (int i = 0; i < 5; ++i)
            QTRY_COMPARE(receivers[size_t(i)]->vecCalls.size(), size_t(1));
        QTest::qWait(120);
        QCOMPARE(m_server.MaxInFlight(), 2);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/q5.png")), 0);
        QCOMPARE(m_pDelegate->GetStatistics().u64Dropped, 1u);
        QCOMPARE(m_server.TotalRequests(), 5);
    }

    void failuresCarryTheCodes_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("code1");
        QTest::addColumn<int>("code2");
        QTest::newRow("404") << "404" << int(QNetworkReply::ContentNotFoundError) << 404;
        QTest::newRow("500") << "500" << int(QNetworkReply::InternalServerError) << 500;
        QTest::newRow("connection dropped") << "drop" << int(QNetworkReply::RemoteHostClosedError) << 0;
        QTest::newRow("connection refused") << "refused" << int(QNetworkReply::ConnectionRefusedError) << 0;
        QTest::newRow("body over the bound") << "big" << int(QNetworkReply::UnknownContentError) << 200;
        QTest::newRow("unsupported scheme") << "ftp" << int(QNetworkReply::ProtocolUnknownError) << 0;
        QTest::newRow("missing local file") << "file" << int(QNetworkReply::ContentNotFoundError) << 0;
    }
    void failuresCarryTheCodes() {
        QFETCH(QString, kind);
        QFETCH(int, code1);
        QFETCH(int, code2);
        QString url;
        if (kind == QLatin1String("404")) {
            url = m_server.Url(QStringLiteral("/nothing-here.png"));
        } else if (kind == QLatin1String("500")) {
            m_server.SetRoute(QStringLiteral("/boom"), 500, "oops");
            url = m_server.Url(QStringLiteral("/boom"));
        } else if (kind == QLatin1String("drop")) {
            lxtest::LocalHttpServer::Route route;
            route.bDropConnection = true;
            m_server.SetRoute(QStringLiteral("/drop"), route);
            url = m_server.Url(QStringLiteral("/drop"));
        } else if (kind == QLatin1String("refused")) {
            QTcpServer probe;
            QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
            url = QStringLiteral("http://127.0.0.1:%1/x.png").arg(probe.serverPort());
            probe.close();
        } else if (kind == QLatin1String("big")) {
            m_pDelegate->SetMaxFileBytes(1000);
            m_server.SetRoute(QStringLiteral("/big"), 200, QByteArray(200000, 'x'));
            url = m_server.Url(QStringLiteral("/big"));
        } else if (kind == QLatin1String("ftp")) {
            url = QStringLiteral("ftp://127.0.0.1/x.png");
        } else {
            url = QUrl::fromLocalFile(m_dir.filePath(QStringLiteral("absent.png"))).toString();
        }
        Receiver r;
        Get(url, &r);
        QTRY_COMPARE(r.vecCalls.size(), size_t(1));
        QVERIFY(!r.vecCalls[0].bOk);
        QCOMPARE(r.vecCalls[0].i32Code1, code1);
        QCOMPARE(r.vecCalls[0].i32Code2, code2);
        QVERIFY(r.vecCalls[0].bGuiThread);
        const QString target = m_pDelegate->FilePathFor(url);
        QVERIFY(!QFile::exists(target));
        QVERIFY(!QFile::exists(target + QStringLiteral(".part")));
        QCOMPARE(m_pDelegate->GetStatistics().u64Failed, 1u);
    }

    void fileUrlsAnswerTheLocalPath() {
        const QString local = lxtest::WriteFile(m_dir.filePath(QStringLiteral("local pic.png")), m_png);
        const QString url = QUrl::fromLocalFile(local).toString();
        Receiver r;
        Get(url, &r);
        QTRY_COMPARE(r.vecCalls.size(), size_t(1));
        QVERIFY(r.vecCalls[0].bOk);
        QCOMPARE(r.vecCalls[0].strPath, local);
        QCOMPARE(m_pDelegate->GetStatistics().u64LocalFiles, 1u);
        QCOMPARE(m_server.TotalRequests(), 0);
    }

    void askingAgainFromInsideAnAnswer() {
        m_server.SetRoute(QStringLiteral("/re.png"), 200, m_png);
        const QString url = m_server.Url(QStringLiteral("/re.png"));
        Receiver r;
        r.fnOnCall = [&] {
            if (r.vecCalls.size() == 1)
                Get(url, &r);  // a retry of its own
        };
        Get(url, &r);
        QTRY_COMPARE(r.vecCalls.size(), size_t(2));
        QTest::qWait(30);
        QCOMPARE(r.vecCalls.size(), size_t(2));
        QCOMPARE(m_server.RequestCount(QStringLiteral("/re.png")), 1);  // the second came from disk
    }

    void replacingTheDelegateCancelsItsRequests() {
        m_server.SetRoute(QStringLiteral("/late.png"), 200, m_png, 100);
        Receiver r;
        Get(m_server.Url(QStringLiteral("/late.png")), &r);
        QTRY_COMPARE(m_server.RequestCount(QStringLiteral("/late.png")), 1);
        ILxUIKitHttpDownloadMgr::setDelegate(new CLxHttpDownloadDelegate(m_dir.filePath(QStringLiteral("other"))));
        m_pDelegate = nullptr;
        QTest::qWait(250);
        QVERIFY(r.vecCalls.empty());
    }

    void webImageWidgetEndToEnd() {
        m_server.SetRoute(QStringLiteral("/w.png"), 200, m_png, 50);
        m_server.SetRoute(QStringLiteral("/w.gif"), 200, lxtest::EncodeGif(lxtest::MakeFrames(3, 10, 10), 40));
        LxWebImageWidget a, b, gif, broken;
        QSignalSpy spyA(&a, &LxWebImageWidget::ImageLoadStatusSignal);
        QSignalSpy spyB(&b, &LxWebImageWidget::ImageLoadStatusSignal);
        a.SetUrl(m_server.Url(QStringLiteral("/w.png")));
        b.SetUrl(m_server.Url(QStringLiteral("/w.png")));
        gif.SetUrl(m_server.Url(QStringLiteral("/w.gif")));
        QTRY_COMPARE(spyA.count(), 1);
        QTRY_COMPARE(spyB.count(), 1);
        QCOMPARE(spyA.first().at(1).value<LxImageLoadStatus>(), LxImageLoadStatus::Loaded);
        QCOMPARE(a.GetImageSize(), QSize(32, 24));
        QCOMPARE(m_server.RequestCount(QStringLiteral("/w.png")), 1);
        QTRY_COMPARE(gif.GetPrivateImageType(), LxWebImageWidget::ImageType_Animated);

        QSignalSpy final(LWebImageReloadHelper::instance(), &LWebImageReloadHelper::webImageLoadFinalFailed);
        LWebImageReloadHelper::instance()->setAutoRetryTimes(&broken, 2);
        broken.SetUrl(m_server.Url(QStringLiteral("/missing.png")));
        QTRY_COMPARE(final.count(), 1);
        QCOMPARE(final.first().at(1).toUInt(), 3u);
        QCOMPARE(m_server.RequestCount(QStringLiteral("/missing.png")), 3);
        QVERIFY(broken.IsShowingFailImage());
    }
};

QTEST_MAIN(tst_HttpDownloadDelegate)
#include "tst_HttpDownloadDelegate.moc"
