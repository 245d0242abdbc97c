#pragma once
// Log viewer entry point, started once the host's login window has shown.
#include <LxUIKit/LxUIKitExport.h>

namespace devtools {
namespace log {

// Marks the log viewer as started (once). With the developer tools gated off it does nothing.
LXUIKIT_EXPORT void StartLogViewer();
LXUIKIT_EXPORT bool IsLogViewerStarted();

}  // namespace log
}  // namespace devtools
