#include <LxUIKit/LUIKitReport.h>

#include <LxUIKit/LxUIKitLog_p.h>

namespace lxuikit_report {
static ReportDelegate g_fnReportDelegate;  // the process-wide slot

bool Report(const std::string& event, int value, const Json::Value& params) {
    if (!g_fnReportDelegate) {
        LXUIKIT_ASSERT_AT(false, 10);
        return false;
    }
    return g_fnReportDelegate(event, value, params);
}

void setReportDelegate(ReportDelegate delegate) { g_fnReportDelegate = std::move(delegate); }

}  // namespace lxuikit_report
