// Value trees: typed readers that never throw, missing keys, deep copies, JSON in and out.

#include <LxCore/ProtoValue.h>

#include <QtTest>

#include <cmath>
#include <limits>

#include "LxTestSupport.h"

class TestProtoValue : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    void keysTypesAndMissingKeys() {
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

    void jsonRoundTripCopiesAndBadInput() {
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
        QCOMPARE(copy.toJsonString(), std::string("{\"a\":2,\"n\":{\"m\":\"z\"},\"s\":\"x\\\"y\"}"));
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
    void numbersSaturate_data() {
        QTest::addColumn<QString>("json");  // the value, or "nan"
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
        QTest::newRow("boolean") << "true" << qint64(0) << qint64(0) << quint64(0) << quint64(0);
        QTest::newRow("string") << "\"12\"" << qint64(0) << qint64(0) << quint64(0) << quint64(0);
    }

    void numbersSaturate() {
        QFETCH(QString, json);
        QFETCH(qint64, i32);
        QFETCH(qint64, i64);
        QFETCH(quint64, u32);
        QFETCH(quint64, u64);
        core::CProtoValue v;
        if (json == QLatin1String("nan"))
            v = core::CProtoValue(std::numeric_limits<double>::quiet_NaN());
        else
            QVERIFY(v.fromJsonString(json.toStdString()));
        QCOMPARE(qint64(v.asInt32()), i32);
        QCOMPARE(qint64(v.asInt64()), i64);
        QCOMPARE(quint64(v.asUInt32()), u32);
        QCOMPARE(quint64(v.asUInt64()), u64);
        // The other readers never throw either (an exception fails the test).
        (void)v.asBool();
        (void)v.asDouble();
        (void)v.asString();
        (void)v.toJsonString();
    }
};

QTEST_GUILESS_MAIN(TestProtoValue)
#include "tst_ProtoValue.moc"
