// Core helpers: posting to the GUI thread, value trees, guarded callables, hashing, settings,
// scheme handling, message dispatch, environment and language.

#include <LxCore/Environment.h>
#include <LxCore/IniWrapper.h>
#include <LxCore/MessageDispatch.h>
#include <LxCore/Post.h>
#include <LxCore/ProductPath.h>
#include <LxCore/ProtoValue.h>
#include <LxCore/SafeFunction.h>
#include <LxCore/Scheme.h>
#include <LxCore/StrConv.h>
#include <LxCore/TimeDate.h>

#include <QElapsedTimer>
#include <QThread>
#include <QtTest>

#include <atomic>

#include "LxTestSupport.h"

class TestCore : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void postRunsOnMainThreadInOrderFromAnyThread();
    void postDelayWaitsAtLeastItsDelay();
    void protoValueKeysTypesAndMissingKeys();
    void protoValueJsonRoundTripAndBadInput();
    void protoValueNumbersSaturate_data();
    void protoValueNumbersSaturate();
    void safeFunctionStopsWithItsGuard();
    void hashIsStableAndEncodingAware();
    void iniWrapperAndAppSettingsPersist();
    void schemeHandlersAndUnknownCallback();
    void messageBindingsDieWithTheirOwner();
    void serverTimeFollowsOffset();
    void environmentAndLanguage();
};

void TestCore::postRunsOnMainThreadInOrderFromAnyThread() {
    std::vector<int> seen;
    std::atomic<int> offMain{0};
    QThread* worker = QThread::create([&] {
        for (int i = 0; i < 100; ++i)
            core::post::ToMain([&, i] {
                if (QThread::currentThread() != QCoreApplication::instance()->thread())
                    ++offMain;
                seen.push_back(i);
            });
    });
    worker->start();
    QVERIFY(worker->wait(5000));
    delete worker;
    QTRY_COMPARE(int(seen.size()), 100);
    QCOMPARE(offMain.load(), 0);
    for (int i = 0; i < 100; ++i)
        QCOMPARE(seen[size_t(i)], i);

    // A guarded task does nothing once its receiver is gone.
    auto* receiver = new QObject;
    QPointer<QObject> guard(receiver);
    bool touched = false;
    core::post::ToMain([guard, &touched] {
        if (guard)
            touched = true;
    });
    delete receiver;
    QCoreApplication::processEvents();
    QVERIFY(!touched);
}

void TestCore::postDelayWaitsAtLeastItsDelay() {
    QElapsedTimer timer;
    timer.start();
    qint64 ranAfter = -1;
    QThread* worker = QThread::create([&] {
        core::post::ToMainDelay(
            [&] {
                QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
                ranAfter = timer.elapsed();
            },
            120);
    });
    worker->start();
    QVERIFY(worker->wait(5000));
    delete worker;
    QTRY_VERIFY(ranAfter >= 0);
    QVERIFY2(ranAfter >= 115, qPrintable(QString::number(ranAfter)));
}

void TestCore::protoValueKeysTypesAndMissingKeys() {
    core::CProtoValue v;
    v["type"] = core::CProtoValue(4);
    v["stockid"] = core::CProtoValue(uint64_t(18446744073709551000ULL));
    v["neg"] = core::CProtoValue(int64_t(-5));
    v["name"] = core::CProtoValue(std::string("青禾控股"));
    v["nested"]["inner"] = core::CProtoValue(7u);

    QCOMPARE(v["type"].asInt32(), 4);
    QCOMPARE(v["stockid"].asUInt64(), uint64_t(18446744073709551000ULL));
    QCOMPARE(v["neg"].asInt64(), int64_t(-5));
    QCOMPARE(QString::fromStdString(v["name"].asString()), QStringLiteral("青禾控股"));
    QCOMPARE(v["nested"]["inner"].asUInt32(), 7u);
    // Missing keys and wrong kinds read as empty or zero, never throw.
    const core::CProtoValue& cv = v;
    QVERIFY(!cv.isMember("absent"));
    QCOMPARE(cv["absent"].asInt64(), int64_t(0));
    QCOMPARE(cv["absent"].asString(), std::string());
    QCOMPARE(cv["nested"].asInt32(), 0);
    QCOMPARE(cv["name"].asUInt64(), uint64_t(0));
    QVERIFY(!cv.isMember("absent"));  // reading did not create it
}

void TestCore::protoValueJsonRoundTripAndBadInput() {
    core::CProtoValue v;
    v["a"] = core::CProtoValue(1);
    v["s"] = core::CProtoValue("x\"y");
    core::CProtoValue back;
    QVERIFY(back.fromJsonString(v.toJsonString()));
    QVERIFY(back == v);
    // Copies are deep: writing into one leaves the other as it was.
    core::CProtoValue copy = back;
    copy["a"] = core::CProtoValue(2);
    copy["n"]["m"] = core::CProtoValue("z");
    QCOMPARE(back["a"].asInt32(), 1);
    QVERIFY(!back.isMember("n"));
    QCOMPARE(copy.toJsonString(), std::string(R"({"a":2,"n":{"m":"z"},"s":"x\"y"})"));
    core::CProtoValue bad;
    QVERIFY(!bad.fromJsonString("{\"a\": "));
    QVERIFY(!bad.isMember("a"));
    // Nesting beyond the reader's limit is bad input too, not an exception.
    QVERIFY(!bad.fromJsonString(std::string(5000, '[') + std::string(5000, ']')));
    QVERIFY(!bad.isMember("a"));
    core::CProtoValue arr;
    QVERIFY(arr.fromJsonString("{\"a\":[1,{}],\"b\":false}"));
    QCOMPARE(arr["a"].asString(), std::string());
    QCOMPARE(arr["b"].asString(), std::string("false"));
}

// Every number reader answers for any value without throwing: in range as itself (fractions cut
// toward zero), beyond it the nearest end, NaN and non-numbers 0.
void TestCore::protoValueNumbersSaturate_data() {
    QTest::addColumn<QString>("json");  // the value, or "nan", "inf", "-inf"
    QTest::addColumn<qint64>("i32");
    QTest::addColumn<qint64>("i64");
    QTest::addColumn<quint64>("u32");
    QTest::addColumn<quint64>("u64");
    const qint64 i32max = INT32_MAX, i32min = INT32_MIN, i64max = INT64_MAX, i64min = INT64_MIN;
    const quint64 u32max = UINT32_MAX, u64max = UINT64_MAX;
    QTest::newRow("huge") << "1e300" << i32max << i64max << u32max << u64max;
    QTest::newRow("huge negative") << "-1e300" << i32min << i64min << quint64(0) << quint64(0);
    QTest::newRow("negative fraction") << "-1.5" << qint64(-1) << qint64(-1) << quint64(0) << quint64(0);
    QTest::newRow("fraction") << "2.9" << qint64(2) << qint64(2) << quint64(2) << quint64(2);
    QTest::newRow("2^63 as integer") << "9223372036854775808" << i32max << i64max << u32max
                                     << quint64(9223372036854775808ULL);
    QTest::newRow("2^63 as double") << "9.223372036854775808e18" << i32max << i64max << u32max
                                    << quint64(9223372036854775808ULL);
    QTest::newRow("2^64 as double") << "1.8446744073709551616e19" << i32max << i64max << u32max << u64max;
    QTest::newRow("int64 minimum") << "-9223372036854775808" << i32min << i64min << quint64(0) << quint64(0);
    QTest::newRow("2^32") << "4294967296" << i32max << qint64(4294967296LL) << u32max << quint64(4294967296ULL);
    QTest::newRow("2^31") << "2147483648" << i32max << qint64(2147483648LL) << quint64(2147483648ULL)
                          << quint64(2147483648ULL);
    QTest::newRow("-1") << "-1" << qint64(-1) << qint64(-1) << quint64(0) << quint64(0);
    QTest::newRow("nan") << "nan" << qint64(0) << qint64(0) << quint64(0) << quint64(0);
    QTest::newRow("inf") << "inf" << i32max << i64max << u32max << u64max;
    QTest::newRow("-inf") << "-inf" << i32min << i64min << quint64(0) << quint64(0);
    QTest::newRow("boolean") << "true" << qint64(0) << qint64(0) << quint64(0) << quint64(0);
    QTest::newRow("string") << "\"12\"" << qint64(0) << qint64(0) << quint64(0) << quint64(0);
    QTest::newRow("array") << "[1]" << qint64(0) << qint64(0) << quint64(0) << quint64(0);
}

void TestCore::protoValueNumbersSaturate() {
    QFETCH(QString, json);
    QFETCH(qint64, i32);
    QFETCH(qint64, i64);
    QFETCH(quint64, u32);
    QFETCH(quint64, u64);
    core::CProtoValue v;
    if (json == QLatin1String("nan"))
        v = core::CProtoValue(std::numeric_limits<double>::quiet_NaN());
    else if (json.endsWith(QLatin1String("inf")))
        v = core::CProtoValue((json.startsWith(QLatin1Char('-')) ? -1 : 1) * std::numeric_limits<double>::infinity());
    else
        QVERIFY(v.fromJsonString(json.toStdString()));
    QCOMPARE(qint64(v.asInt32()), i32);
    QCOMPARE(qint64(v.asInt64()), i64);
    QCOMPARE(quint64(v.asUInt32()), u32);
    QCOMPARE(quint64(v.asUInt64()), u64);
    // The other readers never throw either.
    (void)v.asBool();
    (void)v.asDouble();
    (void)v.asString();
    (void)v.toJsonString();
}

void TestCore::safeFunctionStopsWithItsGuard() {
    auto* owner = new QObject;
    int calls = 0;
    core::CSafeFunction<int(int)> fn(owner, [&](int x) {
        ++calls;
        return x * 2;
    });
    QVERIFY(fn.IsCallable());
    QCOMPARE(fn(21), 42);
    delete owner;
    QVERIFY(!fn.IsCallable());
    QCOMPARE(fn(21), 0);
    QCOMPARE(calls, 1);

    core::CSafeFunction<void()> unguarded([&] { ++calls; });
    unguarded();
    QCOMPARE(calls, 2);
    QVERIFY(!core::CSafeFunction<void()>().IsCallable());
}

void TestCore::hashIsStableAndEncodingAware() {
    // Stored hashes must survive releases: these values are XXH3-64 with seed 0.
    QCOMPARE(core::str_conv::HashStrToUInt64(std::string()), uint64_t(0x2D06800538D394C2ULL));
    const uint64_t url = core::str_conv::HashStrToUInt64(std::string("https://img.example.com/a.png"));
    QCOMPARE(core::str_conv::HashStrToUInt64(QStringLiteral("https://img.example.com/a.png")), url);
    QCOMPARE(core::str_conv::HashStrToUInt64(QStringLiteral("图片")),
             core::str_conv::HashStrToUInt64(std::string("\xe5\x9b\xbe\xe7\x89\x87")));
    QVERIFY(core::str_conv::HashStrToUInt64(std::string("https://img.example.com/b.png")) != url);
}

void TestCore::iniWrapperAndAppSettingsPersist() {
    lxtest::TempProductRoot root;
    const QString path = root.path() + QStringLiteral("/t.ini");
    {
        core::CIniWrapper ini(path);
        QVERIFY(ini.SetValue(QStringLiteral("StdOutDialog"), QStringLiteral("ScreenIndex"), 2));
        QVERIFY(ini.SetValue(QStringLiteral("StdOutDialog"), QStringLiteral("Flag"), QStringLiteral("yes")));
        QVERIFY(ini.SetValue(QStringLiteral("StdOutDialog"), QStringLiteral("Junk"), QStringLiteral("maybe")));
    }
    core::CIniWrapper again(path);
    QCOMPARE(again.GetInt(QStringLiteral("StdOutDialog"), QStringLiteral("ScreenIndex")), 2);
    QVERIFY(again.GetBool(QStringLiteral("StdOutDialog"), QStringLiteral("Flag")));
    QVERIFY(again.GetBool(QStringLiteral("StdOutDialog"), QStringLiteral("Junk"), true));  // unparsable: default
    QCOMPARE(again.GetInt(QStringLiteral("StdOutDialog"), QStringLiteral("Junk"), -1), -1);
    QVERIFY(!again.HasKey(QStringLiteral("Other"), QStringLiteral("ScreenIndex")));

    QVERIFY(!core::app_setting::GetBool(QStringLiteral("dev_auto_open_std_out")));
    QVERIFY(core::app_setting::SetBool(QStringLiteral("dev_auto_open_std_out"), true));
    QVERIFY(core::app_setting::GetBool(QStringLiteral("dev_auto_open_std_out")));
    QVERIFY(QFile::exists(core::product_path::GetSettingsFile()));
}

void TestCore::schemeHandlersAndUnknownCallback() {
    QStringList unknown;
    QObject parent;
    QObject* seenParent = nullptr;
    core::scheme::RegisterUnknowSchemeCallBack([&](const QString& url, QObject* p) {
        unknown << url;
        seenParent = p;
    });
    QStringList handled;
    core::scheme::RegisterSchemeHandler(QStringLiteral("LX"), [&](const QUrl& url, QObject*) {
        handled << url.host();
        return url.host() != QLatin1String("broken");
    });

    QVERIFY(core::scheme::OpenUrl(QStringLiteral("lx://stock?id=1"), &parent));
    QVERIFY(!core::scheme::OpenUrl(QStringLiteral("lx://broken"), &parent));  // handler refused
    QVERIFY(!core::scheme::OpenUrl(QStringLiteral("weird://x"), &parent));
    QVERIFY(!core::scheme::OpenUrl(QStringLiteral("::not a url"), nullptr));
    QCOMPARE(handled, (QStringList{QStringLiteral("stock"), QStringLiteral("broken")}));
    QCOMPARE(unknown,
             (QStringList{QStringLiteral("lx://broken"), QStringLiteral("weird://x"), QStringLiteral("::not a url")}));
    QCOMPARE(seenParent, static_cast<QObject*>(nullptr));

    core::scheme::RegisterSchemeHandler(QStringLiteral("lx"), {});
    core::scheme::RegisterUnknowSchemeCallBack({});
    QVERIFY(!core::scheme::OpenUrl(QStringLiteral("lx://stock"), nullptr));
    QCOMPARE(handled.size(), 2);
}

void TestCore::messageBindingsDieWithTheirOwner() {
    _CMessageDispatch* d = _CMessageDispatch::instance();
    auto* a = new QObject;
    QObject b;
    QStringList calls;
    d->Bind(20154, a, [&](int id, const core::CProtoValue& p) {
        calls << QStringLiteral("a%1:%2").arg(id).arg(p["x"].asInt32());
    });
    uint64_t bId = 0;
    bId = d->Bind(20154, &b, [&](int id, const core::CProtoValue&) {
        calls << QStringLiteral("b%1").arg(id);
        d->Unbind(bId);  // unbinding itself inside the call is safe
    });
    d->Bind(20155, &b, [&](int, const core::CProtoValue&) { calls << QStringLiteral("b20155"); });

    core::CProtoValue params;
    params["x"] = core::CProtoValue(3);
    QCOMPARE(d->Dispatch(20154, params), 2);
    QCOMPARE(calls, (QStringList{QStringLiteral("a20154:3"), QStringLiteral("b20154")}));
    delete a;
    calls.clear();
    QCOMPARE(d->Dispatch(20154), 0);
    QCOMPARE(d->BindingCount(20154), 0);
    d->Post(20155);
    QVERIFY(calls.isEmpty());
    QTRY_COMPARE(calls, QStringList{QStringLiteral("b20155")});

    lxtest::AssertRecorder rec;
    QCOMPARE(d->Bind(1, nullptr, [](int, const core::CProtoValue&) {}), uint64_t(0));
    QCOMPARE(rec.count(), 1);
}

void TestCore::serverTimeFollowsOffset() {
    const int64_t local = QDateTime::currentMSecsSinceEpoch();
    core::time_date::SetSvrTimeOffsetMillis(3600 * 1000);
    const int64_t svr = core::time_date::GetSvrTimeMillis();
    QVERIFY(svr - local >= 3600 * 1000 && svr - local < 3600 * 1000 + 1000);
    core::time_date::SyncSvrTimeMillis(local - 5000);
    QVERIFY(qAbs(core::time_date::GetSvrTimeMillis() - (local - 5000)) < 1000);
    core::time_date::SetSvrTimeOffsetMillis(0);
}

void TestCore::environmentAndLanguage() {
    const QString id = core::environment::GetDeviceId();
    QCOMPARE(id.size(), 16);
    QCOMPARE(core::environment::GetDeviceId(), id);
    QCOMPARE(core::environment::GetClientType(), 1);

    QSignalSpy spy(core::lang::Notifier::instance(), &core::lang::Notifier::languageChanged);
    core::lang::SetLanguageId(core::lang::kLangZhCN);
    QCOMPARE(core::environment::GetServerLanguage(), QStringLiteral("zh-CN"));
    const int before = spy.count();
    core::lang::SetLanguageId(core::lang::kLangEnUS);
    core::lang::SetLanguageId(core::lang::kLangEnUS);  // no change, no signal
    QCOMPARE(spy.count(), before + 1);
    QCOMPARE(core::lang::GetLanguageCode(), QStringLiteral("en_US"));
    QCOMPARE(core::environment::GetServerLanguage(), QStringLiteral("en-US"));
    core::lang::SetLanguageId(99);  // unknown ids fall back to Chinese
    QCOMPARE(core::lang::GetLanguageId(), int(core::lang::kLangZhCN));
}

QTEST_GUILESS_MAIN(TestCore)
#include "tst_core.moc"
