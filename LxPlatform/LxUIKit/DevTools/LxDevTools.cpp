#include <LxUIKit/DevTools/LxDevTools.h>

#include <LxCore/LxLog.h>

namespace devtools {
namespace {
bool g_bInitialized = false;
}

bool Init() {
    if (!IsAvailable())
        return false;
    if (g_bInitialized)
        return true;
    LX_ASSERT_MAIN_THREAD("LxUIKit");
    g_bInitialized = true;
    LXUIKIT_LOG_INFO("developer tools initialised");
    return true;
}

bool IsInitialized() { return g_bInitialized; }

}  // namespace devtools
