// The preview window: sizing rules, the JSON entry, navigation at both ends, copying, and
// translation through a service stand-in on 127.0.0.1 (stale answers dropped, failures toasted,
// closing ends the request). Its content area: status looks and the spinner, zoom clamps and the
// pinch formula, wheel steps, animated pictures, drag bounds, the translation overlays, and painting
// a large picture at a high zoom without scaling all of it.

#include <LxStdUI/LIconButton.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget_p.h>
#include <LxUIKit/ImagePreview/LxImagePreviewHelper.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTitleBarWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask.h>
#include <LxUIKit/ImagePreview/LxImagePreviewWnd.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QNetworkProxy>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

#include <json/json.h>

#include "ImageFixtures.h"
#include "LocalHttpServer.h"
#include "LxTestSupport.h"

namespace {

using lxtest::LocalHttpServer;

Json::Value ParseJson(const char* text) {
    Json::Value v;
    Json::Reader().parse(text, v);
    return v;
}

// Texts of the toasts on screen.
QStringList Toasts() {
    QStringList out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("LxSimpleToast") && w->isVisible())
            out << static_cast<QLabel*>(w)->text();
    return out;
}

void ClearToasts() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("LxSimpleToast"))
            delete w;
}

struct Pictures {
    QTemporaryDir dir;
    QVector<std::shared_ptr<ImageInfo>> list;
    explicit Pictures(int n) {
        for (int i = 0; i < n; ++i) {
            const QString path =
                lxtest::SaveImage(dir.filePath(QStringLiteral("p%1.png").arg(i)),
                                  lxtest::MakeTestImage(160 + 10 * i, 120, QColor(40 * i, 90, 160)), "PNG");
            list << std::make_shared<ImageInfo>(path, 160 + 10 * i, 120);
        }
    }
};

CLxImagePreviewWnd& Wnd() { return CLxImagePreviewWnd::instance(); }

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

class TestImagePreviewWnd : public QObject {
    Q_OBJECT
    // The translation service stand-in: each test sets its answer.
    LocalHttpServer m_server;

private Q_SLOTS:
    void initTestCase() {
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        QVERIFY(m_server.Start());
    }
    void init() {
        m_server.ResetCounts();
        const QUrl url(m_server.Url(QString()));
        CLxImagePreviewTranslateTask::SetServiceAddress(false, QStringLiteral("http"), url.host(), url.port());
    }
    void cleanup() {
        Wnd().close();
        ClearToasts();
        CLxImagePreviewTranslateTask::ClearCache();
        CLxImagePreviewTranslateTask::SetServiceAddress(false, QString(), QString(), 0);
        CLxWebImageCacheMgr::GetInstance().Clear();
        lxtest::ResetGlobals();
    }
    void sizingBounds() {
        QCOMPARE(CLxImagePreviewHelper::GetMinImageArea(QSize(1000, 1000)), QSize(280, 280));
        QCOMPARE(CLxImagePreviewHelper::GetMaxImageArea(QSize(1000, 1000)), QSize(860, 880));
        QCOMPARE(CLxImagePreviewHelper::GetMinImageArea(QSize(1366, 768)), QSize(382, 215));
        QCOMPARE(CLxImagePreviewHelper::GetMaxImageArea(QSize(1366, 768)), QSize(1174, 675));
        // Stepping fits into the open window and never blows a small picture up.
        QCOMPARE(CLxImagePreviewHelper::GetImageScaleFactor(QSize(100, 50), QSize(400, 400)), 1.0);
        QCOMPARE(CLxImagePreviewHelper::GetImageScaleFactor(QSize(800, 200), QSize(400, 400)), 0.5);
        QCOMPARE(CLxImagePreviewHelper::GetImageScaleFactor(QSize(), QSize(400, 400)), 1.0);
    }

    void calculateScaleResult_data() {
        QTest::addColumn<QSize>("image");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QSize>("area");
        // Screen 1000 x 1000: minimum 280 x 280, maximum 860 x 880.
        QTest::newRow("small, enlarged") << QSize(100, 100) << 2.8 << QSize(280, 280);
        QTest::newRow("small, wide") << QSize(140, 70) << 2.0 << QSize(280, 280);
        QTest::newRow("small, one side at the minimum") << QSize(280, 100) << 1.0 << QSize(280, 280);
        QTest::newRow("wide, low") << QSize(500, 100) << 1.0 << QSize(500, 280);
        QTest::newRow("narrow, tall") << QSize(100, 500) << 1.0 << QSize(280, 500);
        QTest::newRow("between") << QSize(500, 600) << 1.0 << QSize(500, 600);
        QTest::newRow("at the maximum") << QSize(860, 880) << 1.0 << QSize(860, 880);
        QTest::newRow("very wide") << QSize(2000, 100) << 0.43 << QSize(860, 280);
        QTest::newRow("wide") << QSize(2000, 1000) << 0.43 << QSize(860, 430);
        QTest::newRow("tall") << QSize(1000, 2000) << 0.44 << QSize(440, 880);
        QTest::newRow("very tall") << QSize(100, 3000) << 880.0 / 3000 << QSize(280, 880);
        QTest::newRow("unknown") << QSize(0, 0) << 1.0 << QSize(280, 280);
    }

    void calculateScaleResult() {
        QFETCH(QSize, image);
        QFETCH(double, scale);
        QFETCH(QSize, area);
        const auto r = CLxImagePreviewHelper::CalculateScaleResult(image, QSize(280, 280), QSize(860, 880));
        QVERIFY2(qAbs(r.dScale - scale) < 1e-9, qPrintable(QString::number(r.dScale)));
        QCOMPARE(r.imageArea, area);
    }

    void jsonEntry() {
        lxtest::LogCapture capture;
        QVector<std::shared_ptr<ImageInfo>> images;
        int index = -1;
        // Refused, each with its log line: no params object, no data array, no usable picture.
        const QList<QPair<const char*, const char*>> refused = {
            {"{\"data\":[]}", "no params"},
            {"[1,2]", "no params"},
            {"{\"params\":{\"index\":1}}", "no data"},
            {"{\"params\":{\"data\":[1,{\"url\":\"\"}]}}", "no data"}};
        for (const auto& bad : refused) {
            capture.clear();
            QVERIFY2(!CLxImagePreviewWnd::GetParamsData(ParseJson(bad.first), images, index), bad.first);
            QVERIFY(capture.hasExact(QStringLiteral("CLxImagePreviewWnd::GetParamsData ") + bad.second));
        }
        QVERIFY(!Wnd().OpenImagePreviewWnd(ParseJson("{}")));
        QVERIFY(!Wnd().isVisible());

        // Broken members are skipped or read as unknown; the index is clamped.
        QVERIFY(CLxImagePreviewWnd::GetParamsData(
            ParseJson("{\"params\":{\"index\":7,\"data\":[{\"url\":\"a.png\",\"width\":30,\"height\":20},"
                      "{\"width\":5},{\"url\":\"b.png\",\"width\":\"wide\",\"height\":-4},\"c.png\"]}}"),
            images, index));
        QCOMPARE(images.size(), 2);
        QCOMPARE(index, 1);
        QCOMPARE(images[0]->strUrl, QStringLiteral("a.png"));
        QCOMPARE(QSize(images[0]->i32Width, images[0]->i32Height), QSize(30, 20));
        QCOMPARE(QSize(images[1]->i32Width, images[1]->i32Height), QSize(0, 0));
        QVERIFY(images[0]->u64UniqueId != images[1]->u64UniqueId);
        QVERIFY(CLxImagePreviewWnd::GetParamsData(ParseJson("{\"index\":1,\"params\":{\"data\":[{\"url\":\"a\"},"
                                                            "{\"url\":\"b\"}]}}"),
                                                  images, index));
        QCOMPARE(index, 1);

        Pictures pics(2);
        const std::string json = "{\"params\":{\"index\":1,\"data\":[{\"url\":\"" + pics.list[0]->strUrl.toStdString() +
                                 "\",\"width\":160,\"height\":120},{\"url\":\"" + pics.list[1]->strUrl.toStdString() +
                                 "\",\"width\":170,\"height\":120}]}}";
        QVERIFY(Wnd().OpenImagePreviewWnd(ParseJson(json.c_str())));
        QVERIFY(Wnd().isVisible());
        QCOMPARE(Wnd().GetImageCount(), 2);
        QCOMPARE(Wnd().GetCurrentIndex(), 1);
        QCOMPARE(Wnd().GetContentWidget()->GetCurrentImageStatus(), CLxImagePreviewContentWidget::Status_Loaded);
        // A first opening sizes the window from the screen under the mouse.
        const auto sizing = CLxImagePreviewHelper::CalculateScaleResult(QSize(170, 120));
        QCOMPARE(Wnd().size(), sizing.imageArea + Wnd().chromeSize());
        QCOMPARE(Wnd().GetCurrentImageInfo()->dScale, sizing.dScale);
    }

    void navigationStopsAtBothEnds() {
        Pictures pics(3);
        lxtest::LogCapture capture;
        Wnd().OpenImagePreviewWnd(pics.list, 0);
        CLxImagePreviewTitleBarWidget* bar = Wnd().GetTitleBar();
        QVERIFY(bar->GetPreviousButton()->isVisible());
        QVERIFY(!bar->GetPreviousButton()->isEnabled());
        QVERIFY(bar->GetNextButton()->isEnabled());
        QTest::keyRelease(&Wnd(), Qt::Key_Left);
        QCOMPARE(Wnd().GetCurrentIndex(), 0);
        QTest::keyRelease(&Wnd(), Qt::Key_Right);
        QCOMPARE(Wnd().GetCurrentIndex(), 1);
        QVERIFY(bar->GetPreviousButton()->isEnabled() && bar->GetNextButton()->isEnabled());
        bar->GetNextButton()->click();
        QCOMPARE(Wnd().GetCurrentIndex(), 2);
        QVERIFY(!bar->GetNextButton()->isEnabled());
        Wnd().OnNextImage();
        QCOMPARE(Wnd().GetCurrentIndex(), 2);
        QCOMPARE(Wnd().GetContentWidget()->GetContentImgWidget()->GetUrl(), pics.list[2]->strUrl);
        QVERIFY(capture.hasExact(QStringLiteral("CLxImagePreviewWnd::SetImage , i32CurIndex = 2")));
        // "Next" on the last picture stays on it rather than asking for one past the end.
        QVERIFY(!capture.hasExact(QStringLiteral("CLxImagePreviewWnd::SetImage spCurImg is nullptr")));
        Wnd().SetImage(5);
        QVERIFY(capture.hasExact(QStringLiteral("CLxImagePreviewWnd::SetImage spCurImg is nullptr")));
        QCOMPARE(Wnd().GetCurrentIndex(), 2);

        // Removing pictures keeps the current one where it can.
        Wnd().DeleteImageInfoByUniqueID(pics.list[0]->u64UniqueId);
        QCOMPARE(Wnd().GetCurrentIndex(), 1);
        QCOMPARE(Wnd().GetCurrentImageInfo(), pics.list[2]);
        Wnd().DeleteImageInfoByUniqueID(pics.list[2]->u64UniqueId);
        QCOMPARE(Wnd().GetCurrentImageInfo(), pics.list[1]);
        QVERIFY(!bar->GetPreviousButton()->isVisible());  // one picture: no stepping
        Wnd().DeleteImageInfoByUniqueID(pics.list[1]->u64UniqueId);
        QVERIFY(!Wnd().isVisible());
    }

    void copyAndContextMenu() {
        QTemporaryDir dir;
        auto missing = std::make_shared<ImageInfo>(dir.filePath(QStringLiteral("missing.png")), 50, 50);
        Wnd().OpenImagePreviewWnd({missing}, 0);
        QVERIFY(!Wnd().CanCopyCurrentImage());
        QVERIFY(!Wnd().CopyCurrentImage());
        QVERIFY(Toasts().join('|').contains(QStringLiteral("复制失败")));
        Wnd().OnShowCopyContextMenu(QPoint(5, 5));
        QVERIFY(Wnd().GetContextMenu());
        QCOMPARE(Wnd().GetContextMenu()->actions().size(), 1);
        QVERIFY(!Wnd().GetContextMenu()->actions().first()->isEnabled());
        Wnd().GetContextMenu()->close();
        ClearToasts();

        Pictures pics(1);
        Wnd().OpenImagePreviewWnd(pics.list, 0);
        QVERIFY(Wnd().CanCopyCurrentImage());
        Wnd().OnShowCopyContextMenu(QPoint(5, 5));
        QAction* copy = Wnd().GetContextMenu()->actions().first();
        QCOMPARE(copy->text(), QStringLiteral("复制"));
        QVERIFY(copy->isEnabled());
        copy->trigger();
        QVERIFY(Toasts().join('|').contains(QStringLiteral("复制成功")));
        QCOMPARE(QApplication::clipboard()->image().size(), QSize(160, 120));
    }

    void translationFlow() {
        m_server.SetRoute(QStringLiteral("/image/translate"), 200,
                          "{\"code\":0,\"data\":{\"target_language\":\"zh-CN\",\"image_records\":[{\"x\":0,\"y\":0,"
                          "\"width\":80,\"height\":40,\"target_text\":\"你好\"}]}}",
                          150);
        Pictures pics(2);
        Wnd().OpenImagePreviewWnd(pics.list, 0);
        CLxImagePreviewContentWidget* content = Wnd().GetContentWidget();

        // Stepping away while the answer is on its way drops it.
        Wnd().GetTitleBar()->GetTranslateButton()->click();
        QCOMPARE(pics.list[0]->i32TranslateState, int(ImageInfo::Translating));
        QVERIFY(content->IsScanning());
        QVERIFY(!Wnd().GetTitleBar()->GetTranslateButton()->isEnabled());
        QTRY_COMPARE(m_server.RequestCount(QStringLiteral("/image/translate")), 1);  // the answer is on its way
        Wnd().OnNextImage();
        QCOMPARE(pics.list[0]->i32TranslateState, int(ImageInfo::TranslateNone));
        QVERIFY(!content->IsScanning());
        QTest::qWait(400);
        QCOMPARE(pics.list[0]->i32TranslateState, int(ImageInfo::TranslateNone));
        QVERIFY(pics.list[0]->translatedPixmap.isNull());

        // The current picture's answer is shown over it; the button then switches back and forth.
        Wnd().OnTranslateBtnClicked();
        QTRY_COMPARE(pics.list[1]->i32TranslateState, int(ImageInfo::Translated));
        QVERIFY(pics.list[1]->bShowTranslated);
        QCOMPARE(pics.list[1]->translatedPixmap.size(), QSize(170, 120));
        QVERIFY(content->GetTranslateView()->isVisible());
        QVERIFY(!content->IsScanning());
        Wnd().OnTranslateBtnClicked();
        QVERIFY(!pics.list[1]->bShowTranslated);
        QVERIFY(!content->GetTranslateView()->isVisible());
        Wnd().OnTranslateBtnClicked();
        QVERIFY(content->GetTranslateView()->isVisible());
        QCOMPARE(m_server.RequestCount(QStringLiteral("/image/translate")), 2);
        QVERIFY(Toasts().isEmpty());

        // Closing ends a request in flight: no answer reaches the picture afterwards.
        Wnd().OnPreviousImage();
        Wnd().OnTranslateBtnClicked();
        QVERIFY(Wnd().GetTranslateTask()->IsRequestInFlight());
        Wnd().close();
        QVERIFY(!Wnd().GetTranslateTask()->IsRequestInFlight());
        QCOMPARE(pics.list[0]->i32TranslateState, int(ImageInfo::TranslateNone));
        QTest::qWait(400);
        QCOMPARE(pics.list[0]->i32TranslateState, int(ImageInfo::TranslateNone));
        QVERIFY(Toasts().isEmpty());
    }

    void translationFailuresAreToasted_data() {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("animated");
        QTest::addColumn<QString>("toast");
        QTest::newRow("failure") << QByteArray("{\"code\":7}") << false << QStringLiteral("翻译失败，请重试");
        QTest::newRow("no result") << QByteArray(
                                          "{\"code\":0,\"data\":{\"target_language\":\"sc\",\"image_records\":[]}}")
                                   << false << QStringLiteral("没有翻译结果");
        QTest::newRow("animated") << QByteArray() << true << QStringLiteral("翻译失败，不支持翻译的图片格式");
    }

    void translationFailuresAreToasted() {
        QFETCH(QByteArray, answer);
        QFETCH(bool, animated);
        QFETCH(QString, toast);
        m_server.SetRoute(QStringLiteral("/image/translate"), 200, answer);
        Pictures pics(1);
        if (animated)
            pics.list[0]->strUrl = lxtest::CopyFixture(QStringLiteral("frames2_8x8_100ms.gif"),
                                                       pics.dir.filePath(QStringLiteral("a.gif")));
        Wnd().OpenImagePreviewWnd(pics.list, 0);
        Wnd().OnTranslateBtnClicked();
        QTRY_VERIFY(!Toasts().isEmpty());
        QVERIFY2(Toasts().join('|').contains(toast), qPrintable(Toasts().join('|')));
        QCOMPARE(pics.list[0]->i32TranslateState, int(ImageInfo::TranslateNone));
        QCOMPARE(m_server.TotalRequests(), animated ? 0 : 1);
        QVERIFY(!Wnd().GetContentWidget()->IsScanning());
    }

    void statusLooks_data() {
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

    void statusLooks() {
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

    void spinnerTurnsAndIsNotRestarted() {
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

    void zoomStepsAndPinchFormula() {
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

    void animatedPicturesAreNeverZoomed() {
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

    void dragStaysWithinBounds() {
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

    void translationOverlays() {
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

    void largePictureScalesOnlyWhatIsVisible() {
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
};

QTEST_MAIN(TestImagePreviewWnd)
#include "tst_ImagePreviewWnd.moc"
