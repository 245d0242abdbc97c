#pragma once
// Logging and soft-assertion macros, with the module named at each use. Nobody calls WriteLogRaw
// or _FW_OnAssertFailed by hand, so file, line and function are always right.
//
//   LX_LOG_INFO("MyHost", "{} rows", count);
//   LX_ASSERT_RETURN("MyHost", m_pLayout, false);
//
// Arguments are formatted with fmt "{}" patterns. This header teaches fmt nothing about Qt types:
// a host that logs QString values adds its own fmt::formatter (the libraries keep theirs private,
// so they never clash with a host's). Each library of the kit has its own family of these macros
// that names the library as the module.

#include <LxCore/FrameWork.h>

#include <fmt/format.h>

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

// Raises the soft assertion and returns from the calling function (with the value given, if any).
#define LX_ASSERT_RETURN(module, cond, ...) \
    do {                                    \
        if (!LX_ASSERT(module, cond))       \
            return __VA_ARGS__;             \
    } while (0)

#define LX_ASSERT_MAIN_THREAD(module) ::FrameWork::_FW_AssertInMainThread((module), __FILE__, __LINE__)
