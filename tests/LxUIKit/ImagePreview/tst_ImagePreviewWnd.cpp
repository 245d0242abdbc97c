// The preview window: sizing rules, the JSON entry, navigation at both ends, copying, and
// translation through a service stand-in on 127.0.0.1 (stale answers dropped, failures toasted,
// closing ends the request).

#include <LxStdUI/LIconButton.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewHelper.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTitleBarWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask.h>
#include <LxUIKit/ImagePreview/LxImagePreviewWnd.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QNetworkProxy>
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

}  // namespace

class TestImagePreviewWnd : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }
    void cleanup() {
        Wnd().close();
        ClearToasts();
        CLxImagePreviewTranslateTask::ClearCache();
        CLxImagePreviewTranslateTask::SetServiceAddress(false, QString(), QString(), 0);
        CLxWebImageCacheMgr::GetInstance().Clear();
        lxtest::ResetGlobals();
    }
    void sizingBounds();
    void calculateScaleResult_data();
    void calculateScaleResult();
    void jsonEntry();
    void navigationStopsAtBothEnds();
    void copyAndContextMenu();
    void translationFlow();
    void translationFailuresAreToasted_data();
    void translationFailuresAreToasted();
};

void TestImagePreviewWnd::sizingBounds() {
    QCOMPARE(CLxImagePreviewHelper::GetMinImageArea(QSize(1000, 1000)), QSize(280, 280));
    QCOMPARE(CLxImagePreviewHelper::GetMaxImageArea(QSize(1000, 1000)), QSize(860, 880));
    QCOMPARE(CLxImagePreviewHelper::GetMinImageArea(QSize(1366, 768)), QSize(382, 215));
    QCOMPARE(CLxImagePreviewHelper::GetMaxImageArea(QSize(1366, 768)), QSize(1174, 675));
    // Stepping fits into the open window and never blows a small picture up.
    QCOMPARE(CLxImagePreviewHelper::GetImageScaleFactor(QSize(100, 50), QSize(400, 400)), 1.0);
    QCOMPARE(CLxImagePreviewHelper::GetImageScaleFactor(QSize(800, 200), QSize(400, 400)), 0.5);
    QCOMPARE(CLxImagePreviewHelper::GetImageScaleFactor(QSize(), QSize(400, 400)), 1.0);
}

void TestImagePreviewWnd::calculateScaleResult_data() {
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

void TestImagePreviewWnd::calculateScaleResult() {
    QFETCH(QSize, image);
    QFETCH(double, scale);
    QFETCH(QSize, area);
    const auto r = CLxImagePreviewHelper::CalculateScaleResult(image, QSize(280, 280), QSize(860, 880));
    QVERIFY2(qAbs(r.dScale - scale) < 1e-9, qPrintable(QString::number(r.dScale)));
    QCOMPARE(r.imageArea, area);
}

void TestImagePreviewWnd::jsonEntry() {
    lxtest::LogCapture capture;
    QVector<std::shared_ptr<ImageInfo>> images;
    int index = -1;
    QVERIFY(!CLxImagePreviewWnd::GetParamsData(ParseJson("{\"data\":[]}"), images, index));
    QVERIFY(capture.hasExact(QStringLiteral("CLxImagePreviewWnd::GetParamsData no params")));
    QVERIFY(!CLxImagePreviewWnd::GetParamsData(ParseJson("[1,2]"), images, index));
    capture.clear();
    QVERIFY(!CLxImagePreviewWnd::GetParamsData(ParseJson("{\"params\":{\"index\":1}}"), images, index));
    QVERIFY(capture.hasExact(QStringLiteral("CLxImagePreviewWnd::GetParamsData no data")));
    capture.clear();
    QVERIFY(!CLxImagePreviewWnd::GetParamsData(ParseJson("{\"params\":{\"data\":[1,{\"url\":\"\"}]}}"), images, index));
    QVERIFY(capture.hasExact(QStringLiteral("CLxImagePreviewWnd::GetParamsData no data")));
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

void TestImagePreviewWnd::navigationStopsAtBothEnds() {
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

void TestImagePreviewWnd::copyAndContextMenu() {
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

void TestImagePreviewWnd::translationFlow() {
    LocalHttpServer server;
    QVERIFY(server.Start());
    server.SetRoute(QStringLiteral("/image/translate"), 200,
                    "{\"code\":0,\"data\":{\"target_language\":\"zh-CN\",\"image_records\":[{\"x\":0,\"y\":0,"
                    "\"width\":80,\"height\":40,\"target_text\":\"你好\"}]}}",
                    150);
    const QUrl url(server.Url(QString()));
    CLxImagePreviewTranslateTask::SetServiceAddress(false, QStringLiteral("http"), url.host(), url.port());
    Pictures pics(2);
    Wnd().OpenImagePreviewWnd(pics.list, 0);
    CLxImagePreviewContentWidget* content = Wnd().GetContentWidget();

    // Stepping away while the answer is on its way drops it.
    Wnd().GetTitleBar()->GetTranslateButton()->click();
    QCOMPARE(pics.list[0]->i32TranslateState, int(ImageInfo::Translating));
    QVERIFY(content->IsScanning());
    QVERIFY(!Wnd().GetTitleBar()->GetTranslateButton()->isEnabled());
    QTRY_COMPARE(server.RequestCount(QStringLiteral("/image/translate")), 1);  // the answer is on its way
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
    QCOMPARE(server.RequestCount(QStringLiteral("/image/translate")), 2);
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

void TestImagePreviewWnd::translationFailuresAreToasted_data() {
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("animated");
    QTest::addColumn<QString>("toast");
    QTest::newRow("failure") << QByteArray("{\"code\":7}") << false << QStringLiteral("翻译失败，请重试");
    QTest::newRow("no result") << QByteArray("{\"code\":0,\"data\":{\"target_language\":\"sc\",\"image_records\":[]}}")
                               << false << QStringLiteral("没有翻译结果");
    QTest::newRow("animated") << QByteArray() << true << QStringLiteral("翻译失败，不支持翻译的图片格式");
}

void TestImagePreviewWnd::translationFailuresAreToasted() {
    QFETCH(QByteArray, answer);
    QFETCH(bool, animated);
    QFETCH(QString, toast);
    LocalHttpServer server;
    QVERIFY(server.Start());
    server.SetRoute(QStringLiteral("/image/translate"), 200, answer);
    const QUrl url(server.Url(QString()));
    CLxImagePreviewTranslateTask::SetServiceAddress(false, QStringLiteral("http"), url.host(), url.port());
    Pictures pics(1);
    if (animated)
        pics.list[0]->strUrl =
            lxtest::CopyFixture(QStringLiteral("frames2_8x8_100ms.gif"), pics.dir.filePath(QStringLiteral("a.gif")));
    Wnd().OpenImagePreviewWnd(pics.list, 0);
    Wnd().OnTranslateBtnClicked();
    QTRY_VERIFY(!Toasts().isEmpty());
    QVERIFY2(Toasts().join('|').contains(toast), qPrintable(Toasts().join('|')));
    QCOMPARE(pics.list[0]->i32TranslateState, int(ImageInfo::TranslateNone));
    QCOMPARE(server.TotalRequests(), animated ? 0 : 1);
    QVERIFY(!Wnd().GetContentWidget()->IsScanning());
}

QTEST_MAIN(TestImagePreviewWnd)
#include "tst_ImagePreviewWnd.moc"
