#pragma once
// fmt formatters for the Qt string types, for the libraries' own log lines. Kept out of the
// installed headers: a host that defines its own would otherwise get a redefinition error.

#include <fmt/format.h>
#include <QByteArray>
#include <QString>

template <>
struct fmt::formatter<QString> : fmt::formatter<fmt::string_view> {
    template <typename Ctx>
    auto format(const QString& s, Ctx& ctx) const -> decltype(ctx.out()) {
        const QByteArray utf8 = s.toUtf8();
        return fmt::formatter<fmt::string_view>::format(fmt::string_view(utf8.constData(), size_t(utf8.size())), ctx);
    }
};
template <>
struct fmt::formatter<QByteArray> : fmt::formatter<fmt::string_view> {
    template <typename Ctx>
    auto format(const QByteArray& s, Ctx& ctx) const -> decltype(ctx.out()) {
        return fmt::formatter<fmt::string_view>::format(fmt::string_view(s.constData(), size_t(s.size())), ctx);
    }
};
