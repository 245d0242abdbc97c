#include <LxCore/Scheme.h>

#include <LxCore/LxCoreLog_p.h>

#include <QHash>

namespace core {
namespace scheme {
namespace {
struct Registry {
    UnknownSchemeCallback unknown;
    QHash<QString, SchemeHandler> handlers;
};
Registry& Reg() {
    static Registry r;
    return r;
}
}  // namespace

void RegisterUnknowSchemeCallBack(UnknownSchemeCallback callback) { Reg().unknown = std::move(callback); }

void RegisterSchemeHandler(const QString& scheme, SchemeHandler handler) {
    const QString key = scheme.toLower();
    if (handler)
        Reg().handlers[key] = std::move(handler);
    else
        Reg().handlers.remove(key);
}

bool OpenUrl(const QString& url, QObject* parent) {
    const QUrl parsed(url, QUrl::StrictMode);
    const QString scheme = parsed.isValid() ? parsed.scheme().toLower() : QString();
    // Copy: a handler may register or unregister handlers while it runs.
    const SchemeHandler handler = Reg().handlers.value(scheme);
    if (handler && handler(parsed, parent))
        return true;
    LXCORE_LOG_WARN("no handler opened url {} (scheme \"{}\")", url, scheme);
    const UnknownSchemeCallback unknown = Reg().unknown;
    if (unknown)
        unknown(url, parent);
    return false;
}

}  // namespace scheme
}  // namespace core
