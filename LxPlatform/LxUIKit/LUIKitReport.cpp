#include <LxUIKit/LUIKitReport.h>

#include <LxUIKit/LxUIKitLog_p.h>

namespace lxuikit_report {
namespace {
// The process-wide slot, made on first use so loading the library runs no constructor.
ReportDelegate& Delegate() {
    static ReportDelegate s_fnDelegate;
    return s_fnDelegate;
}
}  // namespace

bool Report(const std::string& event, int value, const Json::Value& params) {
    const ReportDelegate& delegate = Delegate();
    if (!delegate) {
        LXUIKIT_ASSERT_AT(false, 10);
        return false;
    }
    return delegate(event, value, params);
}

void setReportDelegate(ReportDelegate delegate) { Delegate() = std::move(delegate); }

}  // namespace lxuikit_report
