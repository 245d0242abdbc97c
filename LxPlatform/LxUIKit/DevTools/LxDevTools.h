#pragma once
// Developer tools entry: the Ctrl+F9 developer tools window (the log viewer with its tabs), the
// Ctrl+F10 widget inspector, the log hook that feeds the viewer, and the watch for parentless
// non-window widgets shown by mistake.
//
// The tools are compiled in only when the build's developer-tools gate is on (the default and test
// builds). In a release build IsAvailable() is the constant false: Init() installs nothing and
// AddCustomTab() ignores its arguments. The gate is a compile-time constant on purpose, so a shipped
// build has no way to switch the tools on at run time.
#include <LxCore/FrameWork.h>
#include <LxCore/SafeFunction.h>
#include <LxUIKit/DevTools/Spy/LxSpyEntry.h>
#include <LxUIKit/DevTools/Spy/LxUISpyReporter.h>
#include <LxUIKit/LxUIKitBuildConfig.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QString>

#include <functional>

class QWidget;

namespace devtools {

constexpr bool IsAvailable() { return LX_DEVTOOLS_ENABLED != 0; }

// Installs the shortcut filter on the application, creates the developer tools window (showing it
// when the user chose to open it automatically), adds its tabs and hooks the log output. Main
// thread, once; later calls do nothing.
LXUIKIT_EXPORT void Init();
// Whether Init() has installed the tools.
LXUIKIT_EXPORT bool IsInitialized();

// Adds a tab to the developer tools window. The factory makes a new parentless widget when the tab
// is first opened; the window owns it. Ignored when the tools are not available.
LXUIKIT_EXPORT void AddCustomTab(const QString& title, core::CSafeFunction<QWidget*()> factory);

// Turns the inspector's pick reports on or off (ILxUISpyReporter::SetEnabled). Not gated: it works
// in every build.
LXUIKIT_EXPORT void SetReportEnabled(bool enabled);

namespace fps {
// Opens the FPS monitor (one dialog per process). Not gated: the monitor is useful on its own.
LXUIKIT_EXPORT void ShowFpsMonitor();
}  // namespace fps

namespace scheme {
// Registers the handler for scheme URLs no module takes: a localised "page failed to load" message
// box and a log line. Called by the host; not gated.
LXUIKIT_EXPORT void InitSchemeFunction();
}  // namespace scheme

namespace auto_test {
// Replaces the callback that receives every non-empty log record after the log viewer did (on the
// main thread: records of other threads are handed over to it). Main thread only.
LXUIKIT_EXPORT void InitAutoTestFunction(std::function<void(const FrameWork::LogContext&)> cb);
}  // namespace auto_test

}  // namespace devtools
