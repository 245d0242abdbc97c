#pragma once
// Server time: the local clock plus an offset learnt from the server (0 until set).

#include <cstdint>

namespace core {
namespace time_date {

int64_t GetSvrTimeMillis();
void SetSvrTimeOffsetMillis(int64_t i64Offset);
// Convenience: records the offset from one server timestamp read now.
void SyncSvrTimeMillis(int64_t i64ServerNowMs);

}  // namespace time_date
}  // namespace core
