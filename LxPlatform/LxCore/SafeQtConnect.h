#pragma once
// A connect that must not fail: when Qt refuses the connection the core's soft assertion fires
// with the expression "connection". Prefer LX_SAFE_CONNECT_IN(module, ...), which reports the
// caller's module, file and line; core::SafeQtConnect reports the kit's module and this header's
// file and line.

#include <LxCore/LxLog.h>

#include <QObject>

#include <utility>

namespace core {

template <typename... Args>
QMetaObject::Connection SafeQtConnectAt(const char* module, const char* file, int line, Args&&... args) {
    QMetaObject::Connection c = QObject::connect(std::forward<Args>(args)...);
    if (!c)
        ::FrameWork::_FW_OnAssertFailed(module, file, line, "connection");
    return c;
}

template <typename... Args>
QMetaObject::Connection SafeQtConnect(Args&&... args) {
    return SafeQtConnectAt("LxUIKit", __FILE__, __LINE__, std::forward<Args>(args)...);
}

}  // namespace core

#define LX_SAFE_CONNECT_IN(module, ...) ::core::SafeQtConnectAt((module), __FILE__, __LINE__, __VA_ARGS__)
