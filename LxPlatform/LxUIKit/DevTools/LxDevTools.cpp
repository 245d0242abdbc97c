#include <LxUIKit/DevTools/LxDevTools.h>

#include <LxUIKit/LxUIKitLog_p.h>

namespace devtools {
namespace {
bool g_bInitialized = false;
}

bool Init() {
    if (!IsAvailable())
        return false;
    if (g_bInitialized)
        return true;
    LXUIKIT_ASSERT_MAIN_THREAD();
    g_bInitialized = true;
    LXUIKIT_LOG_INFO("developer tools initialised");
    return true;
}

bool IsInitialized() { return g_bInitialized; }

}  // namespace devtools
