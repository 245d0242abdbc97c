#include <LxBusiness/ProcSampler_p.h>

#include <LxBusiness/AppListenerManager.h>
#include <LxBusiness/LxBusinessLog_p.h>

#include <QFile>
#include <QList>

#include <unistd.h>

namespace lxbusiness {
namespace proc {
namespace {

bool ToU64(const QByteArray& field, uint64_t* out) {
    bool ok = false;
    const qulonglong v = field.toULongLong(&ok);
    if (ok)
        *out = v;
    return ok;
}

}  // namespace

bool ParseStat(const QByteArray& text, uint64_t* pUserTicks, uint64_t* pSystemTicks) {
    const int close = text.lastIndexOf(')');
    if (close < 0)
        return false;
    const QList<QByteArray> fields = text.mid(close + 1).simplified().split(' ');
    // fields[0] is field 3 (state), so fields 14 and 15 sit at 11 and 12.
    if (fields.size() < 13)
        return false;
    uint64_t user = 0;
    uint64_t system = 0;
    if (!ToU64(fields[11], &user) || !ToU64(fields[12], &system))
        return false;
    *pUserTicks = user;
    *pSystemTicks = system;
    return true;
}

bool ParseStatm(const QByteArray& text, uint64_t* pResidentPages) {
    const QList<QByteArray> fields = text.simplified().split(' ');
    return fields.size() >= 2 && ToU64(fields[1], pResidentPages);
}

bool ParseIo(const QByteArray& text, IoCounters* pOut) {
    IoCounters io;
    unsigned found = 0;
    const auto lines = text.split('\n');
    for (const QByteArray& line : lines) {
        const int colon = line.indexOf(':');
        if (colon <= 0)
            continue;
        const QByteArray name = line.left(colon).trimmed();
        uint64_t value = 0;
        if (!ToU64(line.mid(colon + 1).trimmed(), &value))
            continue;
        if (name == "rchar") {
            io.u64ReadChars = value;
            found |= 1;
        } else if (name == "wchar") {
            io.u64WriteChars = value;
            found |= 2;
        } else if (name == "syscr") {
            io.u64ReadCalls = value;
            found |= 4;
        } else if (name == "syscw") {
            io.u64WriteCalls = value;
            found |= 8;
        }
    }
    if (found != 15)
        return false;
    *pOut = io;
    return true;
}

bool ParseNetstat(const QByteArray& text, uint64_t* pInOctets, uint64_t* pOutOctets) {
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i + 1 < lines.size(); ++i) {
        if (!lines[i].startsWith("IpExt:") || !lines[i + 1].startsWith("IpExt:"))
            continue;
        const QList<QByteArray> names = lines[i].simplified().split(' ');
        const QList<QByteArray> values = lines[i + 1].simplified().split(' ');
        if (names.size() != values.size())
            return false;
        const int in = names.indexOf("InOctets");
        const int out = names.indexOf("OutOctets");
        uint64_t vin = 0;
        uint64_t vout = 0;
        if (in <= 0 || out <= 0 || !ToU64(values[in], &vin) || !ToU64(values[out], &vout))
            return false;
        *pInOctets = vin;
        *pOutOctets = vout;
        return true;
    }
    return false;
}

}  // namespace proc
}  // namespace lxbusiness

using namespace lxbusiness::proc;

CProcSampler::CProcSampler(const QString& strRoot)
    : m_strRoot(strRoot), m_lClockTicks(sysconf(_SC_CLK_TCK)), m_lPageSize(sysconf(_SC_PAGESIZE)) {
    if (m_lClockTicks <= 0)
        m_lClockTicks = 100;
    if (m_lPageSize <= 0)
        m_lPageSize = 4096;
}

bool CProcSampler::ReadFile(const char* name, QByteArray& text, unsigned bit) {
    QFile file(m_strRoot + QLatin1Char('/') + QLatin1String(name));
    // /proc files report size 0: read until the end rather than by size. Bounded: these files
    // are small, a huge one is not what we expect.
    if (file.open(QIODevice::ReadOnly))
        text = file.read(qint64(64) * 1024);
    if (file.isOpen() && !text.isEmpty())
        return true;
    if (!(m_u32Reported & bit)) {
        m_u32Reported |= bit;
        ++m_i32Failures;
        LXBUSINESS_LOG_WARN("cannot read {}: {}; its figures read 0", file.fileName(), file.errorString());
    }
    return false;
}

void CProcSampler::Sample(qint64 i64NowMs, CAppInformation& out) {
    const double seconds = m_bHavePrev && i64NowMs > m_i64PrevMs ? double(i64NowMs - m_i64PrevMs) / 1000.0 : 0.0;
    auto parseFailed = [this](const char* name, unsigned bit) {
        if (!(m_u32Reported & bit)) {
            m_u32Reported |= bit;
            ++m_i32Failures;
            LXBUSINESS_LOG_WARN("cannot parse {}/{}; its figures read 0", m_strRoot, name);
        }
    };

    QByteArray text;
    uint64_t user = 0;
    uint64_t system = 0;
    bool cpuOk = false;
    if (ReadFile("stat", text, 1)) {
        cpuOk = ParseStat(text, &user, &system);
        if (!cpuOk)
            parseFailed("stat", 1);
    }
    const uint64_t ticks = user + system;
    if (cpuOk && m_bPrevCpuOk && seconds > 0 && ticks >= m_u64PrevTicks)
        out.dCpuPercent = double(ticks - m_u64PrevTicks) / double(m_lClockTicks) / seconds * 100.0;
    m_bPrevCpuOk = cpuOk;
    m_u64PrevTicks = ticks;

    text.clear();
    uint64_t pages = 0;
    if (ReadFile("statm", text, 2)) {
        if (ParseStatm(text, &pages))
            out.dMemoryMB = double(pages) * double(m_lPageSize) / (1024.0 * 1024.0);
        else
            parseFailed("statm", 2);
    }

    text.clear();
    IoCounters io;
    bool ioOk = false;
    if (ReadFile("io", text, 4)) {
        ioOk = ParseIo(text, &io);
        if (!ioOk)
            parseFailed("io", 4);
    }
    if (ioOk && m_bPrevIoOk) {
        // Counters only grow; a smaller value means a reset: count nothing for that interval.
        auto delta = [](uint64_t now, uint64_t prev) { return now >= prev ? qint64(now - prev) : qint64(0); };
        out.i64IOReadTimes = delta(io.u64ReadCalls, m_prevIo.u64ReadCalls);
        out.i64IOWriteTimes = delta(io.u64WriteCalls, m_prevIo.u64WriteCalls);
        out.i64IOReadBytes = delta(io.u64ReadChars, m_prevIo.u64ReadChars);
        out.i64IOWriteBytes = delta(io.u64WriteChars, m_prevIo.u64WriteChars);
    }
    m_bPrevIoOk = ioOk;
    m_prevIo = io;

    text.clear();
    uint64_t in = 0;
    uint64_t outOctets = 0;
    bool netOk = false;
    if (ReadFile("net/netstat", text, 8)) {
        netOk = ParseNetstat(text, &in, &outOctets);
        if (!netOk)
            parseFailed("net/netstat", 8);
    }
    if (netOk && m_bPrevNetOk) {
        const qint64 recv = in >= m_u64PrevIn ? qint64(in - m_u64PrevIn) : 0;
        const qint64 sent = outOctets >= m_u64PrevOut ? qint64(outOctets - m_u64PrevOut) : 0;
        m_i64RecvTotal += recv;
        m_i64SentTotal += sent;
        if (seconds > 0) {
            out.dTcpRecvKBps = double(recv) / 1024.0 / seconds;
            out.dTcpSentKBps = double(sent) / 1024.0 / seconds;
        }
    }
    m_bPrevNetOk = netOk;
    m_u64PrevIn = in;
    m_u64PrevOut = outOctets;
    out.i64TcpRecvBytes = m_i64RecvTotal;
    out.i64TcpSentBytes = m_i64SentTotal;

    m_bHavePrev = true;
    m_i64PrevMs = i64NowMs;
}
