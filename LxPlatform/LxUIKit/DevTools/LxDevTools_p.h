#pragma once
// Internals of the developer tools entry, reachable by the tests.
#include <LxCore/FrameWork.h>

class QEvent;
class QObject;

namespace devtools {
namespace detail {

// What the application-wide shortcut filter does with one event, for a given availability of the
// tools: true when the event is consumed.
bool FilterApplicationEvent(QObject* obj, QEvent* ev, bool bAvailable);

// The log hook Init() installs: empty records skipped, the log viewer first, then the auto-test
// callback.
void OnLogRecord(const FrameWork::LogContext& ctx);

}  // namespace detail
}  // namespace devtools
