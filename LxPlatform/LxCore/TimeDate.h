#pragma once
// Server time: the local clock plus an offset learnt from the server (0 until set).

#include <LxCore/LxCoreExport.h>
#include <cstdint>

namespace core {
namespace time_date {

LXCORE_EXPORT int64_t GetSvrTimeMillis();
LXCORE_EXPORT void SetSvrTimeOffsetMillis(int64_t i64Offset);
// Convenience: records the offset from one server timestamp read now.
LXCORE_EXPORT void SyncSvrTimeMillis(int64_t i64ServerNowMs);

}  // namespace time_date
}  // namespace core
