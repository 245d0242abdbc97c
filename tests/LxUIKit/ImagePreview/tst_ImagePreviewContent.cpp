// The preview's content area: status looks and the spinner, zoom clamps and the pinch formula,
// wheel steps, animated pictures, drag bounds, the translation overlays, and painting a large
// picture at a high zoom without scaling all of it.

#include <LxStdUI/LIconButton.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget_p.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

#include "ImageFixtures.h"
#include "LxTestSupport.h"

namespace {

using Status = CLxImagePreviewContentWidget::ImageStatus;

struct Fixture {
    QTemporaryDir dir;
    CLxImagePreviewContentWidget content;
    LxWebImageWidget* img = new LxWebImageWidget;
    std::shared_ptr<ImageInfo> info = std::make_shared<ImageInfo>();

    explicit Fixture(const QSize& area = QSize(200, 200)) {
        content.resize(area);
        content.SetContentImgWidget(img);
        content.SetImageInfo(info);
    }
    void LoadStill(int w, int h, const QColor& color = Qt::darkGreen) {
        const QString path = lxtest::SaveImage(dir.filePath(QStringLiteral("still_%1x%2.png").arg(w).arg(h)),
                                               lxtest::MakeTestImage(w, h, color), "PNG");
        img->SetUrl(path);
        QCOMPARE(content.GetCurrentImageStatus(), CLxImagePreviewContentWidget::Status_Loaded);
    }
    void Scale(double d) {
        info->dScale = d;
        info->bUserChangedScale = false;
        content.SetImageInfo(info);
    }
};

// A move with the left button held (QTest's own moves carry no buttons on every platform).
void Drag(QWidget* w, const QPoint& to) {
    QMouseEvent e(QEvent::MouseMove, QPointF(to), w->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

void Wheel(QWidget* w, int dy) {
    QWheelEvent e(QPointF(10, 10), w->mapToGlobal(QPoint(10, 10)), QPoint(), QPoint(0, dy), Qt::NoButton,
                  Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e);
}

}  // namespace

class TestImagePreviewContent : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() {
        CLxWebImageCacheMgr::GetInstance().Clear();
        lxtest::ResetGlobals();
    }
    void statusLooks_data();
    void statusLooks();
    void spinnerTurnsAndIsNotRestarted();
    void zoomStepsAndPinchFormula();
    void animatedPicturesAreNeverZoomed();
    void dragStaysWithinBounds();
    void translationOverlays();
    void largePictureScalesOnlyWhatIsVisible();
};

void TestImagePreviewContent::statusLooks_data() {
    QTest::addColumn<int>("load");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("iconShown");
    QTest::addColumn<bool>("spinning");
    QTest::newRow("loading") << 1 << 0 << true << true;
    QTest::newRow("download failed") << 2 << 1 << true << false;
    QTest::newRow("loaded") << 4 << 2 << false << false;
    QTest::newRow("load failed") << 3 << 3 << true << false;
    QTest::newRow("out of range") << 9 << 3 << true << false;
    QTest::newRow("none") << 0 << 3 << true << false;
}

void TestImagePreviewContent::statusLooks() {
    QFETCH(int, load);
    QFETCH(int, status);
    QFETCH(bool, iconShown);
    QFETCH(bool, spinning);
    lxtest::AssertRecorder asserts;
    CLxImagePreviewContentWidget content;
    content.resize(300, 200);
    content.show();
    content.SetImageStatus(CLxImagePreviewContentWidget::Status_Loading);  // spinning before
    content.OnImageDownloadStatus(QStringLiteral("u"), LxImageLoadStatus(load));
    QCOMPARE(int(content.GetCurrentImageStatus()), status);
    QCOMPARE(content.GetStatusIcon()->isVisible(), iconShown);
    QCOMPARE(content.IsLoadingTimerActive(), spinning);
    QCOMPARE(content.GetStatusIcon()->size(), QSize(44, 44));
    QCOMPARE(content.GetStatusIcon()->geometry().center(), content.rect().center());
    QCOMPARE(asserts.has(QStringLiteral("ImagePreview/LxImagePreviewContentWidget"),
                         QStringLiteral("LxImageLoadStatus is None")),
             load == 0);
    if (!spinning)
        QCOMPARE(content.GetStatusIcon()->rotate(), 0);
    // Only a failed download offers a reload.
    QSignalSpy refresh(&content, &CLxImagePreviewContentWidget::refreshRequested);
    content.GetStatusIcon()->click();
    QCOMPARE(refresh.count(), status == 1 ? 1 : 0);
}

void TestImagePreviewContent::spinnerTurnsAndIsNotRestarted() {
    CLxImagePreviewContentWidget content;
    content.SetImageStatus(CLxImagePreviewContentWidget::Status_Loading);
    QTest::qSleep(30);  // no event is processed: the timer cannot fire and start a new period
    content.SetImageStatus(CLxImagePreviewContentWidget::Status_Loading);
    QVERIFY2(content.IsLoadingTimerActive() && content.findChildren<LIconButton*>().size() == 1, "one spinner");
    // 18 frames of 20 degrees, then back to 0.
    QTRY_VERIFY(content.GetLoadingAngle() >= 40);
    const int angle = content.GetLoadingAngle();
    content.SetImageStatus(CLxImagePreviewContentWidget::Status_Loading);
    QVERIFY(content.GetLoadingAngle() >= angle || content.GetLoadingAngle() == 0);
    for (int i = 0; i < 18 * 2; ++i)
        QMetaObject::invokeMethod(&content, "OnLoadingTimer");
    QVERIFY(content.GetLoadingAngle() % 20 == 0 && content.GetLoadingAngle() < 360);
}

void TestImagePreviewContent::zoomStepsAndPinchFormula() {
    Fixture f;
    f.LoadStill(100, 80);
    struct Row {
        double from;
        int op;  // 0 out, 1 in, 2 pinch
        double delta;
        double to;
    };
    const Row rows[] = {
        {0.1, 0, 0, 0.05},  {0.05, 0, 0, 0.05},  {9.95, 1, 0, 10.0},  {1.0, 1, 0, 1.1},     {0.5, 2, 0.1, 0.525},
        {2.0, 2, 0.5, 2.5}, {1.0, 2, -0.5, 0.5}, {0.2, 2, -10, 0.05}, {0.01, 2, 100, 0.05}, {9.0, 2, 5, 10.0},
    };
    for (const Row& r : rows) {
        f.Scale(r.from);
        if (r.op == 0)
            f.content.OnZoomOut();
        else if (r.op == 1)
            f.content.OnZoomIn();
        else
            f.content.Zoom(r.delta);
        QVERIFY2(qAbs(f.info->dScale - r.to) < 1e-9,
                 qPrintable(QStringLiteral("%1 -> %2, want %3").arg(r.from).arg(f.info->dScale).arg(r.to)));
        QVERIFY(f.info->bUserChangedScale);
        QCOMPARE(f.img->GetScaleFactor(), f.info->dScale);
        QCOMPARE(f.img->size(), QSize(qRound(100 * r.to), qRound(80 * r.to)));
    }
    // Already at the bound: nothing changes, not even the flag.
    f.Scale(10.0);
    f.content.Zoom(0.5);
    QVERIFY(!f.info->bUserChangedScale);

    // The wheel steps once per event, whatever its size, and centres the picture.
    f.Scale(1.0);
    Wheel(&f.content, 720);
    QVERIFY(qAbs(f.info->dScale - 1.1) < 1e-9);
    Wheel(&f.content, -15);
    Wheel(&f.content, -15);
    QVERIFY(qAbs(f.info->dScale - 0.9) < 1e-9);
    QCOMPARE(f.img->geometry().center(), f.content.rect().center());
}

void TestImagePreviewContent::animatedPicturesAreNeverZoomed() {
    Fixture f;
    f.img->SetUrl(lxtest::CopyFixture(QStringLiteral("frames2_8x8_100ms.gif"), f.dir.filePath("a.gif")));
    QVERIFY(f.content.IsGif());
    f.Scale(1.0);
    f.content.OnZoomIn();
    f.content.OnZoomOut();
    f.content.Zoom(0.5);
    Wheel(&f.content, 120);
    QCOMPARE(f.info->dScale, 1.0);
    QVERIFY(!f.info->bUserChangedScale);
    QCOMPARE(f.img->GetScaleFactor(), 1.0);
}

void TestImagePreviewContent::dragStaysWithinBounds() {
    Fixture f(QSize(200, 200));
    f.LoadStill(400, 300);
    f.Scale(1.0);
    f.content.show();
    QVERIFY(f.content.IsWidgetResizable());
    QCOMPARE(f.img->pos(), QPoint(-100, -50));
    QTest::mousePress(&f.content, Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    Drag(&f.content, QPoint(60, 90));
    QCOMPARE(f.img->pos(), QPoint(-140, -60));
    Drag(&f.content, QPoint(-500, -500));
    QCOMPARE(f.img->pos(), QPoint(-200, -100));  // the far edges meet the area's
    Drag(&f.content, QPoint(900, 900));
    QCOMPARE(f.img->pos(), QPoint(0, 0));
    QTest::mouseRelease(&f.content, Qt::LeftButton, Qt::NoModifier, QPoint(900, 900));
    Drag(&f.content, QPoint(10, 10));
    QCOMPARE(f.img->pos(), QPoint(0, 0));  // released: moving does nothing

    // Wider than the area but not taller: only the horizontal side moves.
    f.Scale(0.5);
    f.content.resize(150, 200);
    f.content.CenterWebImageWidget();
    QCOMPARE(f.img->size(), QSize(200, 150));
    QTest::mousePress(&f.content, Qt::LeftButton, Qt::NoModifier, QPoint(75, 100));
    Drag(&f.content, QPoint(100, 10));
    QCOMPARE(f.img->pos(), QPoint(0, 25));
    QTest::mouseRelease(&f.content, Qt::LeftButton, Qt::NoModifier, QPoint(100, 10));

    // A picture that fits cannot be dragged.
    f.Scale(0.25);
    const QPoint centred = f.img->pos();
    QTest::mousePress(&f.content, Qt::LeftButton, Qt::NoModifier, QPoint(75, 100));
    Drag(&f.content, QPoint(10, 10));
    QTest::mouseRelease(&f.content, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QCOMPARE(f.img->pos(), centred);
}

void TestImagePreviewContent::translationOverlays() {
    Fixture f(QSize(300, 200));
    f.LoadStill(120, 90);
    f.content.show();
    f.info->i32TranslateState = ImageInfo::Translating;
    f.content.UpdateTranslateView();
    QVERIFY(f.content.IsScanning());
    QVERIFY(!f.content.GetTranslateView()->isVisible());

    QPixmap translated(120, 90);
    translated.fill(Qt::magenta);
    f.info->i32TranslateState = ImageInfo::Translated;
    f.info->translatedPixmap = translated;
    f.info->bShowTranslated = true;
    f.content.UpdateTranslateView();
    QVERIFY(!f.content.IsScanning());
    QVERIFY(f.content.GetTranslateView()->isVisible());
    QCOMPARE(f.content.GetTranslateView()->geometry(), f.img->geometry());
    f.content.OnZoomIn();  // the overlay follows the picture
    QCOMPARE(f.content.GetTranslateView()->geometry(), f.img->geometry());
    const QImage shot = lxtest::Render(&f.content, Qt::black);
    QVERIFY(lxtest::Near(shot.pixelColor(f.img->geometry().center()), Qt::magenta, 2));

    f.info->bShowTranslated = false;
    f.content.UpdateTranslateView();
    QVERIFY(!f.content.GetTranslateView()->isVisible());

    // The scan line sweeps top to bottom every 3 1/3 seconds.
    QCOMPARE(CScanLineWidget::LineY(101, 0.0), 0);
    QCOMPARE(CScanLineWidget::LineY(101, 1.0), 30);
    QVERIFY(qAbs(CScanLineWidget::LineY(201, 10.0 / 3 + 2.0 / 3) - 40) <= 1);  // one sweep later
    QCOMPARE(CScanLineWidget::LineY(0, 2.0), 0);
}

void TestImagePreviewContent::largePictureScalesOnlyWhatIsVisible() {
    Fixture f(QSize(400, 300));
    // Quadrants of four colours: the centre of the picture is where they meet.
    QImage big(6000, 4000, QImage::Format_RGB32);
    big.fill(Qt::red);
    const QString path = f.dir.filePath(QStringLiteral("big.png"));
    {
        QPainter p(&big);
        p.fillRect(3000, 0, 3000, 2000, Qt::green);
        p.fillRect(0, 2000, 3000, 2000, Qt::blue);
        p.fillRect(3000, 2000, 3000, 2000, Qt::yellow);
    }
    QVERIFY(big.save(path, "PNG"));
    big = QImage();
    f.img->SetUrl(path);
    QCOMPARE(f.content.GetCurrentImageStatus(), CLxImagePreviewContentWidget::Status_Loaded);
    lxtest::CostMeter meter;
    f.Scale(4.0);
    QCOMPARE(f.img->size(), QSize(24000, 16000));
    QImage shot = lxtest::Render(&f.content, Qt::black);
    // Centred: the four quadrants meet in the middle of the area.
    QVERIFY(lxtest::Near(shot.pixelColor(190, 140), Qt::red, 2));
    QVERIFY(lxtest::Near(shot.pixelColor(210, 140), Qt::green, 2));
    QVERIFY(lxtest::Near(shot.pixelColor(190, 160), Qt::blue, 2));
    QVERIFY(lxtest::Near(shot.pixelColor(210, 160), Qt::yellow, 2));
    // Scaling all of it would take 1.5 GB.
    QVERIFY2(meter.PeakAboveStartBytes() < qint64(300 * lxtest::CostMeter::kSanitizerFactor) * 1024 * 1024,
             qPrintable(QString::number(meter.PeakAboveStartBytes())));
    f.content.MoveWebImageWidget(QPoint(0, 0));  // the top-left corner
    shot = lxtest::Render(&f.content, Qt::black);
    QVERIFY(lxtest::Near(shot.pixelColor(5, 5), Qt::red, 2));
    f.content.MoveWebImageWidget(QPoint(-100000, -100000));
    shot = lxtest::Render(&f.content, Qt::black);
    QVERIFY(lxtest::Near(shot.pixelColor(395, 295), Qt::yellow, 2));
}

QTEST_MAIN(TestImagePreviewContent)
#include "tst_ImagePreviewContent.moc"
