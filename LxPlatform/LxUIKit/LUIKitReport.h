#pragma once
// Event reporting toward the host. The host installs one delegate; Report forwards to it.

#include <LxUIKit/LxUIKitExport.h>
#include <json/value.h>

#include <functional>
#include <string>

namespace lxuikit_report {

using ReportDelegate = std::function<bool(const std::string& event, int value, const Json::Value& params)>;

// Replaces (and destroys) the delegate held before; an empty function clears the slot.
LXUIKIT_EXPORT void setReportDelegate(ReportDelegate delegate);
// Forwards to the delegate and returns its answer; false (after an assertion) without one.
LXUIKIT_EXPORT bool Report(const std::string& event, int value, const Json::Value& params);

}  // namespace lxuikit_report
