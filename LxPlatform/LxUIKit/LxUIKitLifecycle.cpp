#include <LxUIKit/LxUIKitLifecycle.h>

#include <LxStdUI/SvgIconRenderer.h>
#include <LxUIKit/DevTools/AutoTest/UIAutoTestManager.h>
#include <LxUIKit/DevTools/Log/LxLogViewer.h>
#include <LxUIKit/DevTools/LxDevTools.h>

#include <QCoreApplication>

namespace lxuikit {

void Init_LxUiKit_AfterProcessStart_MainThread() {
    devtools::Init();
    CUIAutoTestManager::instance()->Init();
}

void Init_LxUiKit_AfterLoginWndShowed_MainThread() { devtools::log::StartLogViewer(); }

void Uninit_LxUiKit_OnProcessExit_MainThread() { CUIAutoTestManager::instance()->UnInit(); }

}  // namespace lxuikit

// The kit's icons are named relative to its resource root ("img/image_loading.svg").
static void lxuikit_register_resources_at_startup() {
    lx_ui_res::SvgIconRenderer::addSearchRoot(QStringLiteral(":/LxUIKit/"));
}
Q_COREAPP_STARTUP_FUNCTION(lxuikit_register_resources_at_startup)
