// Web images, two workloads, each beside its Qt anchor in the same run:
//
// 1. A feed showing one picture many times: 500 LxWebImageWidgets set to the same URL of a
//    1000 x 1000 picture, downloaded through the real delegate (CLxHttpDownloadDelegate) from the
//    tests' HTTP server (tests/support/LocalHttpServer) on 127.0.0.1 inside this program.
//    Counted: requests the server saw and pictures decoded (one cache insertion follows every
//    decode); timed: from the first SetUrl until every widget reported Loaded, and until every
//    widget was also painted once. Anchor: 500 QLabels, each loading the same file (already on
//    disk) into its own QPixmap (decoded through QImage), then painted once. A second line shows
//    QPixmap(fileName), which Qt itself keeps in QPixmapCache after the first decode (while the
//    picture fits its 10 MiB default).
// 2. Cache hits: CLxWebImageCacheMgr::GetPixmap over a warm cache of 1000 URLs, against
//    QPixmapCache::find on the same 1000 keys.
//
//   bench_webimage [widgets=500] [side=1000] [lookup-rounds=2000]
//
// Build in Release for the figures. Ratios are the result; absolute times depend on the machine.

#include <LxCore/FrameWork.h>
#include <LxUIKit/WebImage/LxHttpDownloadDelegate.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QLabel>
#include <QNetworkProxy>
#include <QPainter>
#include <QPixmapCache>
#include <QTemporaryDir>

#include <atomic>
#include <cstdio>
#include <memory>
#include <vector>

#include "LocalHttpServer.h"

namespace {

// A photo-like picture: gradients and noise, so that PNG cannot make it trivial.
QImage MakePicture(int side) {
    QImage img(side, side, QImage::Format_RGB32);
    quint32 seed = 12345;
    for (int y = 0; y < side; ++y) {
        auto* line = reinterpret_cast<QRgb*>(img.scanLine(y));
        for (int x = 0; x < side; ++x) {
            seed = seed * 1664525u + 1013904223u;
            const int n = int(seed >> 28);
            line[x] = qRgb((x * 255 / side + n) & 0xff, (y * 255 / side + n) & 0xff, ((x + y) * 127 / side + n) & 0xff);
        }
    }
    return img;
}

std::atomic<int> g_i32Decodes{0};
QString g_strDecodePrefix;

void PaintAll(const std::vector<QWidget*>& widgets) {
    QImage target(100, 100, QImage::Format_ARGB32_Premultiplied);
    for (QWidget* w : widgets) {
        QPainter p(&target);
        w->render(&p, QPoint(), QRegion(), QWidget::DrawChildren);
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen") : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    const int widgets = argc > 1 ? QByteArray(argv[1]).toInt() : 500;
    const int side = argc > 2 ? QByteArray(argv[2]).toInt() : 1000;
    const int rounds = argc > 3 ? QByteArray(argv[3]).toInt() : 2000;
    QTemporaryDir dir;

    // ---- 1. one picture, many widgets ---------------------------------------------------------
    QByteArray png;
    {
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        MakePicture(side).save(&buffer, "PNG");
    }
    const QString file = dir.filePath(QStringLiteral("picture.png"));
    {
        QFile f(file);
        f.open(QIODevice::WriteOnly);
        f.write(png);
    }
    // One picture on every path.
    lxtest::LocalHttpServer server;
    if (!server.Start()) {
        std::fprintf(stderr, "cannot listen on 127.0.0.1\n");
        return 1;
    }
    server.SetHandler([&png](const lxtest::LocalHttpServer::Request&) {
        return lxtest::LocalHttpServer::Reply{200, png, 0, "image/png"};
    });
    auto* delegate = new CLxHttpDownloadDelegate(dir.filePath(QStringLiteral("downloads")));
    ILxUIKitHttpDownloadMgr::setDelegate(delegate);
    const QString url = server.Url(QStringLiteral("/feed/picture.png"));
    g_strDecodePrefix = QStringLiteral("strUrl:") + url + QStringLiteral(",i32PixmapCacheCost:");
    FrameWork::_FW_InitStdOutInMainThread([](const FrameWork::LogContext& ctx) {
        if (ctx.strText.startsWith(g_strDecodePrefix))
            ++g_i32Decodes;
    });

    std::printf("1) %d widgets, one URL of a %dx%d PNG (%d KiB)\n", widgets, side, side, int(png.size() / 1024));
    QWidget kitParent;
    std::vector<QWidget*> kitWidgets;
    int loaded = 0;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < widgets; ++i) {
        auto* w = new LxWebImageWidget(&kitParent);
        w->resize(100, 100);
        w->EnableScaleToWidgetSize(true);
        QObject::connect(w, &LxWebImageWidget::ImageLoadStatusSignal, [&loaded](const QString&, LxImageLoadStatus s) {
            if (s == LxImageLoadStatus::Loaded)
                ++loaded;
        });
        w->SetUrl(url);
        kitWidgets.push_back(w);
    }
    while (loaded < widgets && timer.elapsed() < 60000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    const double kitLoadedMs = timer.nsecsElapsed() / 1e6;
    PaintAll(kitWidgets);
    const double kitPaintedMs = timer.nsecsElapsed() / 1e6;
    FrameWork::_FW_InitStdOutInMainThread({});

    auto runLabels = [&](bool bQtPixmapCache, double& loadedMs, double& paintedMs) {
        QWidget labelParent;
        std::vector<QWidget*> labels;
        QPixmapCache::clear();
        timer.restart();
        for (int i = 0; i < widgets; ++i) {
            auto* label = new QLabel(&labelParent);
            label->resize(100, 100);
            label->setScaledContents(true);
            label->setPixmap(bQtPixmapCache ? QPixmap(file) : QPixmap::fromImage(QImage(file)));
            labels.push_back(label);
        }
        loadedMs = timer.nsecsElapsed() / 1e6;
        PaintAll(labels);
        paintedMs = timer.nsecsElapsed() / 1e6;
    };
    double anchorLoadedMs = 0, anchorPaintedMs = 0, qtCacheLoadedMs = 0, qtCachePaintedMs = 0;
    runLabels(false, anchorLoadedMs, anchorPaintedMs);
    runLabels(true, qtCacheLoadedMs, qtCachePaintedMs);

    std::printf("   LxWebImageWidget: %d/%d loaded, %d request(s) at the server, %d decode(s)\n", loaded, widgets,
                server.TotalRequests(), g_i32Decodes.load());
    std::printf("   until all loaded:        LxWebImageWidget %9.1f ms   QLabel+QPixmap %9.1f ms   anchor/kit %6.1fx\n",
                kitLoadedMs, anchorLoadedMs, anchorLoadedMs / kitLoadedMs);
    std::printf("   until all painted once:  LxWebImageWidget %9.1f ms   QLabel+QPixmap %9.1f ms   anchor/kit %6.1fx\n",
                kitPaintedMs, anchorPaintedMs, anchorPaintedMs / kitPaintedMs);
    std::printf(
        "   (QLabel+QPixmap(fileName), Qt's own pixmap cache: loaded %.1f ms, painted %.1f ms; kit is %.1fx / %.1fx)\n",
        qtCacheLoadedMs, qtCachePaintedMs, qtCacheLoadedMs / kitLoadedMs, qtCachePaintedMs / kitPaintedMs);

    // ---- 2. cache hits --------------------------------------------------------------------------
    auto& cache = CLxWebImageCacheMgr::GetInstance();
    cache.Clear();
    QPixmapCache::clear();
    QPixmapCache::setCacheLimit(1024 * 1024);
    const int kEntries = 1000;
    QStringList keys;
    for (int i = 0; i < kEntries; ++i) {
        keys << QStringLiteral("https://img.example.com/feed/avatars/%1/photo_%2.png?size=96").arg(i % 37).arg(i);
        QPixmap pm(8, 8);
        pm.fill(QColor::fromRgb(quint32(i * 2654435761u)));
        cache.InsertPixmap(keys.last(), pm);
        QPixmapCache::insert(keys.last(), pm);
    }
    qint64 sink = 0;
    qint64 hitsKit = 0, hitsAnchor = 0;
    // Warm both, then interleave several measured runs and keep the best of each.
    double bestKit = 1e300, bestAnchor = 1e300;
    for (int run = 0; run < 5; ++run) {
        timer.restart();
        for (int r = 0; r < rounds / 5; ++r)
            for (const QString& key : keys) {
                const QPixmap pm = cache.GetPixmap(key);
                sink += pm.cacheKey();
                hitsKit += !pm.isNull();
            }
        bestKit = qMin(bestKit, double(timer.nsecsElapsed()));
        timer.restart();
        for (int r = 0; r < rounds / 5; ++r)
            for (const QString& key : keys) {
                QPixmap pm;
                hitsAnchor += QPixmapCache::find(key, &pm);
                sink += pm.cacheKey();
            }
        bestAnchor = qMin(bestAnchor, double(timer.nsecsElapsed()));
    }
    const double lookups = double(rounds / 5) * kEntries;
    std::printf("2) cache hits over %d warm entries (%.0f lookups per run, best of 5)\n", kEntries, lookups);
    std::printf("   GetPixmap %7.1f ns/lookup   QPixmapCache::find %7.1f ns/lookup   kit/anchor %5.2fx  (sink %lld)\n",
                bestKit / lookups, bestAnchor / lookups, bestKit / bestAnchor, static_cast<long long>(sink & 1));
    std::printf("   hits: GetPixmap %lld of %.0f, QPixmapCache::find %lld of %.0f\n", static_cast<long long>(hitsKit),
                lookups * 5, static_cast<long long>(hitsAnchor), lookups * 5);
    return 0;
}
