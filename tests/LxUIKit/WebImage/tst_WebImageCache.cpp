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

using lxuikit_http::HttpWorkPool;
using lxuikit_http::LxHttpDownloadCacheMode;

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
    QTemporaryDir m_dir;

private slots:
    void initTestCase() {
        lxtest::LogCapture logs;
        CLxWebImageCacheMgr::GetInstance();
        QVERIFY(logs.hasExact(QStringLiteral("m_ki32MaxCacheCost:1048576000")));
    }
    void init() { CLxWebImageCacheMgr::GetInstance().Clear(); }

    void keyIsTheHashOfTheUtf8Bytes_data() {
        QTest::addColumn<QString>("url");
        QTest::newRow("ascii") << QStringLiteral("https://img.example.com/a/b.png?size=96");
        QTest::newRow("empty") << QString();
        QTest::newRow("non-ascii") << QStringLiteral("https://图片.example/头像.png");
        QTest::newRow("latin-1") << QStringLiteral("https://img.example/café.png");
        QTest::newRow("long ascii") << QStringLiteral("https://x/") + QString(600, QLatin1Char('a'));
        QTest::newRow("lone surrogate") << QStringLiteral("a") + QChar(0xd800) + QStringLiteral("b");
    }
    void keyIsTheHashOfTheUtf8Bytes() {
        QFETCH(QString, url);
        QCOMPARE(quint64(CLxWebImageCacheMgr::KeyOf(url)), quint64(core::str_conv::HashStrToUInt64(url.toStdString())));
    }

    void facadeWithoutDelegateAssertsAndDoesNothing() {
        lxtest::AssertRecorder asserts;
        auto* receiver = new NullReceiver;
        ILxUIKitHttpDownloadMgr::download("http://a/x.png", receiver, HttpWorkPool::Image);
        ILxUIKitHttpDownloadMgr::setCacheMode("http://a/x.png", LxHttpDownloadCacheMode::ReuseDownloaded);
        ILxUIKitHttpDownloadMgr::setDowndloadDirPath("http://a/x.png", "/tmp");
        ILxUIKitHttpDownloadMgr::removeDownloadDelegate(receiver);
        delete receiver;  // a dying receiver unregisters itself: one more
        QCOMPARE(asserts.count(), 5);
        QVERIFY(asserts.has(QStringLiteral("LxPlatform/LxUIKit/WebImage/ILxUIKitHttpDownloadMgr"), "false"));
    }

    void pixmapCost_data() {
        QTest::addColumn<int>("w");
        QTest::addColumn<int>("h");
        QTest::addColumn<bool>("bitmap");
        QTest::addColumn<int>("cost");
        QTest::newRow("10x10x32") << 10 << 10 << false << 400;
        QTest::newRow("bitmap rounds toward zero") << 3 << 5 << true << 1;  // 15 / 8
        // The 32-bit product wraps from 2^31 on: the costliest pixmap that does not wrap stays far
        // under the limit, so an oversized object can never reach the cache's size check.
        QTest::newRow("8192x8191x32, the last without a wrap") << 8192 << 8191 << false << 268402688;
        QTest::newRow("8192x8192x32 wraps to negative") << 8192 << 8192 << false << -268435456;
        // 20000 * 20000 * 32 wraps to -84901888; divided by 8, toward zero.
        QTest::newRow("20000x20000x32 wraps") << 20000 << 20000 << false << -10612736;
    }
    void pixmapCost() {
        QFETCH(int, w);
        QFETCH(int, h);
        QFETCH(bool, bitmap);
        QFETCH(int, cost);
        const QPixmap pm = bitmap ? QPixmap(QBitmap(w, h)) : Blank(w, h);
        if (pm.isNull())
            QSKIP("the platform cannot allocate this pixmap");
        QCOMPARE(CLxWebImageCacheMgr::GetPixmapCacheCost(pm), cost);
    }

    void pixmapEntries() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        lxtest::LogCapture logs;
        const QString url = QStringLiteral("http://a/红.png");
        const QPixmap pm = QPixmap::fromImage(lxtest::MakeTestImage(10, 10, Qt::red));
        cache.InsertPixmap(url, pm);
        QVERIFY(logs.hasExact(QStringLiteral("strUrl:http://a/红.png,i32PixmapCacheCost:400")));
        QCOMPARE(cache.GetPixmap(url).cacheKey(), pm.cacheKey());  // shared, not copied
        QCOMPARE(cache.GetCacheType(QStringLiteral("http://a/红.PNG")), 0);
        // Replacing an entry keeps only the new cost.
        cache.InsertPixmap(url, Blank(20, 10));
        QCOMPARE(cache.PixmapCount(), 1);
        QCOMPARE(cache.PixmapTotalCost(), 800);
        // A wrapped, negative cost is stored and counted as it is.
        const QPixmap huge = Blank(20000, 20000);
        if (huge.isNull())
            QSKIP("the platform cannot allocate this pixmap");
        cache.InsertPixmap(QStringLiteral("huge"), huge);
        QCOMPARE(cache.PixmapTotalCost(), 800 - 10612736);
    }

    void leastRecentlyUsedGoesFirst() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        auto present = [&cache] {
            QString keys;
            for (const char* key : {"a", "b", "c", "d", "e", "f", "small"})
                if (cache.GetCacheType(QString::fromLatin1(key)) == 1)
                    keys += QString::fromLatin1(key) + QLatin1Char(' ');
            return keys.trimmed();
        };
        // 8000 x 8000 x 32 costs 256000000: four fit under 1048576000, a fifth evicts one.
        const QPixmap quarter = Blank(8000, 8000);
        if (quarter.isNull())
            QSKIP("the platform cannot allocate this pixmap");
        for (const char* key : {"a", "b", "c", "d"})
            cache.InsertPixmap(QString::fromLatin1(key), quarter);
        QVERIFY(!cache.GetPixmap(QStringLiteral("a")).isNull());  // a is now the most recent
        QCOMPARE(cache.GetCacheType(QStringLiteral("b")), 1);     // asking the type does not touch b
        cache.InsertPixmap(QStringLiteral("e"), quarter);
        QCOMPARE(present(), QStringLiteral("a c d e"));
        cache.InsertPixmap(QStringLiteral("f"), quarter);
        QCOMPARE(present(), QStringLiteral("a d e f"));
        // A smaller newcomer (36000000, with 24576000 free) evicts only the oldest entry.
        cache.InsertPixmap(QStringLiteral("small"), Blank(3000, 3000));
        QCOMPARE(present(), QStringLiteral("a e f small"));
    }

    void typePrecedence() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        QMovie movie(
            lxtest::CopyFixture(QStringLiteral("frames2_8x8_100ms.gif"), m_dir.filePath(QStringLiteral("a.gif"))));
        const QString x = QStringLiteral("x");
        QCOMPARE(cache.GetCacheType(x), 0);
        cache.InsertMovie(x, movie);
        QCOMPARE(cache.GetCacheType(x), 2);
        cache.InsertPixmap(x, Blank(2, 2));
        QCOMPARE(cache.GetCacheType(x), 1);
        cache.InsertSvgFilePath(x, QStringLiteral("/a.svg"));
        QCOMPARE(cache.GetCacheType(x), 3);
        cache.InsertSvgFilePath(x, QStringLiteral("/b.svg"));
        QCOMPARE(cache.GetSvgFilePath(x), QStringLiteral("/b.svg"));
    }

    void moviesAreTheCachesOwn() {
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        const QString gif =
            lxtest::CopyFixture(QStringLiteral("frames3_16x8_100ms.gif"), m_dir.filePath(QStringLiteral("a.gif")));
        QObject parent;
        QMovie callers(gif, QByteArray(), &parent);
        callers.setCacheMode(QMovie::CacheAll);
        // Every frame counts for a movie that caches them all: 3 x 16 x 8 x 4 bytes.
        QCOMPARE(CLxWebImageCacheMgr::GetMovieCacheCost(&callers), 3 * 512);
        QCOMPARE(CLxWebImageCacheMgr::GetMovieCacheCost(nullptr), 0);
        cache.InsertMovie(QStringLiteral("m"), callers);
        QPointer<QMovie> cached = cache.GetMovie(QStringLiteral("m"));
        QVERIFY(cached && cached != &callers);
        QCOMPARE(CLxWebImageCacheMgr::MovieFilePath(cached), gif);
        QVERIFY(!cached->parent());
        QCOMPARE(cached->cacheMode(), QMovie::CacheNone);
        QCOMPARE(cache.MovieTotalCost(), 512);  // one frame

        // Replacing or clearing deletes the cache's movie; holders learn it through QPointer.
        cache.InsertMovie(QStringLiteral("m"), callers);
        QVERIFY(cached.isNull());
        cached = cache.GetMovie(QStringLiteral("m"));
        cache.InsertSvgFilePath(QStringLiteral("s"), QStringLiteral("/s.svg"));
        cache.InsertPixmap(QStringLiteral("p"), Blank(4, 4));
        cache.Clear();
        QVERIFY(cached.isNull());
        QCOMPARE(cache.MovieCount() + cache.PixmapCount() + cache.SvgCount(), 0);

        // A movie without frames costs nothing and is stored harmlessly.
        QMovie bad(lxtest::WriteFile(m_dir.filePath(QStringLiteral("bad.gif")), "GIF89a garbage"));
        QCOMPARE(CLxWebImageCacheMgr::GetMovieCacheCost(&bad), 0);
        cache.InsertMovie(QStringLiteral("bad"), bad);
        QCOMPARE(cache.MovieTotalCost(), 0);
    }
};

QTEST_MAIN(tst_WebImageCache)
#include "tst_WebImageCache.moc"
