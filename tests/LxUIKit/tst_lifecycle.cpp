// Kit lifecycle, host delegates, the core start-up parameters and the auto-test plug-in.

#include <LxCore/CoreInit.h>
#include <LxCore/Environment.h>
#include <LxCore/IniWrapper.h>
#include <LxCore/ProductPath.h>
#include <LxCore/Scheme.h>
#include <LxStdUI/LDialog.h>
#include <LxUIKit/DevTools/AutoTest/UIAutoTestManager.h>
#include <LxUIKit/DevTools/Log/LxLogViewer.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/LUIKitReport.h>
#include <LxUIKit/LUIKitWebDelegate.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/LxUIKitLifecycle.h>

#include <QApplication>
#include <QtTest>

#include "LxTestSupport.h"

namespace {
QList<LDialog*> OpenDialogs() {
    QList<LDialog*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* d = qobject_cast<LDialog*>(w))
            if (d->isVisible())
                out << d;
    return out;
}
}  // namespace

class TestLifecycle : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void reportWithoutDelegateAsserts();
    void reportForwardsToTheLatestDelegate();
    void webDelegatesForwardOrAssert();
    void coreInitParamCarriesTheKitFunctions();
    void schemeFailureShowsTipDialogAndLogs();
    void lifecycleInitialisesToolsBeforeAutoTest();
    void autoTestPluginLoadsAndUnloads();
    void autoTestBadPluginIsLoggedNotFatal();
};

void TestLifecycle::reportWithoutDelegateAsserts() {
    lxtest::AssertRecorder rec;
    QVERIFY(!lxuikit_report::Report("evt", 1, Json::Value()));
    lxuikit_report::setReportDelegate({});
    QVERIFY(!lxuikit_report::Report("evt", 1, Json::Value()));
    QCOMPARE(rec.count(), 2);
    for (const auto& a : rec.asserts()) {
        QCOMPARE(a.strFile, std::string("LxPlatform/LxUIKit/LUIKitReport"));
        QCOMPARE(a.i32Line, 10);
        QCOMPARE(a.strExpression, std::string("false"));
        QCOMPARE(a.strModule, std::string("LxUIKit"));
    }
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
    lxuikit_report::setReportDelegate({});
}

void TestLifecycle::webDelegatesForwardOrAssert() {
    lxtest::AssertRecorder rec;
    lxuikit_web::SetRemoteDebugPort(9222);
    lxuikit_web::showWebView(QStringLiteral("https://example.com"));
    QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LUIKitWebDelegate"), QStringLiteral("false"), 12));
    QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LUIKitWebDelegate"), QStringLiteral("false"), 19));
    QCOMPARE(rec.count(), 2);

    int port = 0;
    QString url;
    lxuikit_web::setSetRemoteDebugPortDelegate([&](int p) { port = p; });
    lxuikit_web::setShowWebViewDelegate([&](const QString& u) { url = u; });
    lxuikit_web::SetRemoteDebugPort(9222);
    lxuikit_web::showWebView(QStringLiteral("https://example.com/a?b=1"));
    QCOMPARE(port, 9222);
    QCOMPARE(url, QStringLiteral("https://example.com/a?b=1"));
    QCOMPARE(rec.count(), 2);
    lxuikit_web::setSetRemoteDebugPortDelegate({});
    lxuikit_web::setShowWebViewDelegate({});
}

void TestLifecycle::coreInitParamCarriesTheKitFunctions() {
    lxtest::TempProductRoot root;
    const core::CoreInitParam param = gui::GetCoreInitParamVeryFirst();
    QVERIFY(param.fnExtractDir && param.fnCompressDir && param.fnCompressFiles && param.fnLoadSchemeUrlFailed);
    core::InitCore(param);

    // The core can now pack and unpack without linking the kit.
    lxtest::WriteFile(root.path() + QStringLiteral("/src/a.txt"), "A");
    lxtest::WriteFile(root.path() + QStringLiteral("/one.txt"), "1");
    QVERIFY(core::archive::CompressDir(root.path() + QStringLiteral("/src"), root.path() + QStringLiteral("/d.zip")));
    QVERIFY(core::archive::CompressFiles({root.path() + QStringLiteral("/one.txt")},
                                         root.path() + QStringLiteral("/f.zip")));
    QVERIFY(core::archive::ExtractDir(root.path() + QStringLiteral("/d.zip"), root.path() + QStringLiteral("/out")));
    QVERIFY(core::archive::ExtractDir(root.path() + QStringLiteral("/f.zip"), root.path() + QStringLiteral("/out")));
    QVERIFY(QFile::exists(root.path() + QStringLiteral("/out/src/a.txt")));
    QVERIFY(QFile::exists(root.path() + QStringLiteral("/out/one.txt")));
    core::InitCore(core::CoreInitParam());
}

void TestLifecycle::schemeFailureShowsTipDialogAndLogs() {
    core::lang::SetLanguageId(core::lang::kLangZhCN);
    lxtest::LogCapture capture;
    core::InitCore(gui::GetCoreInitParamVeryFirst());
    QWidget parent;
    parent.setGeometry(50, 50, 500, 400);
    parent.show();
    QVERIFY(!core::scheme::OpenUrl(QStringLiteral("lxunknown://page?id=1"), &parent));

    const QList<LDialog*> dialogs = OpenDialogs();
    QCOMPARE(dialogs.size(), 1);
    LDialog* dlg = dialogs.first();
    QCOMPARE(dlg->lxStyle(), 2);
    QCOMPARE(dlg->title(), QStringLiteral("提示"));
    QCOMPARE(dlg->content(), QStringLiteral("页面加载失败"));
    QCOMPARE(dlg->confirmText(), QStringLiteral("我知道了"));
    QVERIFY(dlg->isModal());
    QVERIFY(dlg->parent() == nullptr);
    QVERIFY(qAbs(dlg->geometry().center().x() - parent.geometry().center().x()) <= 3);
    QVERIFY(capture.hasExact(QStringLiteral("Load scheme url fail!!! url = lxunknown://page?id=1")));
    const auto records = capture.records();
    bool fromHelper = false;
    for (const auto& r : records)
        if (r.strText.startsWith(QStringLiteral("Load scheme url fail")))
            fromHelper = r.strFile == "LxPlatform/LxUIKit/LxGuiHelper.cpp" && r.strModule == "LxUIKit";
    QVERIFY(fromHelper);

    // A parent that is not a widget centres the dialog with no parent; closing deletes it.
    QPointer<LDialog> first = dlg;
    first->close();
    QTRY_VERIFY(first.isNull());
    QObject notAWidget;
    core::GetCoreInitParam().fnLoadSchemeUrlFailed(QStringLiteral("x://y"), &notAWidget);
    QCOMPARE(OpenDialogs().size(), 1);
    OpenDialogs().first()->close();
    core::InitCore(core::CoreInitParam());
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

void TestLifecycle::autoTestPluginLoadsAndUnloads() {
    lxtest::TempProductRoot root;
    CUIAutoTestManager* mgr = CUIAutoTestManager::instance();
    core::CIniWrapper(mgr->ConfigFilePath())
        .SetValue(QStringLiteral("AutoTest"), QStringLiteral("Plugin"), QStringLiteral(LX_TEST_AUTOTEST_PLUGIN));
    lxtest::LogCapture capture;
    lxuikit::Init_LxUiKit_AfterProcessStart_MainThread();
    QVERIFY(mgr->IsPluginLoaded());
    QCOMPARE(qApp->property("lx_autotest_state").toString(), QStringLiteral("started"));
    QVERIFY(capture.contains(QStringLiteral("started")));
    lxuikit::Uninit_LxUiKit_OnProcessExit_MainThread();
    QVERIFY(!mgr->IsPluginLoaded());
    QCOMPARE(qApp->property("lx_autotest_state").toString(), QStringLiteral("stopped"));
    QVERIFY(capture.contains(QStringLiteral("unloaded")));
}

void TestLifecycle::autoTestBadPluginIsLoggedNotFatal() {
    lxtest::TempProductRoot root;
    CUIAutoTestManager* mgr = CUIAutoTestManager::instance();
    // A file that is not a library, named relative to the settings folder.
    lxtest::WriteFile(core::product_path::GetSettingsDir() + QStringLiteral("/junk.so"), "not a library");
    core::CIniWrapper(mgr->ConfigFilePath())
        .SetValue(QStringLiteral("AutoTest"), QStringLiteral("Plugin"), QStringLiteral("junk.so"));
    lxtest::LogCapture capture;
    QVERIFY(!mgr->Init());
    QVERIFY(!mgr->IsPluginLoaded());
    QVERIFY(capture.contains(QStringLiteral("cannot load plug-in")));
    QVERIFY(capture.contains(QStringLiteral("junk.so")));
    mgr->UnInit();  // nothing loaded: nothing happens
}

QTEST_MAIN(TestLifecycle)
#include "tst_lifecycle.moc"
