// Drawing: the three picture widgets (static, animated, SVG) and the placeholder. Files they take or
// refuse, the cache entries they write, the drawing options at device pixel ratios 1 and 2, the
// clipboard, and movies shared with the cache. (The road of a URL is tst_WebImageLoading's.)

#include "ImageFixtures.h"
#include "LxTestSupport.h"
#include "ScriptedDownloadDelegate.h"

#include <LxStdUI/ResProvider.h>
#include <LxUIKit/WebImage/LxCenterAspectCropper.h>
#include <LxUIKit/WebImage/LxWebAnimatedImageWidget_p.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>
#include <LxUIKit/WebImage/LxWebStaticImageWidget_p.h>
#include <LxUIKit/WebImage/LxWebSvgImageWidget_p.h>

#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/private/qhighdpiscaling_p.h>
#include <QClipboard>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

QImage Render(QWidget* w) { return lxtest::Render(w, Qt::blue); }

bool Near(QRgb a, const QColor& b, int tolerance = 40) { return lxtest::Near(QColor(a), b, tolerance); }

// The first of `probes` ("r5,5 g75,35 b85,20": red, green or blue at x,y) that `img` does not show.
QString Mismatch(const QImage& img, const QString& probes) {
    for (const QString& probe : probes.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList xy = probe.mid(1).split(QLatin1Char(','));
        const QRgb px = img.pixel(xy.value(0).toInt(), xy.value(1).toInt());
        if (!Near(px, probe[0] == 'r' ? Qt::red : probe[0] == 'g' ? Qt::green : Qt::blue))
            return probe + QStringLiteral(" is ") + QColor(px).name();
    }
    return QString();
}

struct FixedCropper : ILxWebImageCropper {
    explicit FixedCropper(const QRect& r) : rect(r) {}
    QRect GetCropRect(const QSize&) override { return rect; }
    QRect rect;
};

// Croppers for 40 x 20 pictures: 1 the right half, 2 an invalid rectangle, 3 the centred square.
std::shared_ptr<ILxWebImageCropper> Cropper(int kind) {
    if (kind == 3)
        return std::make_shared<CLxCenterAspectCropper>(1, 1);
    return kind ? std::make_shared<FixedCropper>(kind == 1 ? QRect(20, 0, 20, 20) : QRect(QPoint(10, 10), QPoint(5, 5)))
                : nullptr;
}

// 0 static, 1 animated, 2 SVG.
std::unique_ptr<CLxImageWidgetBase> MakeWidget(int kind) {
    using Ptr = std::unique_ptr<CLxImageWidgetBase>;
    return kind == 1   ? Ptr(new CLxWebAnimatedImageWidget)
           : kind == 2 ? Ptr(new CLxWebSvgImageWidget)
                       : Ptr(new CLxWebStaticImageWidget);
}

// Scales every screen (for widgets made afterwards): device pixel ratio `factor`.
void SetScreenScale(qreal factor) {
    QHighDpiScaling::setGlobalFactor(factor);
    QGuiApplicationPrivate::resetCachedDevicePixelRatio();
}

}  // namespace

class tst_WebImageDrawing : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString Path(const QString& name) const { return m_dir.filePath(name); }
    QString m_strFile[3];  // by widget kind: a 40 x 20 PNG and SVG, left half red and right half green; a GIF
    QString m_strWebp;

private slots:
    void initTestCase() {
        QImage split(40, 20, QImage::Format_ARGB32);
        split.fill(Qt::green);
        QPainter(&split).fillRect(0, 0, 20, 20, Qt::red);
        m_strFile[0] = lxtest::SaveImage(Path("split.png"), split, "PNG");
        m_strFile[1] = lxtest::CopyFixture(QStringLiteral("frames4_16x16_30ms.gif"), Path("anim.gif"));
        m_strFile[2] = lxtest::WriteFile(Path("split.svg"),
                                         "<svg xmlns='http://www.w3.org/2000/svg' width='40' "
                                         "height='20'><rect width='20' height='20' fill='#f00'/>"
                                         "<rect x='20' width='20' height='20' fill='#0f0'/></svg>");
        m_strWebp = lxtest::CopyFixture(QStringLiteral("frames3_16x16_30ms.webp"), Path("anim.webp"));
    }
    void init() { lxtest::ScriptedDownloadDelegate::Install(); }  // web image widgets unregister from it
    void cleanup() {
        ILxUIKitHttpDownloadMgr::setDelegate(nullptr);
        CLxWebImageCacheMgr::GetInstance().Clear();
    }

    void loadFillsTheCache() {
        CLxWebStaticImageWidget still;
        QVERIFY(!still.LoadCache(QStringLiteral("http://x/a.png")));
        // A name that lies: PNG bytes in a .jpg file are read as PNG.
        QVERIFY(still.Load(QStringLiteral("http://x/a.png"),
                           lxtest::WriteFile(Path("lies.jpg"), lxtest::ReadAll(m_strFile[0]))));
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetPixmap(QStringLiteral("http://x/a.png")).size(), QSize(40, 20));
        // SVG: the cache keeps the file's path, and another widget shows it from there.
        CLxWebSvgImageWidget svg, other;
        QVERIFY(svg.Load(QStringLiteral("v"), m_strFile[2]));
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetSvgFilePath(QStringLiteral("v")), m_strFile[2]);
        QVERIFY(other.LoadCache(QStringLiteral("v")));
        QCOMPARE(other.GetImageSize(), QSize(40, 20));
        // Animated: the widget plays a movie of its own and caches another; both formats advance.
        for (const QString& file : {m_strFile[1], m_strWebp}) {
            CLxWebAnimatedImageWidget w;
            QVERIFY(w.Load(QStringLiteral("a"), file));
            QVERIFY(w.GetMovie() && !w.IsMovieShared());
            QMovie* cached = CLxWebImageCacheMgr::GetInstance().GetMovie(QStringLiteral("a"));
            QVERIFY(cached && cached != w.GetMovie());
            QCOMPARE(w.GetImageSize(), QSize(16, 16));
            QSignalSpy frames(w.GetMovie(), &QMovie::frameChanged);
            QTRY_VERIFY(frames.count() >= 3);
        }
    }

    void refusesBadFiles_data() {
        QTest::addColumn<int>("kind");          // see MakeWidget()
        QTest::addColumn<QByteArray>("bytes");  // null: no file at all
        QTest::addColumn<QString>("name");
        // The decoder's own suite covers every kind of damage; here each widget refuses one of each kind of
        // failure and is left empty.
        const QByteArray png = lxtest::ReadAll(m_strFile[0]), gif = lxtest::ReadAll(m_strFile[1]),
                         webp = lxtest::ReadAll(m_strWebp);
        QImage huge(9000, 8000, QImage::Format_Mono);  // over the pixel bound: refused before decoding
        huge.fill(0);
        QTest::newRow("missing") << 0 << QByteArray() << "none.png";
        QTest::newRow("text") << 0 << QByteArray("hello, not a picture") << "text.png";
        QTest::newRow("png truncated") << 0 << lxtest::Truncated(png, png.size() / 2) << "t.png";
        QTest::newRow("svg is not for the raster path") << 0 << lxtest::ReadAll(m_strFile[2]) << "v.png";
        QTest::newRow("too many pixels") << 0 << lxtest::ReadAll(lxtest::SaveImage(Path("huge.png"), huge, "PNG"))
                                         << "huge.png";
        QTest::newRow("animated: gif truncated") << 1 << lxtest::Truncated(gif, gif.size() / 2) << "t.gif";
        QTest::newRow("animated: webp corrupt") << 1 << lxtest::Corrupted(webp, 32) << "c.webp";
        QTest::newRow("svg: missing") << 2 << QByteArray() << "none.svg";
    }
    void refusesBadFiles() {
        QFETCH(int, kind);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, name);
        const std::unique_ptr<CLxImageWidgetBase> w = MakeWidget(kind);
        QVERIFY(w->Load(QStringLiteral("http://x/ok"), m_strFile[kind]));
        const QString path = Path("bad/" + name);
        QVERIFY(!w->Load(QStringLiteral("http://x/bad"), bytes.isNull() ? path : lxtest::WriteFile(path, bytes)));
        QVERIFY(w->GetCurPixmap().isNull());  // nothing, not the previous picture
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(QStringLiteral("http://x/bad")), 0);
    }

    void paint_data() {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("scale");  // 0: stretched over the widget
        QTest::addColumn<int>("crop");      // see Cropper()
        QTest::addColumn<int>("corners");   // LxCornerRadiusType, radius 12
        QTest::addColumn<QSize>("hint");
        QTest::addColumn<QString>("probes");  // see Mismatch(); b: the background shows through
        QTest::newRow("scale 2 keeps the aspect")
            << QSize(100, 60) << 2.0 << 0 << 0 << QSize(80, 40) << "r5,5 g75,35 b85,20 b40,45";
        QTest::newRow("stretched") << QSize(30, 90) << 0.0 << 0 << 0 << QSize(40, 20) << "r3,88 g27,1";
        QTest::newRow("right half, 20 wide") << QSize(40, 20) << 1.0 << 1 << 0 << QSize(20, 20) << "g2,10 b30,10";
        QTest::newRow("invalid crop shows everything")
            << QSize(40, 20) << 0.0 << 2 << 0 << QSize(40, 20) << "r2,10 g38,10";
        // The 20 x 20 middle, half red and half green, stretched over 40 pixels.
        QTest::newRow("centred square") << QSize(40, 20) << 0.0 << 3 << 0 << QSize(20, 20) << "r5,10 g35,10";
        QTest::newRow("top corners rounded")
            << QSize(40, 40) << 0.0 << 0 << int(LxCornerRadiusType::Top) << QSize(40, 20) << "b1,1 b38,1 r1,38 g38,38";
    }
    void paint() {
        QFETCH(QSize, size);
        QFETCH(double, scale);
        QFETCH(int, crop);
        QFETCH(int, corners);
        QFETCH(QSize, hint);
        QFETCH(QString, probes);
        for (int kind : {0, 2}) {  // the same picture, raster and vector
            const std::unique_ptr<CLxImageWidgetBase> w = MakeWidget(kind);
            w->resize(size);
            QVERIFY(w->Load(QStringLiteral("p"), m_strFile[kind]));
            Render(w.get());  // prepared once with the defaults: the settings below must not reuse it
            w->EnableScaleToWidgetSize(scale == 0);
            w->SetScaleFactor(scale == 0 ? 1 : scale);
            w->SetImageCropper(Cropper(crop));
            w->SetRoundedCorner(LxCornerRadiusType(corners), 12, 12);
            QCOMPARE(w->sizeHint(), hint);
            const QImage img = Render(w.get());
            QCOMPARE(Mismatch(img, probes), QString());
            QCOMPARE(Render(w.get()), img);  // again, from the kept prepared pixmap
        }
    }

    // The scale factor sizes pictures; a placeholder fills the widget at full resolution whatever it is.
    void placeholderIgnoresTheScaleFactor() {
        LxWebImageWidget plain, scaled;
        scaled.SetScaleFactor(0.1);
        for (LxWebImageWidget* w : {&plain, &scaled}) {
            w->resize(64, 64);
            w->ShowDefaultFailImage();
        }
        QCOMPARE(Render(&scaled), Render(&plain));
    }

    void borderTakesTheThemeColour() {
        CLxWebStaticImageWidget w;
        w.resize(40, 40);
        QVERIFY(w.Load(QStringLiteral("r"), m_strFile[0]));
        w.EnableScaleToWidgetSize(true);
        w.SetBorder("ct_text_link", 4);
        const QColor link = lx_ui_res::Provider::instance()->color(QStringLiteral("ct_text_link"));
        QVERIFY(Near(Render(&w).pixel(1, 20), link, 10) && Near(Render(&w).pixel(10, 20), Qt::red));
        w.SetBorder("no_such_colour", 4);  // unknown key: no border
        QVERIFY(Near(Render(&w).pixel(1, 20), Qt::red));
    }

    void widgetsOfOnePictureShareOnlyWhatMatches() {
        // Prepared pixmaps of one still picture are shared between widgets: each widget must
        // still get its own size, crop and corners.
        CLxWebStaticImageWidget loader, small, big, cropped;
        QVERIFY(loader.Load(QStringLiteral("shared"), m_strFile[0]));
        for (CLxWebStaticImageWidget* w : {&small, &big, &cropped}) {
            QVERIFY(w->LoadCache(QStringLiteral("shared")));
            QCOMPARE(w->GetCurPixmap().cacheKey(), loader.GetCurPixmap().cacheKey());  // one decode
            w->EnableScaleToWidgetSize(true);
            w->resize(w == &small ? QSize(40, 20) : QSize(80, 40));
        }
        auto cropper = std::make_shared<FixedCropper>(QRect(20, 0, 20, 20));  // the right half
        cropped.SetImageCropper(cropper);
        cropped.SetRoundedCorner(LxCornerRadiusType::All, 4, 4);
        for (int pass = 0; pass < 2; ++pass) {
            QCOMPARE(Mismatch(Render(&small), "g38,18 r2,2"), QString());
            QCOMPARE(Mismatch(Render(&big), "g78,38 r2,2"), QString());
            QCOMPARE(Mismatch(Render(&cropped), "g10,10 g70,30"), QString());
        }
        // A cropper may answer otherwise later (a moved focus point): the next paint follows it,
        // rounded corners included.
        cropper->rect = QRect(0, 0, 20, 20);
        QCOMPARE(Mismatch(Render(&cropped), "r10,10 r70,30"), QString());
    }

    void nothingToPaintHides() {
        QWidget parent;
        auto* still = new CLxWebStaticImageWidget(&parent);
        auto* svg = new CLxWebSvgImageWidget(&parent);
        still->resize(10, 10);
        parent.show();
        Render(still);
        QVERIFY(!still->isVisible());
        // An SVG without content and size, and one whose size rounds to nothing.
        for (const char* doc : {"<svg xmlns='http://www.w3.org/2000/svg'/>",
                                "<svg xmlns='http://www.w3.org/2000/svg' width='0.2' height='0.2'><rect width='5' "
                                "height='5'/></svg>"}) {
            QVERIFY(svg->Load(QStringLiteral("e"), lxtest::WriteFile(Path("empty.svg"), doc)));
            QVERIFY(svg->GetImageSize().isEmpty() && !svg->isVisible());
        }
        QVERIFY(svg->Load(QStringLiteral("v"), m_strFile[2]));
        QVERIFY(svg->isVisible());
    }

    void copyPutsThePictureOnTheClipboard_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("format");  // the file's own bytes under this type
        QTest::newRow("static") << 0 << QString();
        QTest::newRow("animated: the file itself") << 1 << QStringLiteral("image/gif");
        QTest::newRow("svg") << 2 << QStringLiteral("image/svg+xml");
    }
    void copyPutsThePictureOnTheClipboard() {
        QFETCH(int, kind);
        QFETCH(QString, format);
        const std::unique_ptr<CLxImageWidgetBase> w = MakeWidget(kind);
        QVERIFY(w->Load(QStringLiteral("c"), m_strFile[kind]));
        w->Copy();
        const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
        if (!format.isEmpty())
            QCOMPARE(mime->data(format), lxtest::ReadAll(m_strFile[kind]));
        const QString copied = mime->urls().value(0).toLocalFile();
        if (kind == 1) {
            QCOMPARE(copied, m_strFile[1]);
            return;
        }
        // Still pictures: an opaque PNG, an image, and that PNG as "<server time ms>.png" in the
        // temporary folder.
        const QByteArray png = mime->data(QStringLiteral("image/png"));
        const QImage image = QImage::fromData(png, "PNG");
        QCOMPARE(image.size(), QSize(40, 20));
        QCOMPARE(Mismatch(image, "r5,5 g35,15"), QString());
        QCOMPARE(image.pixelColor(0, 0).alpha(), 255);
        QCOMPARE(qvariant_cast<QImage>(mime->imageData()).size(), QSize(40, 20));
        QCOMPARE(QFileInfo(copied).absolutePath(), QFileInfo(QDir::tempPath()).absoluteFilePath());
        QVERIFY(QRegularExpression(QStringLiteral("^\\d{13}\\.png$")).match(QFileInfo(copied).fileName()).hasMatch());
        QCOMPARE(lxtest::ReadAll(copied), png);
        QFile::remove(copied);
    }

    // Animated pictures play from memory: neither the cache's movies nor the widgets' own hold a
    // file open, so a long feed of GIFs does not run the process out of descriptors.
    void moviesHoldNoOpenFiles() {
        constexpr int kPictures = 300;
        QStringList files;
        for (int i = 0; i < kPictures; ++i)
            files << lxtest::CopyFixture(QStringLiteral("frames2_%1x4_30ms.gif").arg(4 + i % 5),
                                         Path(QStringLiteral("many/%1.gif").arg(i)));
        const int before = lxtest::OpenFileCount();
        std::vector<std::unique_ptr<CLxWebAnimatedImageWidget>> widgets;
        for (int i = 0; i < kPictures; ++i) {
            widgets.push_back(std::make_unique<CLxWebAnimatedImageWidget>());
            QVERIFY(widgets.back()->Load(QStringLiteral("http://x/many/%1").arg(i), files[i]));
        }
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        QCOMPARE(cache.MovieCount(), kPictures);
        QVERIFY2(lxtest::OpenFileCount() - before <= 4, qPrintable(QString::number(lxtest::OpenFileCount() - before)));
        // Still whole movies: a widget showing a cached one animates and copies the file's bytes.
        widgets.clear();
        CLxWebAnimatedImageWidget viewer;
        QVERIFY(viewer.LoadCache(QStringLiteral("http://x/many/7")));
        QCOMPARE(viewer.GetImageSize(), QSize(6, 4));
        QSignalSpy frames(viewer.GetMovie(), &QMovie::frameChanged);
        QTRY_VERIFY(frames.count() >= 2);
        viewer.Copy();
        QCOMPARE(QApplication::clipboard()->mimeData()->data(QStringLiteral("image/gif")), lxtest::ReadAll(files[7]));
        QVERIFY(lxtest::OpenFileCount() - before <= 4);
    }

    void cacheLettingGoOfAMovieKeepsItsViewersAnimating() {
        CLxWebAnimatedImageWidget loader, viewer;
        QVERIFY(loader.Load(QStringLiteral("g"), m_strFile[1]));
        QVERIFY(viewer.LoadCache(QStringLiteral("g")));
        QPointer<QMovie> old = viewer.GetMovie();
        // A newer entry for the URL replaces (deletes) the shared movie: the viewer takes the newer.
        CLxWebImageCacheMgr::GetInstance().InsertMovie(QStringLiteral("g"), *loader.GetMovie());
        QVERIFY(old.isNull());
        QVERIFY(!viewer.GetCurPixmap().isNull());  // the last frame meanwhile
        QTRY_VERIFY(viewer.GetMovie() != nullptr);
        QCOMPARE(viewer.GetMovie(), CLxWebImageCacheMgr::GetInstance().GetMovie(QStringLiteral("g")));
        // Clearing the whole cache: the viewer falls back to a movie of its own on the same file.
        CLxWebImageCacheMgr::GetInstance().Clear();
        QTRY_VERIFY(viewer.GetMovie() != nullptr);
        QVERIFY(!viewer.IsMovieShared());
        QCOMPARE(CLxWebImageCacheMgr::MovieFilePath(viewer.GetMovie()), m_strFile[1]);
        QSignalSpy frames(viewer.GetMovie(), &QMovie::frameChanged);
        QTRY_VERIFY(frames.count() >= 2);
    }

    void devicePixelRatio2() {
        SetScreenScale(2);
        const auto restore = qScopeGuard([] { SetScreenScale(1); });
        // Scale factor 1: one picture pixel is one device pixel, with a sharp edge.
        CLxWebStaticImageWidget still;
        still.resize(40, 20);
        QVERIFY(still.Load(QStringLiteral("s"), m_strFile[0]));
        QCOMPARE(still.sizeHint(), QSize(20, 10));
        QCOMPARE(Mismatch(Render(&still), "r19,9 g20,9 g39,19 b41,5 b10,21"), QString());
        // SVG: logical size kept, drawn at device resolution (the edge falls between device pixels).
        CLxWebSvgImageWidget svg;
        svg.resize(40, 20);
        QVERIFY(svg.Load(QStringLiteral("v"), m_strFile[2]));
        QCOMPARE(svg.sizeHint(), QSize(40, 20));
        QCOMPARE(Mismatch(Render(&svg), "r39,20 g40,20"), QString());
        QCOMPARE(svg.GetSourcePixmap().size(), QSize(80, 40));
        QCOMPARE(svg.GetSourcePixmap().devicePixelRatio(), 2.0);

        // Stretched over the widget: every device pixel is covered, pictures and placeholders alike.
        LxWebImageWidget web, placeholder;
        for (LxWebImageWidget* w : {&web, &placeholder}) {
            w->resize(30, 30);
            w->EnableScaleToWidgetSize(true);
        }
        web.SetUrl(m_strFile[0]);
        placeholder.ShowDefaultInitImage();
        QCOMPARE(Mismatch(Render(&web), "r1,58 g58,1"), QString());
        const QImage img = Render(&placeholder);
        QVERIFY(!Near(img.pixel(30, 1), Qt::blue) && !Near(img.pixel(30, 58), Qt::blue));
    }
};

QTEST_MAIN(tst_WebImageDrawing)
#include "tst_WebImageDrawing.moc"
