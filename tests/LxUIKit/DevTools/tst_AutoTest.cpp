// The UI auto-test manager: a plug-in named in its settings loads with the kit and unloads with
// it; a file that is no plug-in is logged and the kit goes on.

#include <LxCore/IniWrapper.h>
#include <LxCore/ProductPath.h>
#include <LxUIKit/DevTools/AutoTest/UIAutoTestManager.h>
#include <LxUIKit/LxUIKitLifecycle.h>

#include <QApplication>
#include <QtTest>

#include "LxTestSupport.h"

class TestAutoTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void badPluginIsLoggedGoodOneLoadsAndUnloads() {
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

        core::CIniWrapper(mgr->ConfigFilePath())
            .SetValue(QStringLiteral("AutoTest"), QStringLiteral("Plugin"), QStringLiteral(LX_TEST_AUTOTEST_PLUGIN));
        capture.clear();
        lxuikit::Init_LxUiKit_AfterProcessStart_MainThread();
        QVERIFY(mgr->IsPluginLoaded());
        QCOMPARE(qApp->property("lx_autotest_state").toString(), QStringLiteral("started"));
        QVERIFY(capture.contains(QStringLiteral("started")));
        lxuikit::Uninit_LxUiKit_OnProcessExit_MainThread();
        QVERIFY(!mgr->IsPluginLoaded());
        QCOMPARE(qApp->property("lx_autotest_state").toString(), QStringLiteral("stopped"));
        QVERIFY(capture.contains(QStringLiteral("unloaded")));
    }
};

QTEST_MAIN(TestAutoTest)
#include "tst_AutoTest.moc"
