// The kit's lifecycle calls, the host delegates for reports and web views, and the flyout that
// follows the main window and closes at exit through the message dispatch.

#include <LxCore/MessageDispatch.h>
#include <LxUIKit/DevTools/Log/LxLogViewer.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/LUIKitReport.h>
#include <LxUIKit/LUIKitWebDelegate.h>
#include <LxUIKit/LxFlyoutsWnd.h>
#include <LxUIKit/LxUIKitLifecycle.h>

#include <QtTest>

#include "LxTestSupport.h"

namespace {
class CountingFlyout : public LxFlyoutsWnd {
public:
    int i32Shows = 0;
    int i32Exits = 0;

protected:
    void showEvent(QShowEvent* e) override {
        ++i32Shows;
        LxFlyoutsWnd::showEvent(e);
    }
    void OnAppExit() override {
        ++i32Exits;
        LxFlyoutsWnd::OnAppExit();
    }
};

int Send(unsigned id) { return _CMessageDispatch::instance()->Dispatch(int(id)); }
}  // namespace

class TestLifecycle : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    // Without a delegate (or with an empty one) a report asserts and fails; otherwise the latest
    // delegate gets it and its answer comes back.
    void reportForwardsToTheLatestDelegate() {
        lxtest::AssertRecorder rec;
        QVERIFY(!lxuikit_report::Report("evt", 1, Json::Value()));
        lxuikit_report::setReportDelegate({});
        QVERIFY(!lxuikit_report::Report("evt", 1, Json::Value()));
        QCOMPARE(rec.count(), 2);
        QCOMPARE(rec.asserts().front().strModule, std::string("LxUIKit"));
        QStringList calls;
        auto first = std::make_shared<int>(0);
        std::weak_ptr<int> firstAlive = first;
        lxuikit_report::setReportDelegate([first, &calls](const std::string& e, int, const Json::Value&) {
            calls << QStringLiteral("first:") + QString::fromStdString(e);
            return true;
        });
        first.reset();
        QVERIFY(!firstAlive.expired());  // held by the slot
        lxuikit_report::setReportDelegate([&calls](const std::string& e, int v, const Json::Value& p) {
            calls << QStringLiteral("second:%1:%2:%3").arg(QString::fromStdString(e)).arg(v).arg(p["k"].asInt());
            return v > 0;
        });
        QVERIFY(firstAlive.expired());  // the replaced delegate was destroyed
        Json::Value params;
        params["k"] = 9;
        QVERIFY(lxuikit_report::Report("click", 3, params));
        QVERIFY(!lxuikit_report::Report("click", 0, params));  // the delegate's answer comes back
        QCOMPARE(calls, (QStringList{QStringLiteral("second:click:3:9"), QStringLiteral("second:click:0:9")}));
        QCOMPARE(rec.count(), 2);
    }

    void webDelegatesForwardOrAssert() {
        lxtest::AssertRecorder rec;
        lxuikit_web::SetRemoteDebugPort(9222);
        lxuikit_web::showWebView(QStringLiteral("https://example.com"));
        QCOMPARE(rec.count(), 2);  // one per call without its delegate

        int port = 0;
        QString url;
        lxuikit_web::setSetRemoteDebugPortDelegate([&](int p) { port = p; });
        lxuikit_web::setShowWebViewDelegate([&](const QString& u) { url = u; });
        lxuikit_web::SetRemoteDebugPort(9222);
        lxuikit_web::showWebView(QStringLiteral("https://example.com/a?b=1"));
        QCOMPARE(port, 9222);
        QCOMPARE(url, QStringLiteral("https://example.com/a?b=1"));
        QCOMPARE(rec.count(), 2);
    }

    void lifecycleInitialisesToolsBeforeAutoTest() {
        lxtest::TempProductRoot root;
        lxtest::LogCapture capture;
        lxuikit::Init_LxUiKit_AfterProcessStart_MainThread();
        QCOMPARE(devtools::IsInitialized(), devtools::IsAvailable());
        const int tools = capture.indexOf(QStringLiteral("developer tools initialised"));
        const int autoTest = capture.indexOf(QStringLiteral("UI auto-test:"));
        QVERIFY(autoTest >= 0);
        if (devtools::IsAvailable())
            QVERIFY(tools >= 0 && tools < autoTest);
        QVERIFY(!devtools::log::IsLogViewerStarted());
        lxuikit::Init_LxUiKit_AfterLoginWndShowed_MainThread();
        QCOMPARE(devtools::log::IsLogViewerStarted(), devtools::IsAvailable());
        lxuikit::Uninit_LxUiKit_OnProcessExit_MainThread();
    }

    void followsTheMainWindow() {
        CountingFlyout fly;
        fly.show();
        QCOMPARE(Send(LxFlyoutsWnd::kMsgMainWndHide), 1);
        QVERIFY(fly.isHidden());
        QVERIFY(fly.IsHiddenByApp());
        Send(LxFlyoutsWnd::kMsgMainWndRestore);
        Send(LxFlyoutsWnd::kMsgMainWndRestore);
        QVERIFY(fly.isVisible());
        QCOMPARE(fly.i32Shows, 2);  // once at first, once on the first restore only
        QVERIFY(!fly.IsHiddenByApp());
        // A panel the user closed is left alone.
        fly.hide();
        Send(LxFlyoutsWnd::kMsgMainWndHide);
        QVERIFY(!fly.IsHiddenByApp());
        Send(LxFlyoutsWnd::kMsgMainWndRestore);
        QVERIFY(fly.isHidden());
        QCOMPARE(fly.i32Shows, 2);

        fly.show();
        fly.SetHideOrRestoreFollowMainWnd(false);
        Send(LxFlyoutsWnd::kMsgMainWndHide);
        QVERIFY(fly.isVisible());

        lxtest::AssertRecorder rec;
        fly.OnMainWndMessage(20157);
        QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LxFlyoutsWnd"), QStringLiteral("0")));
    }

    void exitClosesWithLogLines() {
        auto* fly = new CountingFlyout;
        fly->show();
        lxtest::LogCapture log;
        Send(LxFlyoutsWnd::kMsgAppExit);
        QCOMPARE(fly->i32Exits, 1);
        QVERIFY(fly->isHidden());
        const int start = log.indexOf(QStringLiteral("LxFlyoutsWnd::OnMainWndMessage  OnAppExit  start. "));
        const int end = log.indexOf(QStringLiteral(" LxFlyoutsWnd::OnMainWndMessage  OnAppExit  end. "));
        QVERIFY(start >= 0 && end > start);
        QCOMPARE(QString::fromStdString(log.records()[size_t(start)].strFunction), QStringLiteral("OnMainWndMessage"));
        delete fly;  // a destroyed panel is never called again
        QCOMPARE(Send(LxFlyoutsWnd::kMsgAppExit), 0);
    }
};

QTEST_MAIN(TestLifecycle)
#include "tst_Lifecycle.moc"
