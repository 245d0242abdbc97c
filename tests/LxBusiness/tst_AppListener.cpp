// Application listener: /proc readers on captured files, the sampler's per-interval figures and
// its handling of missing files, Qt object hook chaining and per-class counts, delivery.
#include <LxBusiness/AppListenerManager.h>
#include <LxBusiness/ObjectHooks_p.h>
#include <LxBusiness/ProcSampler_p.h>
#include <LxCore/MessageDispatch.h>

#include "LxTestSupport.h"
#include "ProcFixtures.h"

#include <private/qhooks_p.h>
#include <QTimer>
#include <QWidget>
#include <QtTest>

#include <unistd.h>

using namespace lxbusiness;

namespace {
int g_i32FakeAdds = 0;
int g_i32FakeRemoves = 0;
void FakeAdd(QObject*) { ++g_i32FakeAdds; }
void FakeRemove(QObject*) { ++g_i32FakeRemoves; }

// A hook installed over ours by someone else, passing calls on as it should.
quintptr g_overPrevAdd = 0;
int g_i32OverAdds = 0;
void OverAdd(QObject* o) {
    ++g_i32OverAdds;
    if (g_overPrevAdd)
        reinterpret_cast<QHooks::AddQObjectCallback>(g_overPrevAdd)(o);
}
}  // namespace

class CounterProbe : public QObject {
    Q_OBJECT
};

class TestAppListener : public QObject {
    Q_OBJECT
private slots:
    void cleanup() {
        hooks::Uninstall();
        qtHookData[QHooks::AddQObject] = 0;
        qtHookData[QHooks::RemoveQObject] = 0;
    }

    void parsers_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<quint64>("first");
        QTest::addColumn<quint64>("second");
        auto row = [](const char* name, const char* file, const char* text, bool ok, quint64 first = 0,
                      quint64 second = 0) {
            QTest::newRow(name) << QByteArray(file) << QByteArray(text) << ok << first << second;
        };
        row("stat, name with ') '", "stat", "12 (a) b) R 1 1 1 0 -1 0 0 0 0 0 77 33 0 0 20", true, 77, 33);
        row("stat, cut short", "stat", "12 (a) R 1 1 1 0 -1 0 0 0 0 0 77", false);
        row("stat, no name", "stat", "12 R 1 1 1 0 -1 0 0 0 0 0 77 33 0", false);
        row("stat, negative ticks", "stat", "1 (x) R 1 1 1 0 -1 0 0 0 0 0 -5 3 0 0", false);
        row("statm", "statm", "765 438 410 5 0 123 0\n", true, 438);
        row("statm, one field", "statm", "765", false);
        row("io", "io", "syscw: 4\nrchar: 9\nwchar: 8\nsyscr: 3\n", true, 9, 3);
        row("io, syscw missing", "io", "rchar: 9\nwchar: 8\nsyscr: 3\n", false);
        row("netstat", "netstat", "TcpExt: A B\nTcpExt: 1 2\nIpExt: X InOctets OutOctets\nIpExt: 0 50 60\n", true, 50,
            60);
        row("netstat, value line short", "netstat", "IpExt: X InOctets OutOctets\nIpExt: 0 50\n", false);
        row("netstat, no IpExt", "netstat", "TcpExt: A\nTcpExt: 1\n", false);
    }
    void parsers() {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, text);
        QFETCH(bool, ok);
        uint64_t a = 0;
        uint64_t b = 0;
        bool got = false;
        if (file == "stat") {
            got = proc::ParseStat(text, &a, &b);
        } else if (file == "statm") {
            got = proc::ParseStatm(text, &a);
        } else if (file == "io") {
            proc::IoCounters io;
            got = proc::ParseIo(text, &io);
            a = io.u64ReadChars;
            b = io.u64ReadCalls;
        } else {
            got = proc::ParseNetstat(text, &a, &b);
        }
        QCOMPARE(got, ok);
        if (ok) {
            QTEST(quint64(a), "first");
            if (file != "statm")
                QTEST(quint64(b), "second");
        }
    }

    // Two captured readings a second apart: the second sample carries the interval's figures.
    void samplerIntervalFigures() {
        lxtest::LogCapture log;
        CProcSampler sampler(lxtest::ProcFixtureDir("t0"));
        CAppInformation first;
        sampler.Sample(10000, first);
        QCOMPARE(first.dCpuPercent, 0.0);
        QCOMPARE(first.i64IOReadTimes, qint64(0));
        QCOMPARE(first.dTcpRecvKBps, 0.0);
        QCOMPARE(first.dMemoryMB, 25600.0 * sysconf(_SC_PAGESIZE) / (1024.0 * 1024.0));

        sampler.SetRoot(lxtest::ProcFixtureDir("t1"));
        CAppInformation second;
        sampler.Sample(12000, second);  // two seconds later
        QCOMPARE(second.dCpuPercent, 200.0 / double(sysconf(_SC_CLK_TCK)) / 2.0 * 100.0);
        QCOMPARE(second.dMemoryMB, 51200.0 * sysconf(_SC_PAGESIZE) / (1024.0 * 1024.0));
        // IO calls and bytes read and written in the interval, then TCP bytes received and sent.
        QCOMPARE((QList<qint64>{second.i64IOReadTimes, second.i64IOWriteTimes, second.i64IOReadBytes,
                                second.i64IOWriteBytes, second.i64TcpRecvBytes, second.i64TcpSentBytes}),
                 (QList<qint64>{25, 1, 50000, 0, 204800, 51200}));
        QCOMPARE(second.dTcpRecvKBps, 100.0);  // 204800 bytes over 2 s
        QCOMPARE(second.dTcpSentKBps, 25.0);

        // Counters that went backwards (a reset) count nothing; the totals stay.
        sampler.SetRoot(lxtest::ProcFixtureDir("t0"));
        CAppInformation third;
        sampler.Sample(13000, third);
        QCOMPARE(third.dCpuPercent, 0.0);
        QCOMPARE(third.i64IOReadTimes, qint64(0));
        QCOMPARE(third.i64TcpRecvBytes, qint64(204800));
        QCOMPARE(sampler.FailureCount(), 0);
        QCOMPARE(log.indexOf("cannot"), -1);
    }

    // A missing or broken file reads zero and is reported once, not on every sample.
    void samplerMissingFiles() {
        lxtest::LogCapture log;
        CProcSampler sampler(lxtest::ProcFixtureDir("partial"));
        CAppInformation a;
        CAppInformation b;
        sampler.Sample(1000, a);
        sampler.Sample(2000, b);
        QCOMPARE(b.dMemoryMB, 0.0);
        QCOMPARE(b.i64IOReadBytes, qint64(0));
        QCOMPARE(b.dTcpRecvKBps, 0.0);
        QCOMPARE(b.dCpuPercent, 0.0);  // same stat twice: no CPU time spent
        QCOMPARE(sampler.FailureCount(), 3);
        QCOMPARE(log.texts().filter(QStringLiteral("figures read 0")).size(), 3);
        QVERIFY(log.contains("statm"));

        CProcSampler none(QStringLiteral("/nonexistent/proc"));
        CAppInformation c;
        none.Sample(1000, c);
        none.Sample(2000, c);
        QCOMPARE(none.FailureCount(), 4);
        QCOMPARE(c.dMemoryMB, 0.0);
    }

    void hookChaining() {
        g_i32FakeAdds = g_i32FakeRemoves = 0;
        qtHookData[QHooks::AddQObject] = reinterpret_cast<quintptr>(&FakeAdd);
        qtHookData[QHooks::RemoveQObject] = reinterpret_cast<quintptr>(&FakeRemove);
        hooks::Install();
        g_i32FakeAdds = g_i32FakeRemoves = 0;
        const hooks::Counts before = hooks::GetCounts();
        delete new QObject;
        QCOMPARE(g_i32FakeAdds, 1);
        QCOMPARE(g_i32FakeRemoves, 1);
        QCOMPARE(hooks::GetCounts().i64TotalObjects, before.i64TotalObjects + 1);

        // Removing ours gives the slot back to the earlier hook.
        hooks::Uninstall();
        QCOMPARE(qtHookData[QHooks::AddQObject], reinterpret_cast<quintptr>(&FakeAdd));
        QCOMPARE(qtHookData[QHooks::RemoveQObject], reinterpret_cast<quintptr>(&FakeRemove));

        // Someone hooks over ours: removing ours keeps the chain whole and stops our counting.
        hooks::Install();
        g_overPrevAdd = qtHookData[QHooks::AddQObject];
        qtHookData[QHooks::AddQObject] = reinterpret_cast<quintptr>(&OverAdd);
        hooks::Uninstall();
        QCOMPARE(qtHookData[QHooks::AddQObject], reinterpret_cast<quintptr>(&OverAdd));
        g_i32FakeAdds = g_i32OverAdds = 0;
        delete new QObject;
        QCOMPARE(g_i32OverAdds, 1);
        QCOMPARE(g_i32FakeAdds, 1);
        // Installing again must not make ours its own successor.
        hooks::Install();
        const qint64 total = hooks::GetCounts().i64TotalObjects;
        g_i32FakeAdds = 0;
        delete new QObject;
        QCOMPARE(g_i32FakeAdds, 1);
        QCOMPARE(hooks::GetCounts().i64TotalObjects, total + 1);
        // The other hook leaves (giving the slot back to ours): now ours can leave too.
        qtHookData[QHooks::AddQObject] = g_overPrevAdd;
        hooks::Uninstall();
        QCOMPARE(qtHookData[QHooks::AddQObject], reinterpret_cast<quintptr>(&FakeAdd));
    }

    void perClassCounts() {
        hooks::Install();
        auto* timers = new QObject;
        for (int i = 0; i < 3; ++i)
            new QTimer(timers);
        auto* widget = new QWidget;
        new QWidget(widget);
        auto* probe = new CounterProbe;
        QCoreApplication::processEvents();  // classes are looked up at the next turn
        delete new CounterProbe;            // gone before the look-up: counted as a plain QObject

        QMap<QString, qint64> active = hooks::ActiveByClass();
        QCOMPARE(active.value("QTimer"), qint64(3));
        QCOMPARE(active.value("QWidget"), qint64(2));
        QCOMPARE(active.value("CounterProbe"), qint64(1));
        QCOMPARE(hooks::GetCounts().i64LiveWidgets, qint64(2));

        delete timers->findChild<QTimer*>();
        delete widget;
        delete probe;
        active = hooks::ActiveByClass();
        const QMap<QString, qint64> destroyed = hooks::DestroyedByClass();
        QCOMPARE(active.value("QTimer"), qint64(2));
        QCOMPARE(active.value("QWidget"), qint64(0));
        QCOMPARE(destroyed.value("QTimer"), qint64(1));
        QCOMPARE(destroyed.value("QWidget"), qint64(2));
        QCOMPARE(destroyed.value("CounterProbe"), qint64(1));
        QVERIFY(destroyed.value("QObject") >= 1);
        const hooks::Counts counts = hooks::GetCounts();
        QCOMPARE(counts.i64LiveWidgets, qint64(0));
        QCOMPARE(counts.i64TotalWidgets, qint64(2));
        delete timers;
    }

    void deliversSamples() {
        CAppListenerManager* mgr = CAppListenerManager::instance();
        int calls = 0;
        CAppInformation latest;
        const int id = mgr->RegisterUpdateEvent([&](const CAppInformationSet& set) {
            ++calls;
            latest = set.Latest();
        });
        QVERIFY(id > 0);
        QVERIFY(mgr->ObjectHooksInstalled());
        const qint64 pushes = qint64(_CMessageDispatch::TotalPushCount());
        _CMessageDispatch::instance()->Dispatch(424242);
        auto* w = new QWidget;
        mgr->SampleNow();
        QCOMPARE(calls, 1);
        QCOMPARE(latest.i64TotalPushes, pushes + 1);
        QVERIFY(latest.i32WidgetCount >= 1);
        QVERIFY(latest.i32ObjectCount >= latest.i32WidgetCount);
        QVERIFY(latest.dMemoryMB > 1.0);  // the real process
        delete w;
        mgr->UnregisterUpdateEvent(id);
        mgr->SampleNow();
        QCOMPARE(calls, 1);
        QCOMPARE(mgr->SubscriberCount(), 0);
    }
};

QTEST_MAIN(TestAppListener)
#include "tst_AppListener.moc"
