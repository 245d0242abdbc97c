#pragma once
// Log viewer entry point, started once the host's login window has shown.

namespace devtools {
namespace log {

// Marks the log viewer as started (once). With the developer tools gated off it does nothing.
void StartLogViewer();
bool IsLogViewerStarted();

}  // namespace log
}  // namespace devtools
