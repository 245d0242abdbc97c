// The application listener's /proc readers on hostile text: stat, statm, io and net/netstat.
// Each input feeds all four; none may crash or read out of bounds, and a reader that accepts an
// input must report values it actually found.

#include <LxBusiness/ProcSampler_p.h>

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray text(reinterpret_cast<const char*>(data), int(size));
    uint64_t a = 1;
    uint64_t b = 2;
    if (lxbusiness::proc::ParseStat(text, &a, &b) && text.indexOf(')') < 0)
        std::abort();  // accepted without the command name's closing parenthesis
    lxbusiness::proc::ParseStatm(text, &a);
    lxbusiness::proc::IoCounters io;
    if (lxbusiness::proc::ParseIo(text, &io) && !text.contains("syscw"))
        std::abort();
    if (lxbusiness::proc::ParseNetstat(text, &a, &b) && !text.contains("OutOctets"))
        std::abort();
    return 0;
}
