#pragma once
// Developer tools entry. The tools are compiled in only when the build's developer-tools gate is
// on (the default and test builds); in a release build IsAvailable() is the constant false and
// Init() does nothing.
#include <LxUIKit/LxUIKitBuildConfig.h>
#include <LxUIKit/LxUIKitExport.h>

namespace devtools {

constexpr bool IsAvailable() { return LX_DEVTOOLS_ENABLED != 0; }

// Installs the developer tools into the running application (once; later calls do nothing).
// Returns whether the tools are installed after the call.
LXUIKIT_EXPORT bool Init();
LXUIKIT_EXPORT bool IsInitialized();

}  // namespace devtools
