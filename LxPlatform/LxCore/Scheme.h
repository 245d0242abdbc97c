#pragma once
// Scheme URLs ("lx://stock?id=1", "https://...") opened from text, buttons and web pages.
// A handler is registered per scheme; a URL whose scheme has no handler, or whose handler answers
// false, goes to the unknown-scheme callback (the kit shows a "page failed to load" dialog there).

#include <LxCore/LxCoreExport.h>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

namespace core {
namespace scheme {

using UnknownSchemeCallback = std::function<void(const QString& url, QObject* parent)>;
using SchemeHandler = std::function<bool(const QUrl& url, QObject* parent)>;

// Replaces the callback; an empty function removes it.
LXCORE_EXPORT void RegisterUnknowSchemeCallBack(UnknownSchemeCallback callback);
// Scheme names are compared case-insensitively. An empty handler unregisters.
LXCORE_EXPORT void RegisterSchemeHandler(const QString& scheme, SchemeHandler handler);
// Returns true when a handler took the URL.
LXCORE_EXPORT bool OpenUrl(const QString& url, QObject* parent = nullptr);

}  // namespace scheme
}  // namespace core
