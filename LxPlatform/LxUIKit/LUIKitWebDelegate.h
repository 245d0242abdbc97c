#pragma once
// Web view and remote-debugging delegates toward the host's web engine.

#include <LxUIKit/LxUIKitExport.h>
#include <QString>

#include <functional>

namespace lxuikit_web {

LXUIKIT_EXPORT void setSetRemoteDebugPortDelegate(std::function<void(int)> delegate);
LXUIKIT_EXPORT void setShowWebViewDelegate(std::function<void(const QString&)> delegate);

// Forward to the delegates; without one, an assertion and nothing else.
LXUIKIT_EXPORT void SetRemoteDebugPort(int port);
LXUIKIT_EXPORT void showWebView(const QString& url);

}  // namespace lxuikit_web
