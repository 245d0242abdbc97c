#pragma once
// CSafeFunction<Sig>: a callable paired with a guard object. It can be called only while the guard
// lives, so a callback handed to a longer-lived object never reaches into a destroyed owner.
// Without a guard it behaves as the plain callable.

#include <QObject>
#include <QPointer>

#include <functional>
#include <utility>

namespace core {

template <typename Sig>
class CSafeFunction;

template <typename R, typename... Args>
class CSafeFunction<R(Args...)> {
public:
    CSafeFunction() = default;
    CSafeFunction(std::function<R(Args...)> fn) : m_fn(std::move(fn)) {}
    CSafeFunction(const QObject* guard, std::function<R(Args...)> fn)
        : m_pGuard(const_cast<QObject*>(guard)), m_bGuarded(true), m_fn(std::move(fn)) {}

    // True when the function is set and, if guarded, the guard is still alive.
    bool IsCallable() const { return m_fn && (!m_bGuarded || !m_pGuard.isNull()); }
    explicit operator bool() const { return IsCallable(); }

    // Calls the function; returns a default R when it cannot be called.
    R operator()(Args... args) const {
        if (!IsCallable())
            return R();
        return m_fn(std::forward<Args>(args)...);
    }

private:
    QPointer<QObject> m_pGuard;
    bool m_bGuarded = false;
    std::function<R(Args...)> m_fn;
};

}  // namespace core
