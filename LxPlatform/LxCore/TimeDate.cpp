#include <LxCore/TimeDate.h>

#include <QDateTime>

#include <atomic>

namespace core {
namespace time_date {
namespace {
std::atomic<int64_t> g_i64Offset{0};
}

int64_t GetSvrTimeMillis() { return QDateTime::currentMSecsSinceEpoch() + g_i64Offset.load(); }
void SetSvrTimeOffsetMillis(int64_t i64Offset) { g_i64Offset.store(i64Offset); }
void SyncSvrTimeMillis(int64_t i64ServerNowMs) {
    g_i64Offset.store(i64ServerNowMs - QDateTime::currentMSecsSinceEpoch());
}

}  // namespace time_date
}  // namespace core
