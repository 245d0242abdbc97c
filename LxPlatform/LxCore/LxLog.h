#pragma once
// Logging and soft-assertion macros. Every library uses these; nobody calls WriteLogRaw or
// _FW_OnAssertFailed by hand, so file, line and function are always right.
//
//   LX_LOG_INFO("LxUIKit", "url = {}", url);
//   LXUIKIT_LOG_WARN("file {} missing", path);
//   LXUIKIT_ASSERT_RETURN(m_pLayout, false);
//
// fmt formats QString arguments (see the formatter below).

#include <LxCore/FrameWork.h>

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

namespace lx_log_detail {
// Formats without ever throwing: a bad pattern becomes a visible marker instead of an exception.
template <typename... Args>
std::string Format(fmt::string_view pattern, const Args&... args) noexcept {
    try {
        return fmt::vformat(pattern, fmt::make_format_args(args...));
    } catch (...) {
        return std::string("<bad log format> ") + std::string(pattern.data(), pattern.size());
    }
}
}  // namespace lx_log_detail

#define LX_LOG(level, module, ...) \
    ::FrameWork::WriteLogRaw(__FILE__, __LINE__, __FUNCTION__, (level), (module), ::lx_log_detail::Format(__VA_ARGS__))

#define LX_LOG_DEBUG(module, ...) LX_LOG(::FrameWork::kLogDebug, module, __VA_ARGS__)
#define LX_LOG_INFO(module, ...) LX_LOG(::FrameWork::kLogInfo, module, __VA_ARGS__)
#define LX_LOG_WARN(module, ...) LX_LOG(::FrameWork::kLogWarning, module, __VA_ARGS__)
#define LX_LOG_ERROR(module, ...) LX_LOG(::FrameWork::kLogError, module, __VA_ARGS__)

#define LXUIKIT_LOG_DEBUG(...) LX_LOG_DEBUG("LxUIKit", __VA_ARGS__)
#define LXUIKIT_LOG_INFO(...) LX_LOG_INFO("LxUIKit", __VA_ARGS__)
#define LXUIKIT_LOG_WARN(...) LX_LOG_WARN("LxUIKit", __VA_ARGS__)
#define LXUIKIT_LOG_ERROR(...) LX_LOG_ERROR("LxUIKit", __VA_ARGS__)

// Raises the soft assertion with the literal expression text; evaluates to the condition.
#define LX_ASSERT(module, cond) \
    (static_cast<bool>(cond) ? true : (::FrameWork::_FW_OnAssertFailed((module), __FILE__, __LINE__, #cond), false))
// Same, with an expression text given explicitly (when the text must differ from the code).
#define LX_ASSERT_TEXT(module, cond, text) \
    (static_cast<bool>(cond) ? true : (::FrameWork::_FW_OnAssertFailed((module), __FILE__, __LINE__, (text)), false))

// Same, reporting a line given by the caller: for assertions whose reported line is part of the
// documented behaviour, so that editing the file around them cannot move it.
#define LX_ASSERT_AT(module, cond, line) \
    (static_cast<bool>(cond) ? true : (::FrameWork::_FW_OnAssertFailed((module), __FILE__, (line), #cond), false))

#define LXUIKIT_ASSERT(cond) LX_ASSERT("LxUIKit", cond)
#define LXUIKIT_ASSERT_AT(cond, line) LX_ASSERT_AT("LxUIKit", cond, line)
#define LXUIKIT_ASSERT_RETURN(cond, ...) \
    do {                                 \
        if (!LXUIKIT_ASSERT(cond))       \
            return __VA_ARGS__;          \
    } while (0)

#define LX_ASSERT_MAIN_THREAD(module) ::FrameWork::_FW_AssertInMainThread((module), __FILE__, __LINE__)
