#pragma once
// Readers of the Linux /proc files the application listener samples, and one sampler that keeps
// the previous reading to turn counters into per-interval figures. The parsers take the file's
// text, so tests and the fuzz target feed them captured files.

#include <QByteArray>
#include <QString>

#include <cstdint>

struct CAppInformation;

namespace lxbusiness {
namespace proc {

// /proc/<pid>/stat: user and system CPU time in clock ticks (fields 14 and 15). The command name
// in field 2 may hold spaces and parentheses, so fields are counted after its last ')'.
bool ParseStat(const QByteArray& text, uint64_t* pUserTicks, uint64_t* pSystemTicks);
// /proc/<pid>/statm: resident pages (field 2).
bool ParseStatm(const QByteArray& text, uint64_t* pResidentPages);

struct IoCounters {
    uint64_t u64ReadChars = 0;   // rchar
    uint64_t u64WriteChars = 0;  // wchar
    uint64_t u64ReadCalls = 0;   // syscr
    uint64_t u64WriteCalls = 0;  // syscw
};
// /proc/<pid>/io: "name: value" lines; the four counters above must all be present.
bool ParseIo(const QByteArray& text, IoCounters* pOut);
// /proc/<pid>/net/netstat: a header line "IpExt: name name ..." followed by a value line
// "IpExt: n n ..."; reads InOctets and OutOctets.
bool ParseNetstat(const QByteArray& text, uint64_t* pInOctets, uint64_t* pOutOctets);

}  // namespace proc
}  // namespace lxbusiness

// Reads the files under one folder ("/proc/self" by default). A file that cannot be read or
// parsed yields zeros for its fields and one log line (once per file for the sampler's life).
class CProcSampler {
public:
    explicit CProcSampler(const QString& strRoot = QStringLiteral("/proc/self"));

    // Fills the /proc fields of `out` (CPU, memory, IO, network) for the time since the previous
    // call; the first call gives zeros for the interval fields.
    void Sample(qint64 i64NowMs, CAppInformation& out);

    // Reads from another folder from now on (the previous reading is kept for the deltas).
    void SetRoot(const QString& strRoot) { m_strRoot = strRoot; }

    // Reading failures logged so far (one per file at most).
    int FailureCount() const { return m_i32Failures; }

private:
    bool ReadFile(const char* name, QByteArray& text, unsigned bit);

    QString m_strRoot;
    unsigned m_u32Reported = 0;  // one bit per file already reported
    int m_i32Failures = 0;
    bool m_bHavePrev = false;
    qint64 m_i64PrevMs = 0;
    uint64_t m_u64PrevTicks = 0;
    lxbusiness::proc::IoCounters m_prevIo;
    bool m_bPrevIoOk = false;
    uint64_t m_u64PrevIn = 0;
    uint64_t m_u64PrevOut = 0;
    bool m_bPrevNetOk = false;
    bool m_bPrevCpuOk = false;
    qint64 m_i64RecvTotal = 0;
    qint64 m_i64SentTotal = 0;
    long m_lClockTicks;
    long m_lPageSize;
};
