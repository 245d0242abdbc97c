// Unit-test sessions: results and messages, refused registrations, thrown exceptions, and a run
// of all sessions in order, one per turn of the event loop.
#include <LxBusiness/UnitTestManager.h>

#include "LxTestSupport.h"

#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <stdexcept>

class TestUnitTestManager : public QObject {
    Q_OBJECT
private slots:
    void cleanup() {
        CUnitTestManager::instance()->CancelRun();
        QTRY_VERIFY(!CUnitTestManager::instance()->IsRunning());
        CUnitTestManager::instance()->ClearTestSessions();
    }

    void singleSessions() {
        CUnitTestManager* mgr = CUnitTestManager::instance();
        QVERIFY(mgr->RegisterTestSession("ok", [] { return CUnitTestResult::Pass(); }));
        QVERIFY(mgr->RegisterTestSession("bad", [] { return CUnitTestResult::Fail("price was 0"); }));
        QVERIFY(mgr->RegisterTestSession("throws", []() -> CUnitTestResult { throw std::runtime_error("boom"); }));
        {
            lxtest::LogCapture log;
            QVERIFY(!mgr->RegisterTestSession("ok", [] { return CUnitTestResult::Fail("x"); }));
            QVERIFY(!mgr->RegisterTestSession("", [] { return CUnitTestResult::Pass(); }));
            QVERIFY(!mgr->RegisterTestSession("empty", {}));
            QVERIFY(log.contains("already registered"));
        }
        QCOMPARE(mgr->GetTestSessionNames(), QStringList({"ok", "bad", "throws"}));
        QCOMPARE(mgr->GetResult("ok").enState, CUnitTestSessionResult::NotRun);

        const CUnitTestSessionResult ok = mgr->RunTestSession("ok");
        QCOMPARE(ok.enState, CUnitTestSessionResult::Passed);
        const CUnitTestSessionResult bad = mgr->RunTestSession("bad");
        QCOMPARE(bad.enState, CUnitTestSessionResult::Failed);
        QCOMPARE(bad.strMessage, QString("price was 0"));
        const CUnitTestSessionResult thrown = mgr->RunTestSession("throws");
        QCOMPARE(thrown.enState, CUnitTestSessionResult::Failed);
        QCOMPARE(thrown.strMessage, QString("exception: boom"));
        QCOMPARE(mgr->GetResult("bad").strMessage, QString("price was 0"));
        QCOMPARE(mgr->RunTestSession("missing").enState, CUnitTestSessionResult::NotRun);
    }

    // Sessions run in registration order, each in its own turn: a timer armed by one session
    // fires before the next one starts.
    void runAllOneSessionPerTurn() {
        CUnitTestManager* mgr = CUnitTestManager::instance();
        QStringList order;
        bool ticked = false;
        bool cancelInThird = false;
        mgr->RegisterTestSession("first", [&] {
            order << "first";
            QTimer::singleShot(0, [&] { ticked = true; });
            return CUnitTestResult::Pass();
        });
        mgr->RegisterTestSession("second", [&] {
            order << "second";
            return ticked ? CUnitTestResult::Pass() : CUnitTestResult::Fail("event loop did not run");
        });
        mgr->RegisterTestSession("third", [&] {
            order << "third";
            if (cancelInThird)
                CUnitTestManager::instance()->CancelRun();
            return CUnitTestResult::Fail("on purpose");
        });
        QSignalSpy finished(mgr, &CUnitTestManager::sessionFinished);
        QSignalSpy done(mgr, &CUnitTestManager::runFinished);
        QVERIFY(mgr->StartRun());
        QVERIFY(!mgr->StartRun());  // one run at a time
        QVERIFY(order.isEmpty());   // nothing runs inside StartRun
        QCOMPARE(mgr->GetResult("third").enState, CUnitTestSessionResult::Queued);
        QTRY_COMPARE(done.count(), 1);
        QCOMPARE(order, QStringList({"first", "second", "third"}));
        QCOMPARE(finished.count(), 3);
        QCOMPARE(mgr->GetResult("second").enState, CUnitTestSessionResult::Passed);
        QCOMPARE(done.at(0).at(0).toInt(), 2);
        QCOMPARE(done.at(0).at(1).toInt(), 1);

        // A chosen subset, cancelled by its first session.
        order.clear();
        done.clear();
        cancelInThird = true;
        QVERIFY(mgr->StartRun({"third", "first"}));
        QTRY_COMPARE(done.count(), 1);
        QCOMPARE(order, QStringList({"third"}));
        QCOMPARE(mgr->GetResult("first").enState, CUnitTestSessionResult::NotRun);
    }
};

QTEST_MAIN(TestUnitTestManager)
#include "tst_UnitTestManager.moc"
