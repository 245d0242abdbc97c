// Getting a call to where it must run: posted to the GUI thread, guarded by an owner, dispatched
// by message id, routed by URL scheme.

#include <LxCore/MessageDispatch.h>
#include <LxCore/Post.h>
#include <LxCore/SafeFunction.h>
#include <LxCore/Scheme.h>

#include <QElapsedTimer>
#include <QThread>
#include <QtTest>

#include <atomic>

#include "LxTestSupport.h"

class TestDispatch : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() {
        core::scheme::RegisterSchemeHandler(QStringLiteral("lx"), {});
        lxtest::ResetGlobals();
    }

    void postRunsOnMainThreadInOrderFromAnyThread() {
        std::vector<int> seen;
        std::atomic<int> offMain{0};
        QElapsedTimer timer;
        timer.start();
        qint64 delayedRanAfter = -1;
        QThread* worker = QThread::create([&] {
            core::post::ToMainDelay(
                [&] {
                    offMain += QThread::currentThread() != QCoreApplication::instance()->thread();
                    delayedRanAfter = timer.elapsed();
                },
                120);
            for (int i = 0; i < 100; ++i)
                core::post::ToMain([&, i] {
                    offMain += QThread::currentThread() != QCoreApplication::instance()->thread();
                    seen.push_back(i);
                });
        });
        worker->start();
        QVERIFY(worker->wait(5000));
        delete worker;
        QTRY_COMPARE(int(seen.size()), 100);
        for (int i = 0; i < 100; ++i)
            QCOMPARE(seen[size_t(i)], i);
        QTRY_VERIFY(delayedRanAfter >= 0);
        QVERIFY2(delayedRanAfter >= 115, qPrintable(QString::number(delayedRanAfter)));  // at least its delay
        QCOMPARE(offMain.load(), 0);
    }

    void safeFunctionStopsWithItsGuard() {
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

    void messageBindingsDieWithTheirOwner() {
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

    void schemeHandlersAndUnknownCallback() {
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
        QCOMPARE(unknown, (QStringList{QStringLiteral("lx://broken"), QStringLiteral("weird://x"),
                                       QStringLiteral("::not a url")}));
        QCOMPARE(seenParent, static_cast<QObject*>(nullptr));

        core::scheme::RegisterSchemeHandler(QStringLiteral("lx"), {});
        core::scheme::RegisterUnknowSchemeCallBack({});
        QVERIFY(!core::scheme::OpenUrl(QStringLiteral("lx://stock"), nullptr));
        QCOMPARE(handled.size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestDispatch)
#include "tst_Dispatch.moc"
