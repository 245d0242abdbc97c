#pragma once
// Posting work to the GUI thread. Safe from any thread; the task runs in the main event loop.
// A task that touches an object must guard it with a QPointer captured by value: the object may
// be gone when the task runs.

#include <LxCore/LxCoreExport.h>
#include <functional>

namespace core {
namespace post {

LXCORE_EXPORT void ToMain(std::function<void()> task);
LXCORE_EXPORT void ToMainDelay(std::function<void()> task, int i32DelayMs);

}  // namespace post
}  // namespace core
