#pragma once
// Web view and remote-debugging delegates toward the host's web engine.

#include <QString>

#include <functional>

namespace lxuikit_web {

void setSetRemoteDebugPortDelegate(std::function<void(int)> delegate);
void setShowWebViewDelegate(std::function<void(const QString&)> delegate);

// Forward to the delegates; without one, an assertion and nothing else.
void SetRemoteDebugPort(int port);
void showWebView(const QString& url);

}  // namespace lxuikit_web
