// Pictures on a screen of device pixel ratio 2 (QT_SCALE_FACTOR=2 set before the application).

#include "ImageFixtures.h"
#include "LxTestSupport.h"
#include "ScriptedDownloadDelegate.h"

#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>
#include <LxUIKit/WebImage/LxWebStaticImageWidget.h>
#include <LxUIKit/WebImage/LxWebSvgImageWidget.h>

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QImage Split(int w, int h) {
    QImage img(w, h, QImage::Format_ARGB32);
    img.fill(Qt::green);
    QPainter p(&img);
    p.fillRect(0, 0, w / 2, h, Qt::red);
    return img;
}

// Device-pixel rendering of a widget over blue.
QImage Render(QWidget* w) {
    const qreal dpr = w->devicePixelRatioF();
    QImage img(w->size() * dpr, QImage::Format_ARGB32_Premultiplied);
    img.setDevicePixelRatio(dpr);
    img.fill(Qt::blue);
    w->render(&img, QPoint(), QRegion(), QWidget::DrawChildren);
    return img;
}

bool Is(QRgb px, Qt::GlobalColor c) {
    const QColor want(c);
    return qAbs(qRed(px) - want.red()) < 30 && qAbs(qGreen(px) - want.green()) < 30 &&
           qAbs(qBlue(px) - want.blue()) < 30;
}

}  // namespace

class tst_WebImageHiDpi : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

private slots:
    void initTestCase() {
        lxtest::ScriptedDownloadDelegate::Install();
        QWidget probe;
        QCOMPARE(probe.devicePixelRatioF(), 2.0);
    }

    void onePicturePixelIsOneDevicePixel() {
        const QString png = lxtest::SaveImage(m_dir.filePath("split.png"), Split(40, 20), "PNG");
        CLxWebStaticImageWidget w;
        w.resize(40, 20);
        QVERIFY(w.Load(QStringLiteral("s"), png));
        QCOMPARE(w.sizeHint(), QSize(20, 10));
        const QImage img = Render(&w);
        QCOMPARE(img.size(), QSize(80, 40));
        QVERIFY(Is(img.pixel(19, 9), Qt::red));
        QVERIFY(Is(img.pixel(20, 9), Qt::green));  // a sharp edge: no smoothing across it
        QVERIFY(Is(img.pixel(39, 19), Qt::green));
        QVERIFY(Is(img.pixel(41, 5), Qt::blue));
        QVERIFY(Is(img.pixel(10, 21), Qt::blue));
    }

    void scaleToWidgetFillsEveryDevicePixel() {
        const QString png = lxtest::SaveImage(m_dir.filePath("split2.png"), Split(40, 20), "PNG");
        LxWebImageWidget w;
        w.resize(30, 30);
        w.EnableScaleToWidgetSize(true);
        w.SetUrl(png);
        const QImage img = Render(&w);
        QCOMPARE(img.size(), QSize(60, 60));
        QVERIFY(Is(img.pixel(1, 58), Qt::red));
        QVERIFY(Is(img.pixel(58, 1), Qt::green));
    }

    void svgIsRenderedAtDeviceResolution() {
        const QString svg = lxtest::WriteFile(
            m_dir.filePath("v.svg"),
            "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='20'><rect width='10' height='20' fill='#f00'/>"
            "<rect x='10' width='10' height='20' fill='#0f0'/></svg>");
        CLxWebSvgImageWidget w;
        w.resize(20, 20);
        QVERIFY(w.Load(QStringLiteral("v"), svg));
        QCOMPARE(w.sizeHint(), QSize(20, 20));  // vector: logical size kept
        const QImage img = Render(&w);
        QVERIFY(Is(img.pixel(19, 20), Qt::red));
        QVERIFY(Is(img.pixel(20, 20), Qt::green));  // the edge falls between device pixels
        const QPixmap source = w.GetSourcePixmap();
        QCOMPARE(source.size(), QSize(40, 40));
        QCOMPARE(source.devicePixelRatio(), 2.0);
    }

    void placeholderCoversTheWidget() {
        LxWebImageWidget w;
        w.resize(50, 50);
        w.EnableScaleToWidgetSize(true);
        w.ShowDefaultInitImage();
        const QImage img = Render(&w);
        QCOMPARE(img.size(), QSize(100, 100));
        QVERIFY(!Is(img.pixel(50, 4), Qt::blue));
        QVERIFY(!Is(img.pixel(50, 95), Qt::blue));
    }
};

int main(int argc, char* argv[]) {
    qputenv("QT_SCALE_FACTOR", "2");
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    tst_WebImageHiDpi test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}
#include "tst_WebImageHiDpi.moc"
