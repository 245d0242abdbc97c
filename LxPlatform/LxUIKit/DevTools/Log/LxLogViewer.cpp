#include <LxUIKit/DevTools/Log/LxLogViewer.h>

#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/LxUIKitLog_p.h>

namespace devtools {
namespace log {
namespace {
bool g_bStarted = false;
}

void StartLogViewer() {
    if (!devtools::IsAvailable() || g_bStarted)
        return;
    g_bStarted = true;
    LXUIKIT_LOG_INFO("log viewer started");
}

bool IsLogViewerStarted() { return g_bStarted; }

}  // namespace log
}  // namespace devtools
