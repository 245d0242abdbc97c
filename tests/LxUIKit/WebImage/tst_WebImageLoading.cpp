// Loading: LxWebImageWidget and LWebImageReloadHelper against a scripted in-process downloader.
// The road of one URL to its status signal: cache, download, type detection, supersession,
// failures, placeholders, retries and movies shared between viewers; and the download facade and
// the memory image cache on their own. (How a picture is drawn is tst_WebImageDrawing's.)

#include "ImageFixtures.h"
#include "LxTestSupport.h"
#include "ScriptedDownloadDelegate.h"

#include <LxCore/StrConv.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/WebImage/LWebImageReloadHelper.h>
#include <LxUIKit/WebImage/LxWebAnimatedImageWidget_p.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QBitmap>
#include <QMovie>
#include <QPointer>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

using Status = LxImageLoadStatus;
const QList<int> kLoaded{int(Status::Loaded)};

QList<int> Statuses(const QSignalSpy& spy) {
    QList<int> out;
    for (const QList<QVariant>& args : spy)
        out << int(args.at(1).value<LxImageLoadStatus>());
    return out;
}

bool Near(const QColor& a, const QColor& b) { return lxtest::Near(a, b, 12); }

void SetTheme(lx_ui_theme::Manager::Theme theme) { lx_ui_theme::Manager::instance()->setTheme(theme); }

const QColor kLightFailed(0xfb, 0xea, 0xea);

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

class tst_WebImageLoading : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    lxtest::ScriptedDownloadDelegate* m_pDelegate = nullptr;
    QString m_strPng, m_strPng2, m_strGif, m_strSvg, m_strJpeg;
    QString Path(const QString& name) const { return m_dir.filePath(name); }
    QString Write(const QString& name, const QByteArray& bytes) const { return lxtest::WriteFile(Path(name), bytes); }
    QString Copy(const QString& from, const QString& name) const { return Write(name, lxtest::ReadAll(from)); }

private slots:
    void initTestCase() {
        lxtest::LogCapture logs;  // the cache's first use logs its bound
        CLxWebImageCacheMgr::GetInstance();
        QVERIFY(logs.hasExact(QStringLiteral("m_ki32MaxCacheCost:1048576000")));
        qRegisterMetaType<LxWebImageWidget*>();
        m_strPng = lxtest::SaveImage(Path("a.png"), lxtest::MakeTestImage(30, 20, Qt::red), "PNG");
        m_strPng2 = lxtest::SaveImage(Path("b.png"), lxtest::MakeTestImage(50, 10, Qt::green), "PNG");
        m_strJpeg = lxtest::SaveImage(Path("c.jpg"), lxtest::MakeTestImage(30, 30, Qt::blue), "JPEG");
        m_strGif = lxtest::CopyFixture(QStringLiteral("frames3_12x12_30ms.gif"), Path("anim.gif"));
        m_strSvg = Write("v.svg",
                         "<svg xmlns='http://www.w3.org/2000/svg' width='24' height='12'><rect width='24' "
                         "height='12' fill='#00f'/></svg>");
    }
    void init() { m_pDelegate = lxtest::ScriptedDownloadDelegate::Install(); }
    void cleanup() {
        QTest::qWait(0);  // queued retries and deferred deletions run while the delegate is there
        ILxUIKitHttpDownloadMgr::setDelegate(nullptr);
        m_pDelegate = nullptr;
        CLxWebImageCacheMgr::GetInstance().Clear();
        SetTheme(lx_ui_theme::Manager::Light);
    }

    void emptyUrlAndLocalFiles() {
        lxtest::LogCapture logs;
        LxWebImageWidget w;
        QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
        w.SetUrl(QString());
        QVERIFY(logs.hasExact(QStringLiteral("url is empty, return.")));
        QVERIFY(!w.GetDefaultPixmap().isNull() && !w.IsShowingFailImage());  // the loading placeholder
        // A local file is shown at once, even one whose path reads like a URL.
        for (const QString& path : {m_strPng, Copy(m_strPng, "http:/example.com/pic.png")}) {
            w.SetUrl(path);
            QCOMPARE(Statuses(spy), kLoaded);
            QCOMPARE(spy.takeFirst().at(0).toString(), path);
            QCOMPARE(w.GetImageSize(), QSize(30, 20));
            QVERIFY(w.GetDefaultPixmap().isNull());
        }
        QVERIFY(m_pDelegate->Downloads().empty());
    }

    void downloadShowsTheFreshFileAndFillsTheCache() {
        const QString url = QStringLiteral("http://img.test/a.png?s=1");
        LxWebImageWidget first, second;
        QSignalSpy spy(&first, &LxWebImageWidget::ImageLoadStatusSignal);
        first.SetUrl(url, Path("dl"));
        second.SetUrl(url);
        QCOMPARE(m_pDelegate->Downloads().front().i32Pool, 1);
        QCOMPARE(m_pDelegate->CacheMode(url), 1);
        QCOMPARE(m_pDelegate->DownloadDir(url), Path("dl"));

        lxtest::LogCapture logs;
        QCOMPARE(m_pDelegate->Succeed(url, m_strPng), 2);
        QCOMPARE(Statuses(spy), kLoaded);
        QVERIFY(logs.hasExact(QStringLiteral("strUrl:%1,strFilePath:%2,enImageType:1").arg(url, m_strPng)));
        QVERIFY(first.GetDefaultPixmap().isNull());
        QCOMPARE(first.GetImageSize(), QSize(30, 20));
        QCOMPARE(second.GetImageSize(), QSize(30, 20));
        // One download heard by two widgets is decoded once.
        QCOMPARE(second.GetSourcePixmap().cacheKey(), first.GetSourcePixmap().cacheKey());
        QCOMPARE(logs.texts().filter(QStringLiteral("i32PixmapCacheCost")).size(), 1);

        // A later widget is filled from the cache at once, sharing the decoded pixmap.
        LxWebImageWidget third;
        QSignalSpy spy3(&third, &LxWebImageWidget::ImageLoadStatusSignal);
        third.SetUrl(url);
        QCOMPARE(Statuses(spy3), kLoaded);
        QCOMPARE(m_pDelegate->DownloadCount(url), 2);
        QCOMPARE(third.GetSourcePixmap().cacheKey(), second.GetSourcePixmap().cacheKey());
    }

    // The picture behind a URL changed: what the cache holds from before must not stand in for the
    // new download, whatever its kind; the log names the kind of the new file.
    void freshDownloadWinsOverAnOlderCacheEntry_data() {
        QTest::addColumn<int>("older");  // what the cache holds: 0 static (a.png), 1 animated, 2 SVG
        QTest::addColumn<QString>("fresh");
        QTest::addColumn<int>("type");
        QTest::addColumn<QSize>("size");
        QTest::newRow("static over static") << 0 << m_strPng2 << 1 << QSize(50, 10);
        QTest::newRow("static over animated") << 1 << m_strPng2 << 1 << QSize(50, 10);
        QTest::newRow("animated over static") << 0 << m_strGif << 3 << QSize(12, 12);
        QTest::newRow("static over svg") << 2 << m_strJpeg << 1 << QSize(30, 30);
        QTest::newRow("svg over static") << 0 << m_strSvg << 2 << QSize(24, 12);
    }
    void freshDownloadWinsOverAnOlderCacheEntry() {
        QFETCH(int, older);
        QFETCH(QString, fresh);
        QFETCH(int, type);
        QFETCH(QSize, size);
        const QString url = QStringLiteral("http://img.test/changing");
        auto& cache = CLxWebImageCacheMgr::GetInstance();
        if (older == 0) {
            cache.InsertPixmap(url, QPixmap(m_strPng));
        } else if (older == 1) {
            QMovie movie(m_strGif);
            cache.InsertMovie(url, movie);
        } else {
            cache.InsertSvgFilePath(url, m_strSvg);
        }
        LxWebImageWidget w;
        QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
        w.SetUrl(url);  // shown from the cache at once; the host downloads the new picture anyway
        spy.clear();
        lxtest::LogCapture logs;
        w.OnDownloadSuccess(url, fresh, QByteArray());
        QCOMPARE(Statuses(spy), kLoaded);
        QVERIFY(logs.hasExact(QStringLiteral("strUrl:%1,strFilePath:%2,enImageType:%3").arg(url, fresh).arg(type)));
        QCOMPARE(int(w.GetPrivateImageType()), type);
        QCOMPARE(w.GetImageSize(), size);
        if (older == 0 && type == 1) {
            // A new file at the path of the one decoded before is decoded again.
            const QString reused = Path("reused.png");
            QFile::remove(reused);
            QVERIFY(QFile::copy(m_strPng, reused));
            w.OnDownloadSuccess(url, reused, QByteArray());
            QCOMPARE(w.GetImageSize(), QSize(30, 20));
            QVERIFY(QFile::remove(reused) && QFile::copy(fresh, reused));
            w.OnDownloadSuccess(url, reused, QByteArray());
            QCOMPARE(w.GetImageSize(), size);
            // Same kind: the entry is replaced, so a later widget of the URL gets the new picture.
            LxWebImageWidget later;
            later.SetUrl(url);
            QCOMPARE(later.GetImageSize(), size);
        }
    }

    void typeDetection_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("type");  // 1 static, 2 SVG, 3 animated
        auto row = [](const char* tag, const QString& path, int type) { QTest::newRow(tag) << path << type; };
        row("jpeg named gif", Copy(m_strJpeg, "lie.gif"), 1);
        row("gif named png", Copy(m_strGif, "lie2.png"), 3);
        row("gif of one frame", lxtest::CopyFixture(QStringLiteral("frames1_12x12_100ms.gif"), Path("one.gif")), 3);
        row("animated webp", lxtest::CopyFixture(QStringLiteral("frames3_12x12_100ms.webp"), Path("anim.webp")), 3);
        row("webp of one frame", lxtest::SaveImage(Path("one.webp"), lxtest::MakeTestImage(12, 12, Qt::red), "WEBP"),
            1);
        row("svg named png", Copy(m_strSvg, "vec.png"), 2);
        // Plug-ins look only at the first bytes; the renderer still recognises the document.
        row("svg after leading blank lines", Write("vec.dat", QByteArray(200, '\n') + lxtest::ReadAll(m_strSvg)), 2);
        row("unknown content, upper-case SVG name", Write("odd.SVG", "??"), 2);
        row("unknown content, svg only in a folder name", Write("p.svg/odd", "??"), 1);
        row("unknown content", Write("odd.png", "??"), 1);
        row("missing .svgz", Path("none/x.svgz"), 2);
        row("missing png", Path("none/x.png"), 1);
        // Only a document within the bounds reaches the renderer to decide.
        row("hostile svg without a name",
            Write("bomb.dat",
                  QByteArray(200, '\n') + "<svg xmlns='http://www.w3.org/2000/svg'><image href='file:///a'/></svg>"),
            1);
    }
    void typeDetection() {
        QFETCH(QString, path);
        QFETCH(int, type);
        QCOMPARE(int(LxWebImageWidget::GetImageType(path)), type);
    }

    void privateWidgetFollowsTheContent() {
        LxWebImageWidget w;
        // Drawing options set before any picture reach every picture widget made later.
        w.SetScaleFactor(2);
        w.SetRoundedCorner(LxCornerRadiusType::Top, 3, 4);
        auto optionsArrived = [&w] {
            const LxImageDrawOptions& o = w.GetPrivateImageWidget()->GetDrawOptions();
            return o.dScale == 2 && o.enCornerType == LxCornerRadiusType::Top && o.dRadiusY == 4;
        };
        w.SetUrl(QStringLiteral("http://img.test/1"));
        QVERIFY(optionsArrived());
        QPointer<CLxImageWidgetBase> waiting = w.GetPrivateImageWidget();  // a miss prepares a static one
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Static);
        m_pDelegate->Succeed(QStringLiteral("http://img.test/1"), m_strPng);
        w.SetUrl(QStringLiteral("http://img.test/2"));
        m_pDelegate->Succeed(QStringLiteral("http://img.test/2"), m_strGif);
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Animated);
        QVERIFY(optionsArrived());
        QTRY_VERIFY(waiting.isNull());  // the old one goes later
        // An SVG name in the URL picks the SVG widget before any download.
        const QString svgUrl = QStringLiteral("https://img.test/icons/logo.SVG?v=2");
        w.SetUrl(svgUrl);
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Svg);
        m_pDelegate->Succeed(svgUrl, m_strSvg);
        QCOMPARE(w.GetImageSize(), QSize(24, 12));
        QTRY_COMPARE(w.findChildren<CLxImageWidgetBase*>().size(), 1);
        // Cached animated picture: the animated kind is chosen before any download.
        w.SetUrl(QStringLiteral("http://img.test/2"));
        QCOMPARE(w.GetPrivateImageType(), LxWebImageWidget::ImageType_Animated);
        QCOMPARE(m_pDelegate->DownloadCount(QStringLiteral("http://img.test/2")), 1);
    }

    void failures_data() {
        QTest::addColumn<QByteArray>("bytes");  // null: no file at the answered path
        QTest::addColumn<int>("status");
        const QByteArray png = lxtest::ReadAll(m_strPng), gif = lxtest::ReadAll(m_strGif);
        const int failed = int(Status::LoadFailed);
        QTest::newRow("download failed") << QByteArray() << int(Status::DownloadFailed);
        QTest::newRow("file missing") << QByteArray() << int(Status::DownloadFailed);
        QTest::newRow("truncated png") << lxtest::Truncated(png, png.size() / 2) << failed;
        QTest::newRow("truncated gif") << lxtest::Truncated(gif, gif.size() / 2) << failed;
        QTest::newRow("html named svg") << QByteArray("<html><body>404</body></html>") << failed;
        QTest::newRow("hostile svg") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg'>") +
                                            QByteArray("<g>").repeated(500) + "</svg>"
                                     << failed;
    }
    void failures() {
        QFETCH(QByteArray, bytes);
        QFETCH(int, status);
        const QString tag = QString::fromLatin1(QTest::currentDataTag());
        const QString url = QStringLiteral("http://img.test/broken/%1.svg").arg(tag);
        LxWebImageWidget w;
        w.SetUrl(m_strPng);  // a picture shown before must not stay on screen
        QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
        w.SetUrl(url);
        if (tag == QLatin1String("download failed"))
            QCOMPARE(m_pDelegate->Fail(url, 203, 404), 1);
        else
            QCOMPARE(m_pDelegate->Succeed(url, bytes.isNull() ? Path("never-written") : Write("broken/" + tag, bytes)),
                     1);
        QCOMPARE(Statuses(spy), QList<int>{status});
        QVERIFY(w.IsShowingFailImage() && !w.GetDefaultPixmap().isNull());
        QVERIFY(w.GetSourcePixmap().isNull());
        QCOMPARE(CLxWebImageCacheMgr::GetInstance().GetCacheType(url), 0);
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
        QCOMPARE(Statuses(spy), kLoaded);
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

    void destroyedWidgetIsNeverAnsweredNorRetried() {
        const QString url = QStringLiteral("http://img.test/slow");
        auto* w = new LxWebImageWidget;
        LUIKitHttpDownloadDelegate* receiver = w;
        w->SetUrl(url);
        delete w;
        QCOMPARE(m_pDelegate->RemoveCount(receiver), 1);
        QCOMPARE(m_pDelegate->Succeed(url, m_strPng), 0);

        // Destroyed from inside another widget's answer for the same URL.
        LxWebImageWidget first;
        QPointer<LxWebImageWidget> second = new LxWebImageWidget;
        first.SetUrl(url);
        second->SetUrl(url);
        connect(&first, &LxWebImageWidget::ImageLoadStatusSignal, this, [&second] { delete second.data(); });
        QCOMPARE(m_pDelegate->Succeed(url, m_strPng), 1);
        QVERIFY(second.isNull());

        // A retry queued for a widget destroyed meanwhile does nothing.
        auto* doomed = new LxWebImageWidget;
        LWebImageReloadHelper::instance()->setAutoRetryTimes(doomed, 3);
        doomed->SetUrl(QStringLiteral("http://img.test/x"));
        m_pDelegate->Fail(QStringLiteral("http://img.test/x"), 1, 0);
        delete doomed;
        QTest::qWait(20);
        QCOMPARE(m_pDelegate->DownloadCount(QStringLiteral("http://img.test/x")), 1);
    }

    void placeholdersFollowTheTheme() {
        LxWebImageWidget w;
        w.resize(96, 96);
        auto sample = [&w] { return w.GetDefaultPixmap().toImage().pixelColor(48, 6); };
        w.SetUrl(QStringLiteral("http://img.test/pending"));
        QVERIFY(Near(sample(), QColor(0xee, 0xf0, 0xf3)));
        SetTheme(lx_ui_theme::Manager::Dark);
        m_pDelegate->Fail(QStringLiteral("http://img.test/pending"), 1, 0);
        QVERIFY(Near(sample(), QColor(0x3a, 0x23, 0x26)));
        SetTheme(lx_ui_theme::Manager::Light);
        QVERIFY(Near(sample(), kLightFailed));
        // Painted by the widget itself, with its drawing options.
        w.EnableScaleToWidgetSize(true);
        w.SetRoundedCorner(LxCornerRadiusType::All, 20, 20);
        const QImage shot = lxtest::Render(&w, Qt::black);
        QCOMPARE(shot.pixelColor(1, 1), QColor(Qt::black));  // rounded away
        QVERIFY(Near(shot.pixelColor(48, 6), kLightFailed));

        // No skin, no placeholder, and a theme change brings none back.
        w.SetDefaultImageSkin(QString(), QString());
        QVERIFY(w.GetDefaultPixmap().isNull());
        SetTheme(lx_ui_theme::Manager::Dark);
        QVERIFY(w.GetDefaultPixmap().isNull());
    }

    void sharedMovieOutlivesEachViewer() {
        const QString url = QStringLiteral("http://img.test/anim.gif");
        std::vector<std::unique_ptr<LxWebImageWidget>> widgets;
        for (int i = 0; i < 2; ++i) {
            widgets.push_back(std::make_unique<LxWebImageWidget>());
            widgets.back()->SetUrl(url);
        }
        // The first to hear of the download plays its own movie; the second plays the cache's one
        // made from the same file instead of decoding it again.
        QCOMPARE(m_pDelegate->Succeed(url, m_strGif), 2);
        for (int i = 2; i < 5; ++i) {
            widgets.push_back(std::make_unique<LxWebImageWidget>());
            widgets.back()->SetUrl(url);  // from the cache
        }
        QCOMPARE(m_pDelegate->DownloadCount(url), 2);  // the later three asked nobody
        QPointer<QMovie> shared = CLxWebImageCacheMgr::GetInstance().GetMovie(url);
        QCOMPARE(CLxWebAnimatedImageWidget::SharedViewerCount(shared), 4);
        // One cleared, one moved to another kind of picture, one destroyed: the movie stays, without
        // a parent, running and advancing for the last viewer.
        widgets[1]->Clear();
        widgets[2]->SetUrl(m_strPng);
        widgets[3].reset();
        QTest::qWait(10);  // let the replaced private widget go
        QVERIFY(shared && !shared->parent());
        QCOMPARE(CLxWebAnimatedImageWidget::SharedViewerCount(shared), 1);
        QCOMPARE(shared->state(), QMovie::Running);
        QSignalSpy frames(shared.data(), &QMovie::frameChanged);
        QTRY_VERIFY(frames.count() >= 3);
        QVERIFY(!widgets[4]->GetSourcePixmap().isNull());
        // The last viewer gone, the movie rests; the next viewer wakes it.
        widgets[4]->Clear();
        QCOMPARE(shared->state(), QMovie::Paused);
        widgets[1]->SetUrl(url);
        QCOMPARE(shared->state(), QMovie::Running);
    }

    void retries_data() {
        QTest::addColumn<uint>("times");
        QTest::addColumn<QStringList>("answers");  // one per download, in order
        QTest::addColumn<QString>("report");       // the helper's one signal, with the attempts
        QTest::newRow("two retries, all failing") << 2u << QStringList{"fail", "fail", "fail"} << "final 3";
        QTest::newRow("no retry") << 0u << QStringList{"fail"} << "final 1";
        QTest::newRow("a corrupt file, then the picture") << 2u << QStringList{"corrupt", "png"} << "success 2";
        QTest::newRow("at once") << 0u << QStringList{"png"} << "success 1";
    }
    void retries() {
        QFETCH(uint, times);
        QFETCH(QStringList, answers);
        QFETCH(QString, report);
        auto* helper = LWebImageReloadHelper::instance();
        LxWebImageWidget w;
        helper->setAutoRetryTimes(&w, times);
        QCOMPARE(w.property(LWebImageReloadHelper::kMaxFailTimesProperty).toUInt(), times + 1);
        QSignalSpy finalSpy(helper, &LWebImageReloadHelper::webImageLoadFinalFailed);
        QSignalSpy okSpy(helper, &LWebImageReloadHelper::webImageLoadSucess);
        const QString url = QStringLiteral("http://img.test/retry/%1").arg(QTest::currentDataTag());
        const QString corrupt = Write("corrupt.png", "not a png");
        w.SetUrl(url);
        for (int i = 0; i < answers.size(); ++i) {
            QTRY_COMPARE(m_pDelegate->DownloadCount(url), i + 1);
            if (answers[i] == QLatin1String("fail"))
                QCOMPARE(m_pDelegate->Fail(url, 99, 503), 1);
            else
                QCOMPARE(m_pDelegate->Succeed(url, answers[i] == QLatin1String("png") ? m_strPng : corrupt), 1);
            QCOMPARE(m_pDelegate->DownloadCount(url), i + 1);  // a retry is queued, never run inside the signal
            helper->setAutoRetryTimes(&w, times);              // again, as hosts do: keeps the count, connects once
        }
        QTest::qWait(50);
        QCOMPARE(m_pDelegate->DownloadCount(url), answers.size());  // and no more
        QStringList reports;
        for (const QSignalSpy* spy : {&finalSpy, &okSpy})
            for (const QList<QVariant>& args : *spy)
                reports << QStringLiteral("%1 %2").arg(spy == &okSpy ? "success" : "final").arg(args.at(1).toUInt());
        QCOMPARE(reports, QStringList{report});
        QCOMPARE((finalSpy.isEmpty() ? okSpy : finalSpy).first().at(0).value<LxWebImageWidget*>(), &w);
        QCOMPARE(w.property(LWebImageReloadHelper::kFailCountProperty).toUInt(), 0u);  // reset for the next load
    }

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
        ILxUIKitHttpDownloadMgr::setDelegate(nullptr);
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
        // A wrapped, negative cost is stored and counted as it is: 20000 * 20000 * 32 wraps to
        // -84901888, divided by 8 toward zero.
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

QTEST_MAIN(tst_WebImageLoading)
#include "tst_WebImageLoading.moc"
