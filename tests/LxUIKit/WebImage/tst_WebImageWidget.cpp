// LxWebImageWidget and LWebImageReloadHelper against a scripted in-process downloader: the road
// of one picture, type detection, supersession, failures, placeholders, retries, shared movies.

#include "ImageFixtures.h"
#include "LxTestSupport.h"
#include "ScriptedDownloadDelegate.h"

#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/WebImage/LWebImageReloadHelper.h>
#include <LxUIKit/WebImage/LxWebAnimatedImageWidget.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(LxWebImageWidget*)

namespace {

using Status = LxImageLoadStatus;

QList<int> Statuses(const QSignalSpy& spy) {
    QList<int> out;
    for (const QList<QVariant>& args : spy)
        out << int(args.at(1).value<LxImageLoadStatus>());
    return out;
}

bool Near(const QColor& a, const QColor& b, int tolerance = 12) {
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance &&
           qAbs(a.blue() - b.blue()) <= tolerance;
}

}  // namespace

class tst_WebImageWidget : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    lxtest::ScriptedDownloadDelegate* m_pDelegate = nullptr;
    QString m_strPng, m_strPng2, m_strGif, m_strGif1, m_strWebp, m_strWebp1, m_strSvg, m_strJpeg;
    QString Path(const QString& name) const { return m_dir.filePath(name); }

private slots:
    void initTestCase() {
        qRegisterMetaType<LxWebImageWidget*>();
        m_pDelegate = lxtest::ScriptedDownloadDelegate::Install();
        m_strPng = lxtest::SaveImage(Path("a.png"), lxtest::MakeTestImage(30, 20, Qt::red), "PNG");
        m_strPng2 = lxtest::SaveImage(Path("b.png"), lxtest::MakeTestImage(50, 10, Qt::green), "PNG");
        m_strJpeg = lxtest::SaveImage(Path("c.jpg"), lxtest::MakeTestImage(30, 30, Qt::blue), "JPEG");
        m_strGif = lxtest::SaveGif(Path("anim.gif"), lxtest::MakeFrames(3, 12, 12), 30);
        m_strGif1 = lxtest::SaveGif(Path("one.gif"), lxtest::MakeFrames(1, 12, 12), 30);
        m_strWebp = lxtest::SaveAnimatedWebp(Path("anim.webp"), lxtest::MakeFrames(3, 12, 12), 30);
        m_strWebp1 = lxtest::SaveImage(Path("one.webp"), lxtest::MakeTestImage(12, 12, Qt::red), "WEBP");
        m_strSvg = lxtest::WriteFile(Path("v.svg"),
                                     "<svg xmlns='http://www.w3.org/2000/svg' width='24' height='12'><rect width='24' "
                                     "height='12' fill='#00f'/></svg>");
    }
    void init() {
        CLxWebImageCacheMgr::GetInstance().Clear();
        m_pDelegate->ClearScripts();
        m_pDelegate->ResetRecords();
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light);
    }

    void emptyUrlShowsTheLoadingPlaceholderOnly() {
        lxtest::LogCapture logs;
        LxWebImageWidget w;
        QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
        w.SetUrl(QString());
        QVERIFY(logs.hasExact(QStringLiteral("url is empty, return.")));
        QVERIFY(!w.GetDefaultPixmap().isNull());
        QVERIFY(!w.IsShowingFailImage());
        QCOMPARE(spy.count(), 0);
        QVERIFY(m_pDelegate->Downloads().empty());
    }

    void localPathIsShownWithoutDownloading() {
        // Even a path that reads like a URL.
        const QString tricky = lxtest::WriteFile(Path("http:/example.com/pic.png"), lxtest::ReadAll(m_strPng));
        for (const QString& path : {m_strPng, tricky}) {
            LxWebImageWidget w;
            QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
            w.SetUrl(path);
            QCOMPARE(Statuses(spy), QList<int>{int(Status::Loaded)});
            QCOMPARE(spy.first().at(0).toString(), path);
            QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Static);
            QCOMPARE(w.GetImageSize(), QSize(30, 20));
            QVERIFY(w.GetDefaultPixmap().isNull());
        }
        QVERIFY(m_pDelegate->Downloads().empty());
    }

    void downloadThenCacheHit() {
        lxtest::LogCapture logs;
        const QString url = QStringLiteral("http://img.test/a.png?s=1");
        LxWebImageWidget first;
        QSignalSpy spy(&first, &LxWebImageWidget::ImageLoadStatusSignal);
        first.SetUrl(url, Path("dl"));
        QCOMPARE(spy.count(), 0);
        QCOMPARE(m_pDelegate->DownloadCount(url), 1);
        QCOMPARE(m_pDelegate->Downloads().back().i32Pool, 1);
        QCOMPARE(m_pDelegate->CacheMode(url), 1);
        QCOMPARE(m_pDelegate->DownloadDir(url), Path("dl"));
        QVERIFY(!first.GetDefaultPixmap().isNull());  // loading placeholder meanwhile
        QVERIFY(
            logs.hasExact(QStringLiteral("strDefaultInitImagePath: :/LxUIKit/img/image_loading.svg, "
                                         "strDefaultFailImagePath: :/LxUIKit/img/image_failed.svg")));

        QCOMPARE(m_pDelegate->Succeed(url, m_strPng), 1);
        QCOMPARE(Statuses(spy), QList<int>{int(Status::Loaded)});
        QVERIFY(logs.hasExact(QStringLiteral("strUrl:%1,strFilePath:%2,enImageType:1").arg(url, m_strPng)));
        QVERIFY(first.GetDefaultPixmap().isNull());
        QCOMPARE(first.GetImageSize(), QSize(30, 20));
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(url), 1);

        // A second widget is filled from the cache at once, with no download.
        LxWebImageWidget second;
        QSignalSpy spy2(&second, &LxWebImageWidget::ImageLoadStatusSignal);
        second.SetUrl(url);
        QCOMPARE(Statuses(spy2), QList<int>{int(Status::Loaded)});
        QCOMPARE(m_pDelegate->DownloadCount(url), 1);
        QCOMPARE(second.GetSourcePixmap().cacheKey(), first.GetSourcePixmap().cacheKey());
    }

    void manyWaitingWidgetsDecodeOnce() {
        const QString url = QStringLiteral("http://img.test/shared.png");
        std::vector<std::unique_ptr<LxWebImageWidget>> widgets;
        for (int i = 0; i < 5; ++i) {
            widgets.push_back(std::make_unique<LxWebImageWidget>());
            widgets.back()->SetUrl(url);
        }
        lxtest::LogCapture logs;
        QCOMPARE(m_pDelegate->Succeed(url, m_strPng), 5);
        int inserts = 0;
        for (const QString& text : logs.texts())
            inserts +=
                text.startsWith(QStringLiteral("strUrl:") + url + QStringLiteral(",i32PixmapCacheCost:")) ? 1 : 0;
        QCOMPARE(inserts, 1);
        for (auto& w : widgets)
            QCOMPARE(w->GetSourcePixmap().cacheKey(), widgets.front()->GetSourcePixmap().cacheKey());
    }

    void typeDetection_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("type");
        QTest::newRow("png") << m_strPng << 1;
        QTest::newRow("jpeg named gif") << lxtest::WriteFile(Path("lie.gif"), lxtest::ReadAll(m_strJpeg)) << 1;
        QTest::newRow("gif named png") << lxtest::WriteFile(Path("lie2.png"), lxtest::ReadAll(m_strGif)) << 3;
        QTest::newRow("gif of one frame") << m_strGif1 << 3;
        QTest::newRow("animated webp") << m_strWebp << 3;
        QTest::newRow("webp of one frame") << m_strWebp1 << 1;
        QTest::newRow("svg") << m_strSvg << 2;
        QTest::newRow("svg named png") << lxtest::WriteFile(Path("vec.png"), lxtest::ReadAll(m_strSvg)) << 2;
        // Plug-ins look only at the first bytes; the renderer still recognises the document.
        QTest::newRow("svg after leading blank lines")
            << lxtest::WriteFile(Path("vec.dat"), QByteArray(200, '\n') + lxtest::ReadAll(m_strSvg)) << 2;
        QTest::newRow("unknown content, upper-case SVG name") << lxtest::WriteFile(Path("odd.SVG"), "??") << 2;
        QTest::newRow("unknown content, svg in the URL path") << lxtest::WriteFile(Path("odd2"), "??") << 1;
        QTest::newRow("unknown content") << lxtest::WriteFile(Path("odd.png"), "??") << 1;
        QTest::newRow("missing .svgz") << Path("none/x.svgz") << 2;
        QTest::newRow("missing png") << Path("none/x.png") << 1;
        // Only a document within the bounds reaches the renderer to decide.
        QTest::newRow("hostile svg without a name")
            << lxtest::WriteFile(Path("bomb.dat"), QByteArray(200, '\n') +
                                                       "<svg xmlns='http://www.w3.org/2000/svg'><image "
                                                       "href='file:///etc/passwd'/></svg>")
            << 1;
    }
    void typeDetection() {
        QFETCH(QString, path);
        QFETCH(int, type);
        QCOMPARE(int(LxWebImageWidget::GetImageType(path)), type);
    }

    void unknownFormatIsLogged() {
        lxtest::LogCapture logs;
        LxWebImageWidget::GetImageType(lxtest::WriteFile(Path("odd.bin"), "??"));
        QVERIFY(
            logs.hasExact(QStringLiteral("Cannot determine the image format or file does not exist. imageFormat = ")));
    }

    void downloadedContentPicksThePrivateWidget() {
        LxWebImageWidget w;
        w.SetUrl(QStringLiteral("http://img.test/1"));
        QPointer<CLxImageWidgetBase> waiting = w.GetPrivateImageWidget();  // a miss prepares a static one
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Static);
        m_pDelegate->Succeed(QStringLiteral("http://img.test/1"), m_strPng);
        QCOMPARE(w.GetPrivateImageWidget(), waiting.data());  // same kind: reused
        w.SetUrl(QStringLiteral("http://img.test/2"));
        m_pDelegate->Succeed(QStringLiteral("http://img.test/2"), m_strGif);
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Animated);
        QTRY_VERIFY(waiting.isNull());  // the old one goes later
        w.SetUrl(QStringLiteral("http://img.test/3"));
        m_pDelegate->Succeed(QStringLiteral("http://img.test/3"), m_strSvg);
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Svg);
        QCOMPARE(w.GetImageSize(), QSize(24, 12));
        QTRY_COMPARE(w.findChildren<CLxImageWidgetBase*>().size(), 1);
        // Cached animated picture: the animated kind is chosen before any download.
        w.SetUrl(QStringLiteral("http://img.test/2"));
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Animated);
        QCOMPARE(m_pDelegate->DownloadCount(QStringLiteral("http://img.test/2")), 1);
    }

    void svgUrlGoesStraightToTheSvgWidget() {
        LxWebImageWidget w;
        w.SetUrl(QStringLiteral("https://img.test/icons/logo.SVG?v=2"));
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Svg);
        m_pDelegate->Succeed(QStringLiteral("https://img.test/icons/logo.SVG?v=2"), m_strSvg);
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(QStringLiteral("https://img.test/icons/logo.SVG?v=2")),
                 3);
    }

    void failures_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("log");
        const QByteArray png = lxtest::ReadAll(m_strPng), gif = lxtest::ReadAll(m_strGif),
                         webp = lxtest::ReadAll(m_strWebp);
        const QString loadLog = QStringLiteral("Load image failed, show default fail image.");
        QTest::newRow("file missing") << QByteArray() << int(Status::DownloadFailed)
                                      << QStringLiteral("is not exist, so show default fail image.");
        QTest::newRow("empty file") << QByteArray("") << int(Status::LoadFailed) << loadLog;
        QTest::newRow("truncated png") << lxtest::Truncated(png, png.size() / 2) << int(Status::LoadFailed) << loadLog;
        QTest::newRow("corrupt png") << lxtest::Corrupted(png, 8) << int(Status::LoadFailed) << loadLog;
        QTest::newRow("truncated gif") << lxtest::Truncated(gif, gif.size() / 2) << int(Status::LoadFailed) << loadLog;
        QTest::newRow("truncated animated webp") << lxtest::Truncated(webp, -8) << int(Status::LoadFailed) << loadLog;
        QTest::newRow("html named svg") << QByteArray("<html><body>404</body></html>") << int(Status::LoadFailed)
                                        << loadLog;
        QTest::newRow("hostile svg") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg'>") +
                                            QByteArray("<g>").repeated(500) + "</svg>"
                                     << int(Status::LoadFailed) << loadLog;
    }
    void failures() {
        QFETCH(QByteArray, bytes);
        QFETCH(int, status);
        QFETCH(QString, log);
        const QString url = QStringLiteral("http://img.test/broken/%1.svg").arg(QTest::currentDataTag());
        QString file = Path(QStringLiteral("broken/%1").arg(QString::fromLatin1(QTest::currentDataTag())));
        if (bytes.isNull())
            file = Path("broken/never-written");
        else
            lxtest::WriteFile(file, bytes);
        lxtest::LogCapture logs;
        LxWebImageWidget w;
        // A picture was shown before: a failure must not leave it on screen.
        w.SetUrl(m_strPng);
        QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
        w.SetUrl(url);
        QCOMPARE(m_pDelegate->Succeed(url, file), 1);
        QCOMPARE(Statuses(spy), QList<int>{status});
        QVERIFY(logs.contains(log));
        QVERIFY(w.IsShowingFailImage());
        QVERIFY(!w.GetDefaultPixmap().isNull());
        QVERIFY(w.GetSourcePixmap().isNull());
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(url), 0);
    }

    void downloadFailureShowsTheFailPlaceholder() {
        LxWebImageWidget w;
        QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
        w.SetUrl(QStringLiteral("http://img.test/404"));
        QCOMPARE(m_pDelegate->Fail(QStringLiteral("http://img.test/404"), 203, 404), 1);
        QCOMPARE(Statuses(spy), QList<int>{int(Status::DownloadFailed)});
        QVERIFY(w.IsShowingFailImage());
    }

    void latestUrlWins() {
        lxtest::LogCapture logs;
        LxWebImageWidget w;
        QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
        const QString a = QStringLiteral("http://img.test/A"), b = QStringLiteral("http://img.test/B");
        w.SetUrl(a);
        w.SetUrl(b);
        // Out of order: B first, then the late A, then a late failure of A.
        QCOMPARE(m_pDelegate->Succeed(b, m_strPng2), 1);
        QCOMPARE(m_pDelegate->Succeed(a, m_strPng), 1);
        QCOMPARE(m_pDelegate->Fail(a, 5, 0), 0);
        QCOMPARE(Statuses(spy), QList<int>{int(Status::Loaded)});
        QCOMPARE(spy.first().at(0).toString(), b);
        QCOMPARE(w.GetImageSize(), QSize(50, 10));
        QVERIFY(logs.hasExact(QStringLiteral("m_strImageUrl:%1,strUrl:%2").arg(b, a)));
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(a), 0);  // the late answer decoded nothing

        // A local picture supersedes a pending download, and so does a cache hit.
        const QString c = QStringLiteral("http://img.test/C");
        w.SetUrl(c);
        w.SetUrl(m_strJpeg);
        QCOMPARE(m_pDelegate->Succeed(c, m_strPng), 1);
        QCOMPARE(w.GetImageSize(), QSize(30, 30));
        w.SetUrl(c);
        w.SetUrl(b);  // cached
        QCOMPARE(m_pDelegate->Fail(c, 5, 0), 1);
        QVERIFY(!w.IsShowingFailImage());
        QCOMPARE(w.GetImageSize(), QSize(50, 10));
    }

    void destroyedWidgetIsNeverAnswered() {
        const QString url = QStringLiteral("http://img.test/slow");
        auto* w = new LxWebImageWidget;
        LUIKitHttpDownloadDelegate* receiver = w;
        w->SetUrl(url);
        QVERIFY(m_pDelegate->IsWaiting(receiver));
        delete w;
        QCOMPARE(m_pDelegate->RemoveCount(receiver), 1);
        QVERIFY(!m_pDelegate->IsWaiting(receiver));
        QCOMPARE(m_pDelegate->Succeed(url, m_strPng), 0);

        // Destroyed from inside another widget's answer for the same URL.
        auto* first = new LxWebImageWidget;
        QPointer<LxWebImageWidget> second = new LxWebImageWidget;
        first->SetUrl(url);
        second->SetUrl(url);
        connect(first, &LxWebImageWidget::ImageLoadStatusSignal, this, [&second] { delete second.data(); });
        QCOMPARE(m_pDelegate->Succeed(url, m_strPng), 1);
        QVERIFY(second.isNull());
        delete first;
    }

    void placeholdersFollowTheTheme() {
        lxtest::LogCapture logs;
        LxWebImageWidget w;
        w.resize(96, 96);
        const QColor lightLoading(0xee, 0xf0, 0xf3), darkLoading(0x26, 0x2a, 0x31);
        const QColor lightFailed(0xfb, 0xea, 0xea), darkFailed(0x3a, 0x23, 0x26);
        auto sample = [&w] { return w.GetDefaultPixmap().toImage().pixelColor(48, 6); };
        w.SetUrl(QStringLiteral("http://img.test/pending"));
        QVERIFY(Near(sample(), lightLoading));
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        QVERIFY(Near(sample(), darkLoading));
        m_pDelegate->Fail(QStringLiteral("http://img.test/pending"), 1, 0);
        QVERIFY(Near(sample(), darkFailed));
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light);
        QVERIFY(Near(sample(), lightFailed));
        // Painted by the widget itself, stretched over it.
        QImage shot(w.size(), QImage::Format_ARGB32_Premultiplied);
        shot.fill(Qt::black);
        w.render(&shot, QPoint(), QRegion(), QWidget::DrawChildren);
        QVERIFY(Near(shot.pixelColor(48, 6), lightFailed));

        // No skin, no placeholder; a theme change then has nothing to do.
        w.SetDefaultImageSkin(QString(), QString());
        QVERIFY(w.GetDefaultPixmap().isNull());
        logs.clear();
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        QVERIFY(logs.hasExact(QStringLiteral("m_defaultPixmap is null, return.")));
        QVERIFY(w.GetDefaultPixmap().isNull());
    }

    void placeholderTakesTheDrawingOptions() {
        LxWebImageWidget w;
        w.resize(60, 60);
        w.EnableScaleToWidgetSize(true);
        w.SetRoundedCorner(LxCornerRadiusType::All, 20, 20);
        w.ShowDefaultFailImage();
        QImage shot(w.size(), QImage::Format_ARGB32_Premultiplied);
        shot.fill(Qt::black);
        w.render(&shot, QPoint(), QRegion(), QWidget::DrawChildren);
        QCOMPARE(shot.pixelColor(1, 1), QColor(Qt::black));  // rounded away
        QVERIFY(Near(shot.pixelColor(30, 4), QColor(0xfb, 0xea, 0xea)));
    }

    void movieSharedByWebWidgetsKeepsPlaying() {
        const QString url = QStringLiteral("http://img.test/anim.gif");
        std::vector<std::unique_ptr<LxWebImageWidget>> widgets;
        for (int i = 0; i < 5; ++i) {
            widgets.push_back(std::make_unique<LxWebImageWidget>());
            widgets.back()->SetUrl(url);
        }
        QCOMPARE(m_pDelegate->Succeed(url, m_strGif), 5);
        QPointer<QMovie> shared = CLxWebImageCacheMgr::GetInstance().GetMovie(url);
        QVERIFY(shared);
        auto movieOf = [](LxWebImageWidget* w) {
            return static_cast<CLxWebAnimatedImageWidget*>(w->GetPrivateImageWidget())->GetMovie();
        };
        QCOMPARE(movieOf(widgets[1].get()), shared.data());
        QCOMPARE(movieOf(widgets[3].get()), shared.data());
        // One cleared, one moved to another kind of picture, one destroyed.
        widgets[1]->Clear();
        widgets[2]->SetUrl(m_strPng);
        widgets[3].reset();
        QTest::qWait(10);  // let the replaced private widget go
        QVERIFY(shared);
        QCOMPARE(CLxWebAnimatedImageWidget::SharedViewerCount(shared), 1);  // widgets[4]
        QVERIFY(!shared->parent());
        QCOMPARE(shared->state(), QMovie::Running);
        // A late viewer still joins the same movie.
        LxWebImageWidget late;
        late.SetUrl(url);
        QCOMPARE(movieOf(&late), shared.data());
        QSignalSpy frames(shared.data(), &QMovie::frameChanged);
        QTRY_VERIFY(frames.count() >= 3);
        QVERIFY(!late.GetSourcePixmap().isNull());
    }

    void retriesCountAndStop() {
        auto* helper = LWebImageReloadHelper::instance();
        QCOMPARE(LWebImageReloadHelper::instancePtr(), helper);
        LxWebImageWidget w;
        helper->setAutoRetryTimes(&w, 2);
        QCOMPARE(w.property("____WebImageLoadFailCount").toUInt(), 0u);
        QCOMPARE(w.property("____WebImageLoadMaxFailTimes").toUInt(), 3u);
        QSignalSpy ok(helper, &LWebImageReloadHelper::webImageLoadSucess);
        QSignalSpy final(helper, &LWebImageReloadHelper::webImageLoadFinalFailed);
        const QString url = QStringLiteral("http://img.test/flaky");
        m_pDelegate->ScriptFailure(url, 99, 503);
        w.SetUrl(url, Path("dl"));
        QTRY_COMPARE(final.count(), 1);
        QCOMPARE(final.first().at(0).value<LxWebImageWidget*>(), &w);
        QCOMPARE(final.first().at(1).toUInt(), 3u);
        QCOMPARE(m_pDelegate->DownloadCount(url), 3);  // first try and two retries
        QCOMPARE(w.property("____WebImageLoadFailCount").toUInt(), 0u);
        QCOMPARE(ok.count(), 0);
        QTest::qWait(50);
        QCOMPARE(m_pDelegate->DownloadCount(url), 3);  // and no more

        // Success after one failure: attempts 2. A corrupt file (LoadFailed) retries too.
        final.clear();
        const QString url2 = QStringLiteral("http://img.test/recovering");
        w.SetUrl(url2);
        QCOMPARE(m_pDelegate->Succeed(url2, lxtest::WriteFile(Path("corrupt.png"), "not a png")), 1);
        QCOMPARE(w.property("____WebImageLoadFailCount").toUInt(), 1u);
        QCOMPARE(m_pDelegate->DownloadCount(url2), 1);  // the retry is queued, not run inside the signal
        QTRY_COMPARE(m_pDelegate->DownloadCount(url2), 2);
        QCOMPARE(m_pDelegate->Succeed(url2, m_strPng), 1);
        QCOMPARE(ok.count(), 1);
        QCOMPARE(ok.first().at(1).toUInt(), 2u);
        QCOMPARE(w.property("____WebImageLoadFailCount").toUInt(), 0u);
        QCOMPARE(final.count(), 0);
    }

    void retrySettingsTwiceConnectOnce() {
        auto* helper = LWebImageReloadHelper::instance();
        LxWebImageWidget w;
        helper->setAutoRetryTimes(&w, 0);
        w.setProperty("____WebImageLoadFailCount", 0u);
        helper->setAutoRetryTimes(&w, 0);
        QSignalSpy ok(helper, &LWebImageReloadHelper::webImageLoadSucess);
        QSignalSpy final(helper, &LWebImageReloadHelper::webImageLoadFinalFailed);
        w.SetUrl(m_strPng);
        QCOMPARE(ok.count(), 1);  // one connection, one emission
        QCOMPARE(ok.first().at(1).toUInt(), 1u);
        w.SetUrl(QStringLiteral("http://img.test/gone"));
        m_pDelegate->Fail(QStringLiteral("http://img.test/gone"), 1, 0);
        QCOMPARE(final.count(), 1);  // no retry with 0 retries
        QCOMPARE(final.first().at(1).toUInt(), 1u);

        // The count survives a second call.
        helper->setAutoRetryTimes(&w, 5);
        w.SetUrl(QStringLiteral("http://img.test/gone2"));
        m_pDelegate->Fail(QStringLiteral("http://img.test/gone2"), 1, 0);
        QCOMPARE(w.property("____WebImageLoadFailCount").toUInt(), 1u);
        helper->setAutoRetryTimes(&w, 5);
        QCOMPARE(w.property("____WebImageLoadFailCount").toUInt(), 1u);
        QCOMPARE(w.property("____WebImageLoadMaxFailTimes").toUInt(), 6u);
    }

    void retryForADestroyedWidgetDoesNothing() {
        auto* w = new LxWebImageWidget;
        LWebImageReloadHelper::instance()->setAutoRetryTimes(w, 3);
        w->SetUrl(QStringLiteral("http://img.test/x"));
        m_pDelegate->Fail(QStringLiteral("http://img.test/x"), 1, 0);  // queues a retry
        delete w;
        QTest::qWait(20);
        QCOMPARE(m_pDelegate->DownloadCount(QStringLiteral("http://img.test/x")), 1);
    }

    void copyWithoutPictureAsserts() {
        lxtest::AssertRecorder asserts;
        LxWebImageWidget w;
        w.Copy();
        QVERIFY(asserts.has(QStringLiteral("LxPlatform/LxUIKit/WebImage/LxWebImageWidget"),
                            QStringLiteral("m_pImageWidget")));
    }
};

QTEST_MAIN(tst_WebImageWidget)
#include "tst_WebImageWidget.moc"
