// The kit's lifecycle calls and the host delegates for reports and web views.

#include <LxUIKit/DevTools/Log/LxLogViewer.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/LUIKitReport.h>
#include <LxUIKit/LUIKitWebDelegate.h>
#include <LxUIKit/LxUIKitLifecycle.h>

#include <QtTest>

#include "LxTestSupport.h"

class TestLifecycle : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void reportWithoutDelegateAsserts();
    void reportForwardsToTheLatestDelegate();
    void webDelegatesForwardOrAssert();
    void lifecycleInitialisesToolsBeforeAutoTest();
};

void TestLifecycle::reportWithoutDelegateAsserts() {
    lxtest::AssertRecorder rec;
    QVERIFY(!lxuikit_report::Report("evt", 1, Json::Value()));
    lxuikit_report::setReportDelegate({});
    QVERIFY(!lxuikit_report::Report("evt", 1, Json::Value()));
    QCOMPARE(rec.count(), 2);
    QCOMPARE(rec.asserts().front().strModule, std::string("LxUIKit"));
}

void TestLifecycle::reportForwardsToTheLatestDelegate() {
    lxtest::AssertRecorder rec;
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
    QCOMPARE(rec.count(), 0);
}

void TestLifecycle::webDelegatesForwardOrAssert() {
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

void TestLifecycle::lifecycleInitialisesToolsBeforeAutoTest() {
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

QTEST_MAIN(TestLifecycle)
#include "tst_Lifecycle.moc"
