#include <LxUIKit/DevTools/Log/LxLogViewer.h>

#include <LxUIKit/DevTools/LxDevTools.h>

namespace devtools {
namespace log {
namespace {
bool g_bStarted = false;
}

void StartLogViewer() {
    // The viewer itself is started by devtools::Init() and by Ctrl+F9; this only notes that the
    // host reached the point where it would start.
    if (devtools::IsAvailable())
        g_bStarted = true;
}

bool IsLogViewerStarted() { return g_bStarted; }

}  // namespace log
}  // namespace devtools
