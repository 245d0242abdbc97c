// The download facade and the memory image cache.

#include "ImageFixtures.h"
#include "LxTestSupport.h"

#include <LxCore/StrConv.h>
#include <LxUIKit/WebImage/ILxUIKitHttpDownloadMgr.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>

#include <QBitmap>
#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const char* kFacadeFile = "LxPlatform/LxUIKit/WebImage/ILxUIKitHttpDownloadMgr";

struct Recorded {
    std::string strOp, strUrl, strDir;
    LUIKitHttpDownloadDelegate* pReceiver = nullptr;
    int i32Value = -1;
};

class RecordingDelegate : public ILUIKitHttpMgrDelegate {
public:
    RecordingDelegate(std::vector<Recorded>* log, bool* deleted) : m_pLog(log), m_pDeleted(deleted) {}
    ~RecordingDelegate() override { *m_pDeleted = true; }
    void download(const std::string& url, LUIKitHttpDownloadDelegate* r, const lxuikit_http::HttpWorkPool& p) override {
        m_pLog->push_back({"download", url, "", r, int(p)});
    }
    void setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& m) override {
        m_pLog->push_back({"setCacheMode", url, "", nullptr, int(m)});
    }
    void setDowndloadDirPath(const std::string& url, const std::string& dir) override {
        m_pLog->push_back({"setDowndloadDirPath", url, dir, nullptr, -1});
    }
    void removeDownloadDelegate(LUIKitHttpDownloadDelegate* r) override {
        m_pLog->push_back({"removeDownloadDelegate", "", "", r, -1});
    }

private:
    std::vector<Recorded>* m_pLog;
    bool* m_pDeleted;
};

class NullReceiver : public LUIKitHttpDownloadDelegate {
public:
    void OnDownloadSuccess(const QString&, const QString&, const QByteArray&) override {}
    void OnDownloadFailed(const QString&, int, int) override {}
};

// A pixmap whose pixels are never touched: big sizes cost address space only.
QPixmap Blank(int w, int h) { return QPixmap(w, h); }

}  // namespace

class tst_WebImageCache : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        // The first use of the cache writes its limit to the log.
        lxtest::LogCapture logs;
        CLxWebImageCacheMgr::GetInstance();
        QVERIFY(logs.hasExact(QStringLiteral("m_ki32MaxCacheCost:1048576000")));
        QCOMPARE(CLxWebImageCacheMgr::MaxCacheCost(), 1048576000);
    }
    void init() { CLxWebImageCacheMgr::GetInstance().Clear(); }
    void cleanup() { ILxUIKitHttpDownloadMgr::setDelegate(nullptr); }

    void keyIsTheHashOfTheUtf8Bytes_data() {
        QTest::addColumn<QString>("url");
        QTest::newRow("ascii") << QStringLiteral("https://img.example.com/a/b.png?size=96");
        QTest::newRow("empty") << QString();
        QTest::newRow("non-ascii") << QStringLiteral("https://图片.example/头像.png");
        QTest::newRow("long ascii") << QStringLiteral("https://x/") + QString(600, QLatin1Char('a'));
        QTest::newRow("long non-ascii") << QString(600, QChar(0x4e2d));
        QTest::newRow("lone surrogate") << QStringLiteral("a") + QChar(0xd800) + QStringLiteral("b");
    }
    void keyIsTheHashOfTheUtf8Bytes() {
        QFETCH(QString, url);
        QCOMPARE(quint64(CLxWebImageCacheMgr::KeyOf(url)), quint64(core::str_conv::HashStrToUInt64(url.toStdString())));
    }

    void facadeWithoutDelegateAssertsAndDoesNothing() {
        ILxUIKitHttpDownloadMgr::setDelegate(nullptr);
        lxtest::AssertRecorder asserts;
        NullReceiver* receiver = new NullReceiver;
        ILxUIKitHttpDownloadMgr::download("http://a/x.png", receiver, lxuikit_http::HttpWorkPool::Image);
        ILxUIKitHttpDownloadMgr::setCacheMode("http://a/x.png", lxuikit_http::LxHttpDownloadCacheMode::ReuseDownloaded);
        ILxUIKitHttpDownloadMgr::setDowndloadDirPath("http://a/x.png", "/tmp");
        ILxUIKitHttpDownloadMgr::removeDownloadDelegate(receiver);
        QCOMPARE(asserts.count(), 4);
        // A receiver that dies unregisters itself, which asserts too when nobody is installed.
        delete receiver;
        QCOMPARE(asserts.count(), 5);
        for (const auto& a : asserts.asserts()) {
            QCOMPARE(QString::fromStdString(a.strExpression), QStringLiteral("false"));
            QCOMPARE(QString::fromStdString(a.strModule), QStringLiteral("LxUIKit"));
            QVERIFY(QString::fromStdString(a.strFile).endsWith(QLatin1String(kFacadeFile)));
        }
    }

    void facadeForwardsUnchangedAndOwnsTheDelegate() {
        std::vector<Recorded> log;
        bool bFirstDeleted = false, bSecondDeleted = false;
        ILxUIKitHttpDownloadMgr::setDelegate(new RecordingDelegate(&log, &bFirstDeleted));
        {
            NullReceiver receiver;
            const std::string url = "https://img.example/\xe5\x9b\xbe.png?x=1";
            ILxUIKitHttpDownloadMgr::setDowndloadDirPath(url, "/data/dl");
            ILxUIKitHttpDownloadMgr::setCacheMode(url, lxuikit_http::LxHttpDownloadCacheMode::ReuseDownloaded);
            ILxUIKitHttpDownloadMgr::download(url, &receiver, lxuikit_http::HttpWorkPool::Image);
            QCOMPARE(log.size(), size_t(3));
            QCOMPARE(log[0].strOp, std::string("setDowndloadDirPath"));
            QCOMPARE(log[0].strUrl, url);
            QCOMPARE(log[0].strDir, std::string("/data/dl"));
            QCOMPARE(log[1].i32Value, 1);
            QCOMPARE(log[2].strUrl, url);
            QCOMPARE(log[2].pReceiver, static_cast<LUIKitHttpDownloadDelegate*>(&receiver));
            QCOMPARE(log[2].i32Value, 1);
        }
        // The receiver's destructor unregistered it.
        QCOMPARE(log.size(), size_t(4));
        QCOMPARE(log[3].strOp, std::string("removeDownloadDelegate"));
        QCOMPARE(log[3].pReceiver, log[2].pReceiver);

        ILxUIKitHttpDownloadMgr::setDelegate(new RecordingDelegate(&log, &bSecondDeleted));
        QVERIFY(bFirstDeleted);
        QVERIFY(!bSecondDeleted);
        ILxUIKitHttpDownloadMgr::setDelegate(nullptr);
        QVERIFY(bSecondDeleted);
        QVERIFY(!ILxUIKitHttpDownloadMgr::delegate());
    }

    void pixmapCost_data() {
        QTest::addColumn<int>("w");
        QTest::addColumn<int>("h");
        QTest::addColumn<bool>("bitmap");
        QTest::addColumn<int>("cost");
        QTest::newRow("10x10x32") << 10 << 10 << false << 400;
        QTest::newRow("1000x1000x32") << 1000 << 1000 << false << 4000000;
        QTest::newRow("bitmap rounds toward zero") << 3 << 5 << true << 1;  // 15 / 8
        // 20000 * 20000 * 32 wraps in 32 bits to -84901888; divided by 8, toward zero.
        QTest::newRow("20000x20000x32 wraps") << 20000 << 20000 << false << -10612736;
        // 8193^2 * 32 = 2148007968, read back as -2146959328.
        QTest::newRow("8193x8193x32 wraps") << 8193 << 8193 << false << -268369916;
    }
    void pixmapCost() {
        QFETCH(int, w);
        QFETCH(int, h);
        QFETCH(bool, bitmap);
        QFETCH(int, cost);
        const QPixmap pm = bitmap ? QPixmap(QBitmap(w, h)) : Blank(w, h);
        if (pm.isNull())
            QSKIP("the platform cannot allocate this pixmap");
        QCOMPARE(pm.depth(), bitmap ? 1 : 32);
        QCOMPARE(CLxWebImageCacheMgr::GetPixmapCacheCost(pm), cost);
    }

    void insertLookupAndLog() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        lxtest::LogCapture logs;
        QPixmap pm = QPixmap::fromImage(lxtest::MakeTestImage(10, 10, Qt::red));
        cache.InsertPixmap(QStringLiteral("http://a/红.png"), pm);
        QVERIFY(logs.hasExact(QStringLiteral("strUrl:http://a/红.png,i32PixmapCacheCost:400")));
        QCOMPARE(cache.GetCacheType(QStringLiteral("http://a/红.png")), 1);
        QCOMPARE(cache.GetCacheType(QStringLiteral("http://a/红.PNG")), 0);
        const QPixmap back = cache.GetPixmap(QStringLiteral("http://a/红.png"));
        QCOMPARE(back.toImage(), pm.toImage());
        QCOMPARE(back.cacheKey(), pm.cacheKey());  // shared, not copied
        QVERIFY(cache.GetPixmap(QStringLiteral("http://a/other.png")).isNull());
        QCOMPARE(cache.PixmapTotalCost(), 400);
    }

    void replacingAnEntryKeepsOnlyTheNewCost() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        cache.InsertPixmap(QStringLiteral("u"), Blank(10, 10));
        cache.InsertPixmap(QStringLiteral("u"), Blank(20, 10));
        QCOMPARE(cache.PixmapCount(), 1);
        QCOMPARE(cache.PixmapTotalCost(), 800);
        QCOMPARE(cache.GetPixmap(QStringLiteral("u")).width(), 20);
    }

    void noPixmapCostsMoreThanAQuarterOfTheLimit() {
        // The 32-bit product wraps from 2^31 on, so the costliest pixmap that does not wrap stays
        // far under the limit: an oversized object can never reach the cache's size check.
        const QPixmap edge = Blank(8192, 8191);
        if (edge.isNull())
            QSKIP("the platform cannot allocate this pixmap");
        QCOMPARE(CLxWebImageCacheMgr::GetPixmapCacheCost(edge), 268402688);
        QCOMPARE(CLxWebImageCacheMgr::GetPixmapCacheCost(Blank(8192, 8192)), -268435456);
    }

    void wrappedCostIsWhatIsCompared() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        const QPixmap huge = Blank(20000, 20000);
        if (huge.isNull())
            QSKIP("the platform cannot allocate this pixmap");
        cache.InsertPixmap(QStringLiteral("huge"), huge);
        QCOMPARE(cache.GetCacheType(QStringLiteral("huge")), 1);
        QCOMPARE(cache.PixmapTotalCost(), -10612736);
    }

    void leastRecentlyUsedGoesFirst() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        // Entries of 256000000 each: four fit under 1048576000, a fifth evicts one.
        const QPixmap quarter = Blank(8000, 8000);
        if (quarter.isNull())
            QSKIP("the platform cannot allocate this pixmap");
        QCOMPARE(CLxWebImageCacheMgr::GetPixmapCacheCost(quarter), 256000000);
        for (const char* key : {"a", "b", "c", "d"})
            cache.InsertPixmap(QString::fromLatin1(key), quarter);
        QCOMPARE(cache.PixmapTotalCost(), 4 * 256000000);
        QVERIFY(!cache.GetPixmap(QStringLiteral("a")).isNull());  // a is now the most recent
        QCOMPARE(cache.GetCacheType(QStringLiteral("b")), 1);     // asking the type does not touch b
        cache.InsertPixmap(QStringLiteral("e"), quarter);
        QCOMPARE(cache.GetCacheType(QStringLiteral("b")), 0);
        for (const char* key : {"a", "c", "d", "e"})
            QCOMPARE(cache.GetCacheType(QString::fromLatin1(key)), 1);
        QCOMPARE(cache.PixmapTotalCost(), 4 * 256000000);
        cache.InsertPixmap(QStringLiteral("f"), quarter);  // c is the oldest now
        QCOMPARE(cache.GetCacheType(QStringLiteral("c")), 0);
        QCOMPARE(cache.GetCacheType(QStringLiteral("a")), 1);
        // A smaller newcomer (36000000, with 24576000 free) evicts only the oldest entry.
        cache.InsertPixmap(QStringLiteral("small"), Blank(3000, 3000));
        QCOMPARE(cache.GetCacheType(QStringLiteral("d")), 0);
        QCOMPARE(cache.GetCacheType(QStringLiteral("e")), 1);
    }

    void typePrecedence() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        QTemporaryDir dir;
        const QString gif = lxtest::SaveGif(dir.filePath(QStringLiteral("a.gif")), lxtest::MakeFrames(2, 8, 8));
        QMovie movie(gif);
        QCOMPARE(cache.GetCacheType(QStringLiteral("x")), 0);
        cache.InsertMovie(QStringLiteral("x"), movie);
        QCOMPARE(cache.GetCacheType(QStringLiteral("x")), 2);
        cache.InsertPixmap(QStringLiteral("x"), Blank(2, 2));
        QCOMPARE(cache.GetCacheType(QStringLiteral("x")), 1);
        cache.InsertSvgFilePath(QStringLiteral("x"), QStringLiteral("/a.svg"));
        QCOMPARE(cache.GetCacheType(QStringLiteral("x")), 3);
        cache.InsertSvgFilePath(QStringLiteral("x"), QStringLiteral("/b.svg"));
        QCOMPARE(cache.GetSvgFilePath(QStringLiteral("x")), QStringLiteral("/b.svg"));
        QCOMPARE(cache.GetSvgFilePath(QStringLiteral("y")), QString());
    }

    void moviesAreTheCachesOwn() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        QTemporaryDir dir;
        const QString gif = lxtest::SaveGif(dir.filePath(QStringLiteral("a.gif")), lxtest::MakeFrames(3, 16, 8));
        QObject parent;
        QMovie callers(gif, QByteArray(), &parent);
        callers.setCacheMode(QMovie::CacheAll);
        QVERIFY(callers.isValid());
        // Every frame counts for a movie that caches them all: 3 x 16 x 8 x 4 bytes.
        QCOMPARE(CLxWebImageCacheMgr::GetMovieCacheCost(&callers), 3 * 512);
        cache.InsertMovie(QStringLiteral("m"), callers);
        QMovie* cached = cache.GetMovie(QStringLiteral("m"));
        QVERIFY(cached);
        QVERIFY(cached != &callers);
        QCOMPARE(cached->fileName(), gif);
        QVERIFY(!cached->parent());
        QCOMPARE(cached->cacheMode(), QMovie::CacheNone);
        QCOMPARE(cache.MovieTotalCost(), 512);  // one frame
        QVERIFY(!cache.GetMovie(QStringLiteral("n")));
        QCOMPARE(CLxWebImageCacheMgr::GetMovieCacheCost(nullptr), 0);

        // Replacing or clearing deletes the cache's movie; holders learn it through QPointer.
        QPointer<QMovie> watch(cached);
        cache.InsertMovie(QStringLiteral("m"), callers);
        QVERIFY(watch.isNull());
        QCOMPARE(cache.MovieCount(), 1);
        watch = cache.GetMovie(QStringLiteral("m"));
        cache.InsertSvgFilePath(QStringLiteral("s"), QStringLiteral("/s.svg"));
        cache.InsertPixmap(QStringLiteral("p"), Blank(4, 4));
        cache.Clear();
        QVERIFY(watch.isNull());
        QCOMPARE(cache.MovieCount(), 0);
        QCOMPARE(cache.PixmapCount(), 0);
        QCOMPARE(cache.SvgCount(), 0);
        QCOMPARE(cache.PixmapTotalCost(), 0);
        QCOMPARE(cache.MovieTotalCost(), 0);
        QCOMPARE(cache.GetCacheType(QStringLiteral("s")), 0);
    }

    void movieWithoutFramesCostsNothing() {
        QTemporaryDir dir;
        const QString bad = lxtest::WriteFile(dir.filePath(QStringLiteral("bad.gif")), "GIF89a garbage");
        QMovie movie(bad);
        QCOMPARE(CLxWebImageCacheMgr::GetMovieCacheCost(&movie), 0);
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        cache.InsertMovie(QStringLiteral("bad"), movie);  // stored with cost 0, harmless
        QCOMPARE(cache.MovieTotalCost(), 0);
    }
};

QTEST_MAIN(tst_WebImageCache)
#include "tst_WebImageCache.moc"
