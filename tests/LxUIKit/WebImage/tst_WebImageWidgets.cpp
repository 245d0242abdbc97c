// The three picture widgets: loading and refusing files, the cache they fill, painting options,
// the clipboard, and movies shared between widgets.

#include "ImageFixtures.h"
#include "LxTestSupport.h"

#include <LxStdUI/ResProvider.h>
#include <LxUIKit/WebImage/LxCenterAspectCropper.h>
#include <LxUIKit/WebImage/LxWebAnimatedImageWidget.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebStaticImageWidget.h>
#include <LxUIKit/WebImage/LxWebSvgImageWidget.h>

#include <QClipboard>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

// Left half red, right half green.
QImage Split(int w, int h) {
    QImage img(w, h, QImage::Format_ARGB32);
    img.fill(Qt::green);
    QPainter p(&img);
    p.fillRect(0, 0, w / 2, h, Qt::red);
    return img;
}

QImage Render(QWidget* w, const QColor& background = Qt::blue) {
    QImage img(w->size(), QImage::Format_ARGB32_Premultiplied);
    img.fill(background);
    w->render(&img, QPoint(), QRegion(), QWidget::DrawChildren);
    return img;
}

bool Near(QRgb a, const QColor& b, int tolerance = 40) {
    return qAbs(qRed(a) - b.red()) <= tolerance && qAbs(qGreen(a) - b.green()) <= tolerance &&
           qAbs(qBlue(a) - b.blue()) <= tolerance;
}

class RightHalfCropper : public ILxWebImageCropper {
public:
    QRect GetCropRect(const QSize& s) override {
        return QRect(s.width() / 2, 0, s.width() - s.width() / 2, s.height());
    }
};

class InvalidCropper : public ILxWebImageCropper {
public:
    QRect GetCropRect(const QSize&) override { return QRect(QPoint(10, 10), QPoint(5, 5)); }
};

}  // namespace

class tst_WebImageWidgets : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString Path(const QString& name) const { return m_dir.filePath(name); }
    QString m_strPng, m_strJpeg, m_strGif, m_strWebp, m_strSvg;

private slots:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        m_strPng = lxtest::SaveImage(Path("split.png"), Split(40, 20), "PNG");
        m_strJpeg = lxtest::SaveImage(Path("photo.jpg"), lxtest::MakeTestImage(120, 90, QColor(30, 90, 200)), "JPEG");
        m_strGif = lxtest::SaveGif(Path("anim.gif"), lxtest::MakeFrames(4, 16, 16), 30);
        m_strWebp = lxtest::SaveAnimatedWebp(Path("anim.webp"), lxtest::MakeFrames(3, 16, 16), 30);
        m_strSvg =
            lxtest::WriteFile(Path("pic.svg"),
                              "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20' viewBox='0 0 40 20'>"
                              "<rect width='20' height='20' fill='#ff0000'/>"
                              "<rect x='20' width='20' height='20' fill='#00ff00'/></svg>");
        QVERIFY(!m_strPng.isEmpty() && !m_strJpeg.isEmpty());
    }
    void init() { CLxWebImageCacheMgr::GetInstance().Clear(); }

    void staticLoadFillsTheCacheAndSharesIt() {
        CLxWebStaticImageWidget a, b;
        QVERIFY(a.Load(QStringLiteral("http://x/a.png"), m_strPng));
        QCOMPARE(a.GetImageSize(), QSize(40, 20));
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(QStringLiteral("http://x/a.png")), 1);
        QVERIFY(b.LoadCache(QStringLiteral("http://x/a.png")));
        QCOMPARE(b.GetCurPixmap().cacheKey(), a.GetCurPixmap().cacheKey());  // one decode, shared
        QVERIFY(!b.LoadCache(QStringLiteral("http://x/other.png")));
        QVERIFY(b.GetCurPixmap().isNull());
        // A name that lies: PNG bytes in a .jpg file are read as PNG.
        const QString lying = lxtest::WriteFile(Path("lies.jpg"), lxtest::ReadAll(m_strPng));
        QVERIFY(b.Load(QStringLiteral("lies"), lying));
        QCOMPARE(b.GetImageSize(), QSize(40, 20));
    }

    void staticRefusesBadFiles_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("name");
        const QByteArray png = lxtest::ReadAll(m_strPng);
        QImage photoImg(300, 200, QImage::Format_RGB32);
        for (int y = 0; y < 200; ++y)
            for (int x = 0; x < 300; ++x)
                photoImg.setPixel(x, y, qRgb(x % 256, (x * y) % 256, y % 256));
        const QByteArray jpeg = lxtest::ReadAll(lxtest::SaveImage(Path("noise.jpg"), photoImg, "JPEG", 80));
        const QByteArray webp = lxtest::ReadAll(lxtest::SaveImage(Path("still.webp"), Split(64, 64), "WEBP", 80));
        const QByteArray gif = lxtest::EncodeGif(lxtest::MakeFrames(1, 32, 32), 100);
        QTest::newRow("empty") << QByteArray() << "empty.png";
        QTest::newRow("text") << QByteArray("hello, not a picture") << "text.png";
        QTest::newRow("png truncated") << lxtest::Truncated(png, png.size() / 2) << "t.png";
        QTest::newRow("png corrupt") << lxtest::Corrupted(png, 16) << "c.png";
        QTest::newRow("png header only") << lxtest::Truncated(png, 33) << "h.png";
        QTest::newRow("jpeg truncated") << lxtest::Truncated(jpeg, jpeg.size() * 3 / 4) << "t.jpg";
        QTest::newRow("jpeg corrupt") << lxtest::Corrupted(jpeg, 64) << "c.jpg";
        QTest::newRow("webp truncated") << lxtest::Truncated(webp, -10) << "t.webp";
        QTest::newRow("gif truncated") << lxtest::Truncated(gif, gif.size() - 40) << "t.gif";
        QTest::newRow("svg is not for the raster path") << lxtest::ReadAll(m_strSvg) << "v.png";
        // 9000 x 8000 announced: over the pixel bound, refused before decoding.
        QImage huge(9000, 8000, QImage::Format_Mono);
        huge.fill(0);
        QTest::newRow("too many pixels") << lxtest::ReadAll(lxtest::SaveImage(Path("huge.png"), huge, "PNG"))
                                         << "huge.png";
    }
    void staticRefusesBadFiles() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, name);
        const QString path = lxtest::WriteFile(Path("bad/" + name), bytes);
        CLxWebStaticImageWidget w;
        QVERIFY(w.Load(QStringLiteral("http://x/ok.png"), m_strPng));
        QVERIFY(!w.Load(QStringLiteral("http://x/bad"), path));
        QVERIFY(w.GetCurPixmap().isNull());  // nothing, not the previous picture
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(QStringLiteral("http://x/bad")), 0);
    }

    void missingFileFailsEveryWidget() {
        CLxWebStaticImageWidget s;
        CLxWebAnimatedImageWidget a;
        CLxWebSvgImageWidget v;
        const QString missing = Path("nope/none.png");
        QVERIFY(!s.Load(QStringLiteral("m"), missing));
        QVERIFY(!a.Load(QStringLiteral("m"), missing));
        QVERIFY(!v.Load(QStringLiteral("m"), missing));
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(QStringLiteral("m")), 0);
    }

    void paintScalesKeepingAspect() {
        CLxWebStaticImageWidget w;
        w.resize(100, 60);
        QVERIFY(w.Load(QStringLiteral("p"), m_strPng));
        w.SetScaleFactor(2.0);
        QCOMPARE(w.sizeHint(), QSize(80, 40));
        const QImage img = Render(&w);
        QVERIFY(Near(img.pixel(5, 5), Qt::red));
        QVERIFY(Near(img.pixel(75, 35), Qt::green));
        QVERIFY(Near(img.pixel(85, 20), Qt::blue));  // beyond the picture: untouched
        QVERIFY(Near(img.pixel(40, 45), Qt::blue));
    }

    void paintStretchesToTheWidget() {
        CLxWebStaticImageWidget w;
        w.resize(30, 90);
        QVERIFY(w.Load(QStringLiteral("p"), m_strPng));
        w.EnableScaleToWidgetSize(true);
        const QImage img = Render(&w);
        QVERIFY(Near(img.pixel(3, 88), Qt::red));
        QVERIFY(Near(img.pixel(27, 1), Qt::green));
    }

    void widgetsOfOnePictureShareOnlyWhatMatches() {
        // Prepared pixmaps of one still picture are shared between widgets: each widget must
        // still get its own size, crop and corners.
        CLxWebStaticImageWidget loader, small, big, cropped;
        QVERIFY(loader.Load(QStringLiteral("shared"), m_strPng));
        for (CLxWebStaticImageWidget* w : {&small, &big, &cropped}) {
            QVERIFY(w->LoadCache(QStringLiteral("shared")));
            w->EnableScaleToWidgetSize(true);
        }
        small.resize(40, 20);
        big.resize(80, 40);
        cropped.resize(80, 40);
        cropped.SetImageCropper(std::make_shared<RightHalfCropper>());
        for (int pass = 0; pass < 2; ++pass) {
            QImage a = Render(&small), b = Render(&big), c = Render(&cropped);
            QVERIFY(Near(a.pixel(38, 18), Qt::green) && Near(a.pixel(2, 2), Qt::red));
            QVERIFY(Near(b.pixel(78, 38), Qt::green) && Near(b.pixel(2, 2), Qt::red));
            QVERIFY(Near(c.pixel(2, 2), Qt::green) && Near(c.pixel(78, 38), Qt::green));
        }
    }

    void paintCrops_data() {
        QTest::addColumn<int>("kind");
        QTest::newRow("right half") << 0;
        QTest::newRow("invalid rectangle shows everything") << 1;
        QTest::newRow("centred square") << 2;
    }
    void paintCrops() {
        QFETCH(int, kind);
        CLxWebStaticImageWidget w;
        w.resize(40, 20);
        QVERIFY(w.Load(QStringLiteral("p"), m_strPng));
        w.EnableScaleToWidgetSize(true);
        if (kind == 0)
            w.SetImageCropper(std::make_shared<RightHalfCropper>());
        else if (kind == 1)
            w.SetImageCropper(std::make_shared<InvalidCropper>());
        else
            w.SetImageCropper(std::make_shared<CLxCenterAspectCropper>(1, 1));
        const QImage img = Render(&w);
        if (kind == 0) {
            QVERIFY(Near(img.pixel(2, 10), Qt::green));
        } else if (kind == 1) {
            QVERIFY(Near(img.pixel(2, 10), Qt::red));
            QVERIFY(Near(img.pixel(38, 10), Qt::green));
        } else {  // the 20x20 middle: half red, half green, stretched over 40 pixels
            QVERIFY(Near(img.pixel(5, 10), Qt::red));
            QVERIFY(Near(img.pixel(35, 10), Qt::green));
        }
    }

    void paintRoundsCornersAndDrawsTheBorder() {
        CLxWebStaticImageWidget w;
        w.resize(40, 40);
        const QString red = lxtest::SaveImage(Path("red.png"), lxtest::MakeFrames(1, 40, 40).first(), "PNG");
        QVERIFY(w.Load(QStringLiteral("r"), red));
        w.EnableScaleToWidgetSize(true);
        w.SetRoundedCorner(LxCornerRadiusType::Top, 12, 12);
        QImage img = Render(&w);
        QVERIFY(Near(img.pixel(1, 1), Qt::blue));   // rounded away
        QVERIFY(Near(img.pixel(38, 1), Qt::blue));  // rounded away
        QVERIFY(Near(img.pixel(1, 38), Qt::red));   // bottom corners stay square
        QVERIFY(Near(img.pixel(20, 20), Qt::red));
        const QImage again = Render(&w);  // from the kept rounded pixmap
        QCOMPARE(again, img);

        w.SetRoundedCorner(LxCornerRadiusType::None, 0, 0);
        w.SetBorder("ct_text_link", 4);
        img = Render(&w);
        const QColor border = lx_ui_res::Provider::instance()->color(QStringLiteral("ct_text_link"));
        QVERIFY(border.isValid());
        QVERIFY(Near(img.pixel(1, 20), border, 10));
        QVERIFY(Near(img.pixel(20, 20), Qt::red));
        w.SetBorder("no_such_colour", 4);  // unknown key: no border
        QVERIFY(Near(Render(&w).pixel(1, 20), Qt::red));
    }

    void nothingToPaintHides() {
        QWidget parent;
        auto* w = new CLxWebStaticImageWidget(&parent);
        w->resize(10, 10);
        parent.show();
        QVERIFY(w->isVisible());
        Render(w);
        QVERIFY(!w->isVisible());
    }

    void copyStaticPutsPngImageAndFileOnTheClipboard() {
        CLxWebStaticImageWidget w;
        QVERIFY(w.Load(QStringLiteral("c"), m_strPng));
        w.Copy();
        const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
        QVERIFY(mime);
        QImage fromPng;
        QVERIFY(fromPng.loadFromData(mime->data(QStringLiteral("image/png")), "PNG"));
        QCOMPARE(fromPng.size(), QSize(40, 20));
        QVERIFY(mime->hasImage());
        QCOMPARE(qvariant_cast<QImage>(mime->imageData()).size(), QSize(40, 20));
        QCOMPARE(mime->urls().size(), 1);
        const QFileInfo file(mime->urls().first().toLocalFile());
        QCOMPARE(file.absolutePath(), QFileInfo(QDir::tempPath()).absoluteFilePath());
        QVERIFY(QRegularExpression(QStringLiteral("^\\d{13}\\.png$")).match(file.fileName()).hasMatch());
        QCOMPARE(lxtest::ReadAll(file.filePath()), mime->data(QStringLiteral("image/png")));
        QFile::remove(file.filePath());

        lxtest::AssertRecorder asserts;
        CLxWebStaticImageWidget empty;
        empty.Copy();
        QVERIFY(asserts.has(QStringLiteral("LxPlatform/LxUIKit/WebImage/LxWebStaticImageWidget"),
                            QStringLiteral("!m_pixmap.isNull()")));
    }

    void animatedPlaysAndCachesItsOwnCopy_data() {
        QTest::addColumn<QString>("which");
        QTest::newRow("gif") << "gif";
        QTest::newRow("webp") << "webp";
    }
    void animatedPlaysAndCachesItsOwnCopy() {
        QFETCH(QString, which);
        const QString file = which == QLatin1String("gif") ? m_strGif : m_strWebp;
        CLxWebAnimatedImageWidget w;
        QVERIFY(w.Load(QStringLiteral("a"), file));
        QVERIFY(w.GetMovie());
        QVERIFY(!w.IsMovieShared());
        QCOMPARE(w.GetMovie()->state(), QMovie::Running);
        QMovie* cached = CLxWebImageCacheMgr::GetInstance().GetMovie(QStringLiteral("a"));
        QVERIFY(cached && cached != w.GetMovie());
        QCOMPARE(w.GetImageSize(), QSize(16, 16));
        QSignalSpy frames(w.GetMovie(), &QMovie::frameChanged);
        QTRY_VERIFY(frames.count() >= 3);
    }

    void sharedMovieSurvivesOtherWidgets() {
        CLxWebAnimatedImageWidget loader;
        QVERIFY(loader.Load(QStringLiteral("s"), m_strGif));
        QPointer<QMovie> shared = CLxWebImageCacheMgr::GetInstance().GetMovie(QStringLiteral("s"));
        QVERIFY(shared);
        auto first = std::make_unique<CLxWebAnimatedImageWidget>();
        auto second = std::make_unique<CLxWebAnimatedImageWidget>();
        CLxWebAnimatedImageWidget third;
        QVERIFY(first->LoadCache(QStringLiteral("s")));
        QVERIFY(second->LoadCache(QStringLiteral("s")));
        QVERIFY(third.LoadCache(QStringLiteral("s")));
        QCOMPARE(first->GetMovie(), shared.data());
        QCOMPARE(third.GetMovie(), shared.data());
        QCOMPARE(CLxWebAnimatedImageWidget::SharedViewerCount(shared), 3);
        QCOMPARE(shared->state(), QMovie::Running);

        // Clearing one and destroying another leaves the movie alone: same object, no parent,
        // still running, still advancing.
        first->Clear();
        second.reset();
        QVERIFY(shared);
        QVERIFY(!shared->parent());
        QCOMPARE(shared->state(), QMovie::Running);
        QSignalSpy frames(shared.data(), &QMovie::frameChanged);
        QTRY_VERIFY(frames.count() >= 3);
        QVERIFY(!third.GetCurPixmap().isNull());
        QCOMPARE(CLxWebAnimatedImageWidget::SharedViewerCount(shared), 1);

        // The last viewer gone, the movie rests; the next viewer wakes it.
        third.Clear();
        QVERIFY(shared);
        QCOMPARE(shared->state(), QMovie::Paused);
        QVERIFY(first->LoadCache(QStringLiteral("s")));
        QCOMPARE(shared->state(), QMovie::Running);
    }

    void cacheLettingGoOfAMovieKeepsItsViewersAnimating() {
        CLxWebAnimatedImageWidget loader, viewer;
        QVERIFY(loader.Load(QStringLiteral("g"), m_strGif));
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
        QCOMPARE(viewer.GetMovie()->fileName(), m_strGif);
        QSignalSpy frames(viewer.GetMovie(), &QMovie::frameChanged);
        QTRY_VERIFY(frames.count() >= 2);
    }

    void animatedRefusesBadFiles() {
        const QByteArray gif = lxtest::ReadAll(m_strGif), webp = lxtest::ReadAll(m_strWebp);
        CLxWebAnimatedImageWidget w;
        for (const QByteArray& bytes :
             {lxtest::Truncated(gif, gif.size() / 2), lxtest::Truncated(webp, webp.size() / 2),
              lxtest::Corrupted(webp, 32), QByteArray("GIF89a")}) {
            const QString path = lxtest::WriteFile(Path("badanim.gif"), bytes);
            QVERIFY(!w.Load(QStringLiteral("bad"), path));
            QVERIFY(w.GetCurPixmap().isNull());
            QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(QStringLiteral("bad")), 0);
        }
        lxtest::AssertRecorder asserts;
        QVERIFY(!w.LoadCache(QStringLiteral("never cached")));
        QVERIFY(asserts.has(QStringLiteral("LxPlatform/LxUIKit/WebImage/LxWebAnimatedImageWidget"),
                            QStringLiteral("m_pMovie != nullptr && m_pMovie->isValid()")));
    }

    void copyAnimatedGivesTheFile() {
        CLxWebAnimatedImageWidget w;
        QVERIFY(w.Load(QStringLiteral("c"), m_strGif));
        w.Copy();
        const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
        QVERIFY(mime);
        QCOMPARE(mime->data(QStringLiteral("image/gif")), lxtest::ReadAll(m_strGif));
        QCOMPARE(mime->urls().value(0).toLocalFile(), m_strGif);
    }

    void svgLoadsRendersAndCopies() {
        QWidget parent;
        auto* w = new CLxWebSvgImageWidget(&parent);
        parent.show();
        QVERIFY(w->Load(QStringLiteral("v"), m_strSvg));
        QVERIFY(w->isVisible());
        QCOMPARE(w->GetImageSize(), QSize(40, 20));
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(QStringLiteral("v")), 3);
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetSvgFilePath(QStringLiteral("v")), m_strSvg);
        w->resize(80, 40);
        w->SetScaleFactor(2.0);
        QImage img = Render(w);
        QVERIFY(Near(img.pixel(10, 20), Qt::red));
        QVERIFY(Near(img.pixel(70, 20), Qt::green));
        w->SetImageCropper(std::make_shared<RightHalfCropper>());
        w->SetScaleFactor(1.0);
        img = Render(w);
        QVERIFY(Near(img.pixel(5, 10), Qt::green));
        QVERIFY(Near(img.pixel(30, 10), Qt::blue));  // the cropped picture is 20 wide

        CLxWebSvgImageWidget other;
        QVERIFY(other.LoadCache(QStringLiteral("v")));
        other.Copy();
        const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
        QCOMPARE(mime->data(QStringLiteral("image/svg+xml")), lxtest::ReadAll(m_strSvg));
        QImage png;
        QVERIFY(png.loadFromData(mime->data(QStringLiteral("image/png")), "PNG"));
        QCOMPARE(png.size(), QSize(40, 20));
        QVERIFY(Near(png.pixel(5, 5), Qt::red));
        QCOMPARE(png.pixelColor(0, 0).alpha(), 255);
        QVERIFY(mime->hasImage());
        QVERIFY(mime->urls().value(0).toLocalFile().endsWith(QLatin1String(".png")));
        QFile::remove(mime->urls().value(0).toLocalFile());
    }

    void svgWithEmptyIntrinsicSizeStaysHidden() {
        QWidget parent;
        auto* w = new CLxWebSvgImageWidget(&parent);
        parent.show();
        // No content and no size; and a size that rounds to nothing.
        for (const char* doc : {"<svg xmlns='http://www.w3.org/2000/svg'/>",
                                "<svg xmlns='http://www.w3.org/2000/svg' width='0.2' height='0.2'><rect width='5' "
                                "height='5'/></svg>"}) {
            const QString empty = lxtest::WriteFile(Path("empty.svg"), doc);
            QVERIFY(w->Load(QStringLiteral("e"), empty));
            QVERIFY(w->GetImageSize().isEmpty());
            QVERIFY(!w->isVisible());
        }
        QVERIFY(w->Load(QStringLiteral("v"), m_strSvg));
        QVERIFY(w->isVisible());
    }
};

QTEST_MAIN(tst_WebImageWidgets)
#include "tst_WebImageWidgets.moc"
