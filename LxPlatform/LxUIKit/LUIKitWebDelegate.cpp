#include <LxUIKit/LUIKitWebDelegate.h>

#include <LxUIKit/LxUIKitLog_p.h>

namespace lxuikit_web {
static std::function<void(int)> g_fnRemoteDebugPort;
static std::function<void(const QString&)> g_fnShowWebView;
// Without a delegate each call asserts and does nothing.

void SetRemoteDebugPort(int port) {
    if (!g_fnRemoteDebugPort) {
        LXUIKIT_ASSERT_AT(false, 12);
        return;
    }
    g_fnRemoteDebugPort(port);
}
void showWebView(const QString& url) {
    if (!g_fnShowWebView) {
        LXUIKIT_ASSERT_AT(false, 19);
        return;
    }
    g_fnShowWebView(url);
}

void setSetRemoteDebugPortDelegate(std::function<void(int)> delegate) { g_fnRemoteDebugPort = std::move(delegate); }

void setShowWebViewDelegate(std::function<void(const QString&)> delegate) { g_fnShowWebView = std::move(delegate); }

}  // namespace lxuikit_web
