#pragma once
// Log viewer entry point the host calls once its login window has shown. The viewer is started by
// devtools::Init() and by Ctrl+F9, so this entry does no work of its own; it is kept for hosts.
#include <LxUIKit/LxUIKitExport.h>

namespace devtools {
namespace log {

LXUIKIT_EXPORT void StartLogViewer();
// Whether StartLogViewer() was called in a build with the developer tools.
LXUIKIT_EXPORT bool IsLogViewerStarted();

}  // namespace log
}  // namespace devtools
