#pragma once
// The kit's lifecycle, driven by the host on the GUI thread.
#include <LxUIKit/LxUIKitExport.h>

namespace lxuikit {

// Once, right after the process started: developer tools, then the UI auto-test manager.
LXUIKIT_EXPORT void Init_LxUiKit_AfterProcessStart_MainThread();
// Once, after the host's login window has shown: starts the log viewer.
LXUIKIT_EXPORT void Init_LxUiKit_AfterLoginWndShowed_MainThread();
// Once, at exit: stops the UI auto-test manager.
LXUIKIT_EXPORT void Uninit_LxUiKit_OnProcessExit_MainThread();

}  // namespace lxuikit
