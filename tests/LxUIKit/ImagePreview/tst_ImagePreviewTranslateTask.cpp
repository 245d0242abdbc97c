// The translation task against a real service stand-in on 127.0.0.1: upload encoding bounds, every
// rung of the answer checks, the per-language cache with its expiry, stale and cancelled requests,
// and the composed picture.

#include <LxCore/Environment.h>
#include <LxCore/TimeDate.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask_p.h>

#include <QBuffer>
#include <QNetworkProxy>
#include <QtTest>

#include "ImageFixtures.h"
#include "LocalHttpServer.h"
#include "LxTestSupport.h"

namespace {

using lxtest::LocalHttpServer;

// Answers /image/translate with the body and status set by the test; with echoLanguage the answer
// names the language the request asked for.
struct Service : LocalHttpServer {
    QByteArray body;
    int i32Status = 200;
    int i32DelayMs = 0;
    LocalHttpServer::Request last;

    Service() {
        QVERIFY(Start());
        SetHandler([this](const Request& r) -> Reply {
            if (r.path != QLatin1String("/image/translate"))
                return {};
            last = r;
            return {i32Status, body, i32DelayMs, "application/json"};
        });
        const QUrl url(Url(QString()));
        CLxImagePreviewTranslateTask::SetServiceAddress(false, QStringLiteral("http"), url.host(), url.port());
    }
};

QByteArray Answer(const char* language, const char* records) {
    return QByteArray("{\"code\":0,\"data\":{\"target_language\":\"") + language + "\",\"image_records\":" + records +
           "}}";
}

const char* const kOneRecord = "[{\"x\":10,\"y\":10,\"width\":80,\"height\":30,\"target_text\":\"Hi\"}]";

struct Calls {
    int count = 0;
    unsigned long requestId = 0;
    unsigned int index = 0;
    ImageTranslateResult result;
};

CLxImagePreviewTranslateTask::Callback Into(Calls& calls) {
    return CLxImagePreviewTranslateTask::Callback(
        [&calls](unsigned long id, unsigned int index, ImageTranslateResult r) {
            ++calls.count;
            calls.requestId = id;
            calls.index = index;
            calls.result = r;
        });
}

QPixmap Solid(int w, int h, const QColor& color) {
    QPixmap pixmap(w, h);
    pixmap.fill(color);
    return pixmap;
}

// Gradients with noise: large as PNG, much smaller as JPEG.
QPixmap Photo(int w, int h) {
    QImage img(w, h, QImage::Format_RGB32);
    quint32 seed = 7;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            seed = seed * 1664525u + 1013904223u;
            const int n = int(seed >> 27);
            img.setPixel(x, y, qRgb((x + n) & 0xff, (y + n) & 0xff, (x + y) & 0xff));
        }
    return QPixmap::fromImage(img);
}

int EncodedSize(const QPixmap& p, const char* format, int quality) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    p.toImage().save(&buffer, format, quality);
    return bytes.size();
}

}  // namespace

class TestImagePreviewTranslateTask : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }
    void cleanup() {
        CLxImagePreviewTranslateTask::ClearCache();
        CLxImagePreviewTranslateTask::SetServiceAddress(false, QString(), QString(), 0);
        CLxImagePreviewTranslateTask::SetServiceAddress(true, QString(), QString(), 0);
        lxtest::ResetGlobals();
    }
    void normalizeTargetLanguage_data() {
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("out");
        auto row = [](const char* in, const char* out) { QTest::newRow(in) << QString(in) << QString(out); };
        row(" zh-CN ", "sc");
        row("ZH", "sc");
        row("zh-TW", "tc");
        row("TC", "tc");
        row("en-US", "en");
        row("ja-JP", "ja");
        row("Fr", "fr");
        row(" De-DE\t", "de-de");
    }

    void normalizeTargetLanguage() {
        QFETCH(QString, in);
        QFETCH(QString, out);
        QCOMPARE(CLxImagePreviewTranslateTask::NormalizeTargetLanguage(in), out);
    }

    void uploadEncodingKeepsItsBounds() {
        using lxuikit_translate::EncodeForUpload;
        const QPixmap photo = Photo(300, 200);
        const int png = EncodedSize(photo, "PNG", -1);
        const int jpeg100 = EncodedSize(photo, "JPEG", 100);
        const int jpeg98 = EncodedSize(photo, "JPEG", 98);
        QVERIFY2(png > jpeg100 && jpeg100 > jpeg98, "the fixture must shrink as JPEG");
        int attempts = 0;

        // PNG exactly at the bound is taken as it is.
        QByteArray out = EncodeForUpload(photo, png, &attempts);
        QVERIFY(out.startsWith("\x89PNG"));
        QCOMPARE(attempts, 1);
        // One byte less: JPEG, and a JPEG exactly at the bound is not small enough.
        out = EncodeForUpload(photo, jpeg100, &attempts);
        QVERIFY(out.startsWith("\xff\xd8"));
        QCOMPARE(out.size(), jpeg98);
        QCOMPARE(attempts, 3);
        out = EncodeForUpload(photo, jpeg100 + 1, &attempts);
        QCOMPARE(out.size(), jpeg100);
        // Nothing small enough: no bytes after every quality down to 0.
        QVERIFY(EncodeForUpload(photo, 100, &attempts).isEmpty());
        QCOMPARE(attempts, 1 + 51);
        QVERIFY(CLxImagePreviewTranslateTask::PreprocessToUploadByteArray(QPixmap()).isEmpty());
        QVERIFY(CLxImagePreviewTranslateTask::PreprocessToUploadByteArray(photo).startsWith("\x89PNG"));
    }

    void answerLadder_data() {
        QTest::addColumn<int>("httpStatus");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("log");
        auto row = [](const char* tag, int httpStatus, const QByteArray& body, int status, const char* log) {
            QTest::newRow(tag) << httpStatus << body << status << QString(log);
        };
        row("http error", 500, "{}", 1, "StartRequest fails, result=");
        row("empty", 200, "", 1, "ParseTranslateHttpBody fails, body is empty");
        row("garbage", 200, "{\"code\":", 1, "ParseTranslateHttpBody fails, parse fails");
        row("array root", 200, "[1]", 1, "ParseTranslateHttpBody fails, root is not object");
        row("no code", 200, "{\"data\":{}}", 1, "ParseTranslateHttpBody fails, root has no code");
        row("code string", 200, "{\"code\":\"0\"}", 1, "ParseTranslateHttpBody fails, code is not int");
        row("code 7", 200, "{\"code\":7,\"message\":\"quota used up\"}", 1,
            "ParseTranslateHttpBody fails, quota used up");
        row("data array", 200, "{\"code\":0,\"data\":[]}", 1, "ParseTranslateHttpBody fails, data is not object");
        row("no language", 200, "{\"code\":0,\"data\":{\"image_records\":[]}}", 2,
            "ParseTranslateHttpBody is not success, data has not target_language");
        row("language int", 200, "{\"code\":0,\"data\":{\"target_language\":3}}", 1,
            "ParseTranslateHttpBody fails, target_language is not string");
        row("no records", 200, "{\"code\":0,\"data\":{\"target_language\":\"sc\"}}", 2,
            "ParseTranslateHttpBody is not success, data has not image_records");
        row("records object", 200, Answer("sc", "{}"), 1, "ParseTranslateHttpBody fails, image_records is not array");
        row("records empty", 200, Answer("sc", "[]"), 2,
            "ParseTranslateHttpBody is not success, image_records is empty");
        row("all malformed", 200,
            Answer("sc",
                   "[1,{\"x\":\"1\",\"y\":1,\"width\":5,\"height\":5,\"target_text\":\"a\"},"
                   "{\"x\":1,\"y\":1,\"width\":5,\"height\":5,\"target_text\":3},{\"x\":1,\"y\":1,\"width\":5}]"),
            2, "ParseTranslateHttpBody is not success, image_records has no valid record");
        row("success", 200, Answer("zh-CN", kOneRecord), 0, "");
    }

    void answerLadder() {
        QFETCH(int, httpStatus);
        QFETCH(QByteArray, body);
        QFETCH(int, status);
        QFETCH(QString, log);
        Service service;
        service.i32Status = httpStatus;
        service.body = body;
        lxtest::LogCapture capture;
        CLxImagePreviewTranslateTask task(nullptr);
        Calls calls;
        task.RequestTranslate(QStringLiteral("pic://ladder"), Solid(120, 60, Qt::darkBlue), 41, 3, Into(calls));
        QVERIFY(task.IsRequestInFlight());
        QTRY_COMPARE(calls.count, 1);
        QCOMPARE(calls.result.i32Status, status);
        QCOMPARE(calls.requestId, 41ul);
        QCOMPARE(calls.index, 3u);
        QCOMPARE(calls.result.pixmap.isNull(), status != 0);
        QVERIFY(!task.IsRequestInFlight());
        QCOMPARE(task.HasValidCache(QStringLiteral("pic://ladder")), status == 0);
        if (!log.isEmpty())
            QVERIFY2(capture.indexOf(log) >= 0, qPrintable(capture.texts().join('\n')));
        if (QByteArray(QTest::currentDataTag()) == "code 7")
            QVERIFY(capture.hasExact(QStringLiteral("ParseTranslateHttpBody fails, code is not 0")));
        if (status == 0) {
            QCOMPARE(calls.result.pixmap.size(), QSize(120, 60));
            QVERIFY(calls.result.pixmap.toImage() != Solid(120, 60, Qt::darkBlue).toImage());
        }
        QTest::qWait(50);
        QCOMPARE(calls.count, 1);
    }

    void requestCarriesHeadersAndImageField() {
        Service service;
        service.body = Answer("sc", kOneRecord);
        CLxImagePreviewTranslateTask task(nullptr);
        Calls calls;
        task.RequestTranslate(QStringLiteral("pic://headers"), Solid(40, 40, Qt::red), 1, 0, Into(calls));
        QTRY_COMPARE(calls.count, 1);
        const QByteArray head = service.last.head;
        QCOMPARE(service.last.method, QByteArray("POST"));
        QVERIFY(head.contains("X-Kora-Client-Deviceid: " + core::environment::GetDeviceId().toUtf8()));
        QVERIFY(head.contains("X-Kora-Client-Type: " + QByteArray::number(core::environment::GetClientType())));
        QVERIFY(head.contains("X-Kora-Client-Version: " + core::environment::GetAppVersion().toUtf8()));
        QVERIFY(head.contains("X-Kora-Client-Lang: zh-CN"));  // as the server names it, not normalised
        QVERIFY(head.contains("multipart/form-data; boundary="));
        QVERIFY(service.last.body.contains("name=\"image\"; filename=\"image\""));
        QVERIFY(service.last.body.contains("\x89PNG"));
    }

    void unconfiguredServiceFailsCleanly() {
        lxtest::LogCapture capture;
        CLxImagePreviewTranslateTask task(nullptr);
        Calls calls;
        // The other edition's address does not serve this one.
        CLxImagePreviewTranslateTask::SetServiceAddress(true, QStringLiteral("http"), QStringLiteral("127.0.0.1"), 9);
        task.RequestTranslate(QStringLiteral("pic://nowhere"), Solid(10, 10, Qt::red), 5, 1, Into(calls));
        QTRY_COMPARE(calls.count, 1);
        QCOMPARE(calls.result.i32Status, 1);
        QVERIFY(capture.hasExact(QStringLiteral("StartRequest returns 0, url=")));
        QVERIFY(!task.IsRequestInFlight());
        // A null picture never reaches the network either.
        Service service;
        task.RequestTranslate(QStringLiteral("pic://null"), QPixmap(), 6, 1, Into(calls));
        QTRY_COMPARE(calls.count, 2);
        QCOMPARE(calls.result.i32Status, 1);
        QCOMPARE(service.TotalRequests(), 0);
    }

    void cacheServesPerLanguageAndExpires() {
        Service service;
        service.SetHandler([&service](const LocalHttpServer::Request& r) -> LocalHttpServer::Reply {
            const bool bEnglish = r.head.contains("X-Kora-Client-Lang: en-US");
            return {200, Answer(bEnglish ? "EN-us" : "zh-CN", kOneRecord), 0, "application/json"};
        });
        const QString key = QStringLiteral("https://pics.example/cached.png");
        const QPixmap source = Solid(100, 50, Qt::white);
        CLxImagePreviewTranslateTask task(nullptr);
        Calls calls;
        task.RequestTranslate(key, source, 1, 0, Into(calls));
        QTRY_COMPARE(calls.count, 1);
        QCOMPARE(service.TotalRequests(), 1);

        // Served from the cache, at once, composed the same way.
        task.RequestTranslate(key, source, 2, 0, Into(calls));
        QCOMPARE(calls.count, 2);
        QCOMPARE(calls.result.i32Status, 0);
        QCOMPARE(service.TotalRequests(), 1);
        QCOMPARE(task.GetCachedTranslatedPixmap(key, source).toImage(), calls.result.pixmap.toImage());

        // Another language misses and asks again; the first language's entry stays.
        core::lang::SetLanguageId(core::lang::kLangEnUS);
        QVERIFY(!task.HasValidCache(key));
        task.RequestTranslate(key, source, 3, 0, Into(calls));
        QTRY_COMPARE(calls.count, 3);
        QCOMPARE(service.TotalRequests(), 2);
        QVERIFY(task.HasValidCache(key));
        QCOMPARE(lxuikit_translate::CachedLanguageCount(key), 2);

        // Fresh for exactly a day of server time.
        ImageRecordListCache stored;
        stored.i64Time = 1000;
        QVERIFY(lxuikit_translate::IsFresh(stored, 1000 + CLxImagePreviewTranslateTask::kCacheLifetimeMs));
        QVERIFY(!lxuikit_translate::IsFresh(stored, 1001 + CLxImagePreviewTranslateTask::kCacheLifetimeMs));
        core::time_date::SetSvrTimeOffsetMillis(CLxImagePreviewTranslateTask::kCacheLifetimeMs - 500);
        QVERIFY(task.HasValidCache(key));
        core::time_date::SetSvrTimeOffsetMillis(CLxImagePreviewTranslateTask::kCacheLifetimeMs + 500);
        QVERIFY(!task.HasValidCache(key));
        QCOMPARE(lxuikit_translate::CachedLanguageCount(key), 0);  // the key itself is pruned
        QVERIFY(task.GetCachedTranslatedPixmap(key, source).isNull());

        // An update drops expired entries and the same language's older answer.
        ImageRecordListCache old;
        old.strTargetLanguage = QStringLiteral("ja");
        old.i64Time = core::time_date::GetSvrTimeMillis() - CLxImagePreviewTranslateTask::kCacheLifetimeMs - 1;
        lxuikit_translate::UpdateCache(key, old);
        ImageRecordListCache en;
        en.strTargetLanguage = QStringLiteral("en");
        en.i64Time = core::time_date::GetSvrTimeMillis();
        lxuikit_translate::UpdateCache(key, en);
        lxuikit_translate::UpdateCache(key, en);
        QCOMPARE(lxuikit_translate::CachedLanguageCount(key), 1);
    }

    void onlyTheLatestRequestAnswers() {
        Service service;
        service.body = Answer("sc", kOneRecord);
        service.i32DelayMs = 150;
        Calls first, second, cancelled, abandoned, destroyed;
        {
            CLxImagePreviewTranslateTask task(nullptr);
            task.RequestTranslate(QStringLiteral("pic://a"), Solid(30, 30, Qt::red), 1, 0, Into(first));
            task.RequestTranslate(QStringLiteral("pic://b"), Solid(30, 30, Qt::red), 2, 1, Into(second));
            QTRY_COMPARE(second.count, 1);
            QCOMPARE(second.requestId, 2ul);

            task.RequestTranslate(QStringLiteral("pic://c"), Solid(30, 30, Qt::red), 3, 0, Into(cancelled));
            task.CancelInFlightRequest();
            QCOMPARE(cancelled.count, 1);
            QCOMPARE(cancelled.result.i32Status, 3);
            task.CancelInFlightRequest();  // nothing in flight: no second callback

            task.RequestTranslate(QStringLiteral("pic://d"), Solid(30, 30, Qt::red), 4, 0, Into(abandoned));
            task.AbandonInFlightRequest();
            task.RequestTranslate(QStringLiteral("pic://e"), Solid(30, 30, Qt::red), 5, 0, Into(destroyed));
        }
        QTest::qWait(400);
        QCOMPARE(first.count, 0);
        QCOMPARE(second.count, 1);
        QCOMPARE(cancelled.count, 1);
        QCOMPARE(abandoned.count, 0);
        QCOMPARE(destroyed.count, 0);
        QVERIFY(!lxuikit_translate::FindValidCache(QStringLiteral("pic://a"), nullptr));

        // A callback whose owner died is skipped.
        Calls guarded;
        auto* owner = new QObject;
        CLxImagePreviewTranslateTask task(nullptr);
        task.RequestTranslate(
            QStringLiteral("pic://f"), Solid(30, 30, Qt::red), 6, 0,
            CLxImagePreviewTranslateTask::Callback(
                owner, [&guarded](unsigned long, unsigned int, ImageTranslateResult) { ++guarded.count; }));
        delete owner;
        QTRY_VERIFY(!task.IsRequestInFlight());
        QCOMPARE(guarded.count, 0);
    }

    void composePaintsRecords() {
        QImage base(200, 100, QImage::Format_RGB32);
        base.fill(QColor(200, 30, 30));
        base.setPixelColor(150, 60, QColor(128, 120, 140));  // mid-grey corner of the third record
        const QPixmap source = QPixmap::fromImage(base);
        QVERIFY(CLxImagePreviewTranslateTask::ComposeTranslatedPixmap(QPixmap(), {{0, 0, 5, 5, "x"}}).isNull());
        QCOMPARE(CLxImagePreviewTranslateTask::ComposeTranslatedPixmap(source, {}).toImage(), source.toImage());

        const QVector<ImageRecord> records = {
            {-20, -10, 60, 40, QStringLiteral("OK")},                         // partly outside: clipped to (0,0,40,30)
            {500, 500, 50, 50, QStringLiteral("gone")},                       // wholly outside: skipped
            {150, 60, 50, 40, QStringLiteral("MM")},                          // on the grey pixel: white text
            {60, 5, 80, 50, QStringLiteral("WWWWWWWWWWWWWWWWWWWWWWWWWWWW")},  // overflows even the smallest token
        };
        const QImage out = CLxImagePreviewTranslateTask::ComposeTranslatedPixmap(source, records).toImage();
        QCOMPARE(out.size(), base.size());
        // Text in the inverse colour in the first record, white in the third.
        auto count = [&out](const QRect& r, auto pred) {
            int n = 0;
            for (int y = r.top(); y <= r.bottom(); ++y)
                for (int x = r.left(); x <= r.right(); ++x)
                    n += pred(out.pixelColor(x, y)) ? 1 : 0;
            return n;
        };
        const auto cyanish = [](const QColor& c) { return c.red() < 120 && c.green() > 150 && c.blue() > 150; };
        const auto whitish = [](const QColor& c) { return c.red() > 220 && c.green() > 220 && c.blue() > 220; };
        QVERIFY(count(QRect(0, 0, 40, 30), cyanish) > 10);
        QCOMPARE(count(QRect(41, 0, 19, 100), cyanish), 0);  // nothing drawn outside the clipped rectangle
        QVERIFY(count(QRect(150, 60, 50, 40), whitish) > 10);
        QVERIFY(lxtest::Near(out.pixelColor(151, 61), QColor(128, 120, 140), 1));  // filled with its corner colour
        QVERIFY(count(QRect(60, 5, 80, 50), cyanish) > 10);
        QVERIFY(lxtest::Near(out.pixelColor(45, 80), QColor(200, 30, 30), 1));  // untouched elsewhere
    }
};

QTEST_MAIN(TestImagePreviewTranslateTask)
#include "tst_ImagePreviewTranslateTask.moc"
