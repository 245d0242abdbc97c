// The slideshow: insert positions and their log line, native slides from pixmaps, still and
// animated files, web slides hidden until loaded and dropped from view when they finally fail,
// signal indices taken at signal time, and link clicks.

#include <LxUIKit/LSlideshow.h>
#include <LxUIKit/LUIKitWebDelegate.h>

#include <QMovie>
#include <QTemporaryDir>
#include <QtTest>

#include "ImageFixtures.h"
#include "LxTestSupport.h"
#include "ScriptedDownloadDelegate.h"

class TestSlideshow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    void insertPositionsAreValidated_data() {
        QTest::addColumn<int>("kind");  // 0 pixmap, 1 file, 2 web
        QTest::addColumn<QString>("function");
        QTest::newRow("pixmap") << 0 << "insertPixmap";
        QTest::newRow("file") << 1 << "insertNativeImageOrGif";
        QTest::newRow("web") << 2 << "insertWebImageOrGif";
    }

    void insertPositionsAreValidated() {
        QFETCH(int, kind);
        QFETCH(QString, function);
        lxtest::ScriptedDownloadDelegate::Install();
        QTemporaryDir dir;
        const QString file =
            lxtest::SaveImage(dir.filePath(QStringLiteral("a.png")), lxtest::MakeTestImage(8, 6, Qt::red), "PNG");
        LSlideshow show;
        QPixmap pix(10, 10);
        pix.fill(Qt::blue);
        show.addPixmap(pix, QString());
        show.addPixmap(pix, QString());
        auto insert = [&](int index) {
            switch (kind) {
            case 0: return show.insertPixmap(pix, QString(), index);
            case 1: return show.insertNativeImageOrGif(file, QString(), index);
            default:
                return show.insertWebImageOrGif(QStringLiteral("https://cdn.example.test/b.png"), QString(), index, 0);
            }
        };
        lxtest::LogCapture log;
        QCOMPARE(insert(3), -1);
        QCOMPARE(insert(-2), -1);
        QCOMPARE(show.count(), 2);
        QVERIFY(log.hasExact(QStringLiteral("插入位置3不合法,最大插入位置为2")));
        QVERIFY(log.hasExact(QStringLiteral("插入位置-2不合法,最大插入位置为2")));
        bool byFunction = false;
        for (const auto& rec : log.records())
            byFunction |= QString::fromStdString(rec.strFunction) == function &&
                          QString::fromStdString(rec.strModule) == "LxUIKit";
        QVERIFY(byFunction);
        QCOMPARE(insert(2), 2);  // the count itself appends
        QCOMPARE(insert(-1), 3);
        QCOMPARE(show.count(), 4);
    }

    void nativeSlidesFromFiles() {
        QTemporaryDir dir;
        const QString still =
            lxtest::SaveImage(dir.filePath(QStringLiteral("s.png")), lxtest::MakeTestImage(20, 10, Qt::red), "PNG");
        const QString gif =
            lxtest::CopyFixture(QStringLiteral("frames2_8x8_100ms.gif"), dir.filePath(QStringLiteral("a.gif")));
        const QString upper =
            lxtest::CopyFixture(QStringLiteral("frames2_8x8_100ms.gif"), dir.filePath(QStringLiteral("b.GIF")));
        LSlideshow show;
        QCOMPARE(show.addNativeImageOrGif(still, QString()), 0);
        QCOMPARE(show.addNativeImageOrGif(gif, QString()), 1);
        QCOMPARE(show.addNativeImageOrGif(upper, QString()), 2);
        auto slide = [&](int i) { return qobject_cast<LSlidershowNativeImage*>(show.widget(i)); };
        QVERIFY(!slide(0)->HasValidMovie());
        QCOMPARE(slide(0)->pixmap()->size(), QSize(20, 10));
        QVERIFY(slide(1)->HasValidMovie());
        QCOMPARE(slide(1)->movie()->state(), QMovie::Running);
        QVERIFY(!slide(2)->HasValidMovie());  // the suffix test is case-sensitive: read as a still picture
        QVERIFY(slide(2)->pixmap() && !slide(2)->pixmap()->isNull());

        lxtest::LogCapture log;
        const QString missing = dir.filePath(QStringLiteral("missing.webp"));
        QCOMPARE(show.addNativeImageOrGif(missing, QString()), 3);  // inserted, empty
        QVERIFY(log.hasExact(QStringLiteral("文件%1读取失败，请检查文件名").arg(missing)));
        QVERIFY(!slide(3)->HasValidMovie());
        QCOMPARE(show.count(), 4);
    }

    // Web slides stay hidden until loaded and report the index they have when the signal goes out
    // (native slides inserted before them shift it): one that loads is shown; one that fails is
    // retried once, then dropped from view with a final signal and never asked for again.
    void webSlidesShowWhenLoadedOrRetryThenFail() {
        auto* dl = lxtest::ScriptedDownloadDelegate::Install();
        QTemporaryDir dir;
        const QString file =
            lxtest::SaveImage(dir.filePath(QStringLiteral("w.png")), lxtest::MakeTestImage(30, 15, Qt::green), "PNG");
        LSlideshow show;
        show.setAutoPlayInterval(0);
        const QString url = QStringLiteral("https://cdn.example.test/banner-missing.png");
        const QString good = QStringLiteral("https://cdn.example.test/banner.png");
        QSignalSpy single(&show, &LSlideshow::webImageLoadSingleFailed);
        QSignalSpy final(&show, &LSlideshow::webImageLoadFinalFailed);
        QSignalSpy ok(&show, &LSlideshow::webImageLoadSucess);
        QCOMPARE(show.addWebImageOrGif(url, QString(), 1), 0);
        QCOMPARE(show.addWebImageOrGif(good, QStringLiteral("https://news.example.test/a"), 2), 1);
        QVERIFY(!show.isContentWidgetVisible(0) && !show.isContentWidgetVisible(1));
        QCOMPARE(dl->DownloadCount(url), 1);
        QPixmap pix(4, 4);
        show.insertPixmap(pix, QString(), 0);
        dl->Succeed(good, file);
        QCOMPARE(ok.count(), 1);
        QCOMPARE(ok.at(0).at(1).toInt(), 2);
        QVERIFY(show.isContentWidgetVisible(2));
        dl->Fail(url, 404, 0);
        QCOMPARE(single.count(), 1);
        QCOMPARE(single.at(0).at(1).toInt(), 1);
        QCOMPARE(final.count(), 0);
        QTRY_COMPARE(dl->DownloadCount(url), 2);  // the reload helper asks again
        dl->Fail(url, 404, 0);
        QCOMPARE(single.count(), 2);
        QCOMPARE(final.count(), 1);
        QCOMPARE(final.at(0).at(0).toString(), url);
        QCOMPARE(final.at(0).at(1).toInt(), 1);
        QCOMPARE(final.at(0).at(2).toInt(), 2);
        QVERIFY(!show.isContentWidgetVisible(1));
        QCOMPARE(show.visibleCount(), 2);
        QTest::qWait(20);
        QCOMPARE(dl->DownloadCount(url), 2);  // no retry after the final failure
    }

    void clicksFollowTheLink() {
        QStringList opened;
        lxuikit_web::setShowWebViewDelegate([&](const QString& u) { opened.append(u); });
        LSlideshow show;
        show.setAutoPlayInterval(0);
        QPixmap pix(40, 20);
        pix.fill(Qt::gray);
        show.addPixmap(pix, QStringLiteral("https://promo.example.test/spring"));
        show.addPixmap(pix, QString());
        show.resize(200, 100);
        show.show();
        QVERIFY(QTest::qWaitForWindowExposed(&show));
        QTest::mouseClick(show.widget(0), Qt::LeftButton, {}, QPoint(10, 10));
        QCOMPARE(opened, QStringList{QStringLiteral("https://promo.example.test/spring")});
        QTest::mouseClick(show.widget(0), Qt::RightButton, {}, QPoint(10, 10));
        QCOMPARE(opened.size(), 1);
        // Without a link the slide lets presses through to the frame: a drag across it pages back.
        show.setCurrentIndex(1);
        QTest::mousePress(show.widget(1), Qt::LeftButton, {}, QPoint(150, 50));
        QTest::mouseRelease(show.widget(1), Qt::LeftButton, {}, QPoint(20, 50));
        QCOMPARE(show.currentIndex(), 0);
    }
};

QTEST_MAIN(TestSlideshow)
#include "tst_Slideshow.moc"
