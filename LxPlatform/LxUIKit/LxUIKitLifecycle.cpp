#include <LxUIKit/LxUIKitLifecycle.h>

#include <LxUIKit/DevTools/AutoTest/UIAutoTestManager.h>
#include <LxUIKit/DevTools/Log/LxLogViewer.h>
#include <LxUIKit/DevTools/LxDevTools.h>

namespace lxuikit {

void Init_LxUiKit_AfterProcessStart_MainThread() {
    devtools::Init();
    CUIAutoTestManager::instance()->Init();
}

void Init_LxUiKit_AfterLoginWndShowed_MainThread() { devtools::log::StartLogViewer(); }

void Uninit_LxUiKit_OnProcessExit_MainThread() { CUIAutoTestManager::instance()->UnInit(); }

}  // namespace lxuikit
