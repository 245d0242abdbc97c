// Zip helpers beside the zip tools, in the same run, on the same folder: many small log files and
// one large one (log-like text, several hundred MB), made in a temporary folder.
//
//   _zip::CompressDir   vs  zip -qr          (Info-ZIP, its default level)
//   _zip::ExtractDir    vs  unzip -qo
//
// Printed for each: wall time, CPU time, peak resident memory above the memory in use when the
// step began (the kit runs in a forked copy of this process; each tool is its own process, measured
// from zero), the archive size, and kit / tool ratios. Each step runs `rounds` times and the
// fastest is kept. The kit's archive is also checked with `unzip -tq`.
// With big-gib > 0, a sparse file of that many GiB of zeros is packed and unpacked as well (Zip64
// past 4 GiB), its archive checked with `unzip -tq` and its unpacked size compared.
//
//   bench_zip [large-mb=600] [small-files=2000] [rounds=2] [big-gib=0]
//
// Build in Release for the figures. Ratios are the result; absolute times depend on the machine.

#include <LxUIKit/Zip/LxZip.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

extern char** environ;

namespace {

struct Cost {
    double dWallSeconds = 0;
    double dCpuSeconds = 0;
    qint64 i64PeakBytes = 0;  // above the resident memory when the step began
    bool bOk = false;
};

double Seconds(const timeval& tv) { return double(tv.tv_sec) + double(tv.tv_usec) / 1e6; }

qint64 CurrentRss() {
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toLongLong() * ::sysconf(_SC_PAGESIZE) : 0;
}

// The kit, in a forked copy of this process, so that each step's peak is its own: the copy reports
// its high-water mark above its resident memory at the start through a pipe.
Cost MeasureKit(const std::function<bool()>& step) {
    Cost c;
    int fds[2];
    if (::pipe(fds) != 0)
        return c;
    QElapsedTimer timer;
    timer.start();
    const pid_t pid = ::fork();
    if (pid == 0) {
        const qint64 rss = CurrentRss();
        const bool ok = step();
        rusage self{};
        ::getrusage(RUSAGE_SELF, &self);
        const qint64 peak = std::max<qint64>(0, qint64(self.ru_maxrss) * 1024 - rss);
        ::_exit(::write(fds[1], &peak, sizeof(peak)) == sizeof(peak) && ok ? 0 : 1);
    }
    ::close(fds[1]);
    int status = 0;
    rusage ru{};
    if (pid > 0 && ::wait4(pid, &status, 0, &ru) == pid) {
        c.dWallSeconds = double(timer.nsecsElapsed()) / 1e9;
        c.dCpuSeconds = Seconds(ru.ru_utime) + Seconds(ru.ru_stime);
        c.bOk = WIFEXITED(status) && WEXITSTATUS(status) == 0 &&
                ::read(fds[0], &c.i64PeakBytes, sizeof(c.i64PeakBytes)) == sizeof(c.i64PeakBytes);
    }
    ::close(fds[0]);
    return c;
}

// A tool, as its own process; its rusage comes from wait4.
Cost MeasureTool(const QStringList& argv, const QString& cwd) {
    Cost c;
    std::vector<QByteArray> args;
    for (const QString& a : argv)
        args.push_back(QFile::encodeName(a));
    std::vector<char*> ptrs;
    for (QByteArray& a : args)
        ptrs.push_back(a.data());
    ptrs.push_back(nullptr);
    const QString old = QDir::currentPath();
    QDir::setCurrent(cwd);
    QElapsedTimer timer;
    timer.start();
    pid_t pid = 0;
    const int spawned = ::posix_spawnp(&pid, ptrs[0], nullptr, nullptr, ptrs.data(), environ);
    QDir::setCurrent(old);
    if (spawned != 0)
        return c;
    int status = 0;
    rusage ru{};
    ::wait4(pid, &status, 0, &ru);
    c.dWallSeconds = double(timer.nsecsElapsed()) / 1e9;
    c.dCpuSeconds = Seconds(ru.ru_utime) + Seconds(ru.ru_stime);
    c.i64PeakBytes = qint64(ru.ru_maxrss) * 1024;
    c.bOk = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return c;
}

Cost Fastest(int rounds, const std::function<Cost()>& run) {
    Cost best;
    for (int i = 0; i < rounds; ++i) {
        const Cost c = run();
        if (i == 0 || c.dWallSeconds < best.dWallSeconds) {
            const qint64 peak = std::max(best.i64PeakBytes, c.i64PeakBytes);
            best = c;
            best.i64PeakBytes = peak;
        }
        best.bOk = best.bOk && c.bOk;
    }
    return best;
}

// Log-like text: timestamped lines with counters and a few repeating words, which deflate to
// about a tenth, as real logs do.
void WriteLogText(const QString& path, qint64 bytes, quint32 seed) {
    static const char* const kWords[] = {"request", "reply", "quote", "feed", "socket", "render", "cache", "user"};
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return;
    QByteArray chunk;
    quint32 x = seed;
    qint64 written = 0;
    while (written < bytes) {
        chunk.clear();
        while (chunk.size() < (1 << 20)) {
            x = x * 1103515245u + 12345u;
            chunk += QByteArray("2026-11-23 05:") + QByteArray::number((x >> 8) % 60) + ':' +
                     QByteArray::number((x >> 16) % 60) + '.' + QByteArray::number(x % 1000) + " [INFO] " +
                     kWords[(x >> 3) % 8] + ' ' + kWords[(x >> 11) % 8] + " id=" + QByteArray::number(x >> 4) +
                     " took " + QByteArray::number((x >> 20) % 500) + "ms\n";
        }
        const qint64 n = std::min<qint64>(chunk.size(), bytes - written);
        f.write(chunk.constData(), n);
        written += n;
    }
}

QString Mb(qint64 bytes) { return QString::number(double(bytes) / (1 << 20), 'f', 1); }

void Print(const char* what, const Cost& kit, const Cost& tool) {
    std::printf("%-7s kit  %7.2f s wall %7.2f s cpu %8s MB peak%s\n", what, kit.dWallSeconds, kit.dCpuSeconds,
                qPrintable(Mb(kit.i64PeakBytes)), kit.bOk ? "" : "  FAILED");
    std::printf("%-7s tool %7.2f s wall %7.2f s cpu %8s MB peak%s\n", what, tool.dWallSeconds, tool.dCpuSeconds,
                qPrintable(Mb(tool.i64PeakBytes)), tool.bOk ? "" : "  FAILED");
    std::printf("%-7s ratio kit/tool: wall %.2f, cpu %.2f\n", what, kit.dWallSeconds / tool.dWallSeconds,
                kit.dCpuSeconds / tool.dCpuSeconds);
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList a = app.arguments();
    const qint64 largeMb = a.size() > 1 ? a[1].toLongLong() : 600;
    const int smallFiles = a.size() > 2 ? a[2].toInt() : 2000;
    const int rounds = std::max(1, a.size() > 3 ? a[3].toInt() : 2);
    const double bigGib = a.size() > 4 ? a[4].toDouble() : 0;
    for (const char* tool : {"zip", "unzip"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty()) {
            std::printf("%s is not installed: nothing to compare with\n", tool);
            return 1;
        }

    QTemporaryDir tmp;
    const QString root = tmp.path();
    QDir().mkpath(root + QStringLiteral("/logs/old"));
    for (int i = 0; i < smallFiles; ++i)
        WriteLogText(root + QStringLiteral("/logs/old/part-%1.log").arg(i), 1024 + (i * 7919) % 20000, quint32(i));
    WriteLogText(root + QStringLiteral("/logs/client.log"), largeMb << 20, 42);
    std::printf("folder: %d small files and one of %lld MB\n", smallFiles, largeMb);

    const QString kitZip = root + QStringLiteral("/kit.zip");
    const QString toolZip = root + QStringLiteral("/tool.zip");
    const Cost kitPack = Fastest(
        rounds, [&] { return MeasureKit([&] { return _zip::CompressDir(root + QStringLiteral("/logs"), kitZip); }); });
    const Cost kitUnpack = Fastest(rounds, [&] {
        QDir(root + QStringLiteral("/kit-out")).removeRecursively();
        return MeasureKit([&] { return _zip::ExtractDir(kitZip, root + QStringLiteral("/kit-out")); });
    });
    const Cost toolPack = Fastest(rounds, [&] {
        QFile::remove(toolZip);
        return MeasureTool({"zip", "-qr", toolZip, "logs"}, root);
    });
    const Cost toolUnpack = Fastest(rounds, [&] {
        QDir(root + QStringLiteral("/tool-out")).removeRecursively();
        return MeasureTool({"unzip", "-qo", toolZip, "-d", root + QStringLiteral("/tool-out")}, root);
    });
    Print("pack", kitPack, toolPack);
    Print("unpack", kitUnpack, toolUnpack);
    std::printf("archive: kit %s MB, zip %s MB\n", qPrintable(Mb(QFileInfo(kitZip).size())),
                qPrintable(Mb(QFileInfo(toolZip).size())));
    const bool same = QFileInfo(root + QStringLiteral("/kit-out/logs/client.log")).size() == (largeMb << 20);
    const Cost test = MeasureTool({"unzip", "-tq", kitZip}, root);
    std::printf("kit archive: unzip -tq %s; unpacked large file %s\n", test.bOk ? "ok" : "FAILED",
                same ? "complete" : "WRONG SIZE");
    bool ok = kitPack.bOk && kitUnpack.bOk && toolPack.bOk && toolUnpack.bOk && test.bOk && same;

    if (bigGib > 0) {
        QDir(root + QStringLiteral("/kit-out")).removeRecursively();
        QDir(root + QStringLiteral("/tool-out")).removeRecursively();
        const qint64 bigBytes = qint64(bigGib * double(qint64(1) << 30));
        QDir().mkpath(root + QStringLiteral("/big"));
        QFile big(root + QStringLiteral("/big/zero.bin"));
        if (!big.open(QIODevice::WriteOnly) || !big.resize(bigBytes))
            return 1;
        big.close();
        const QString bigZip = root + QStringLiteral("/big.zip");
        const Cost pack = MeasureKit([&] { return _zip::CompressDir(root + QStringLiteral("/big"), bigZip); });
        const Cost check = MeasureTool({"unzip", "-tq", bigZip}, root);
        const Cost unpack = MeasureKit([&] { return _zip::ExtractDir(bigZip, root + QStringLiteral("/big-out")); });
        const bool whole = QFileInfo(root + QStringLiteral("/big-out/big/zero.bin")).size() == bigBytes;
        std::printf("%.2f GiB of zeros: pack %.2f s (%s MB peak), unzip -tq %s, unpack %.2f s (%s MB peak), %s\n",
                    bigGib, pack.dWallSeconds, qPrintable(Mb(pack.i64PeakBytes)), check.bOk ? "ok" : "FAILED",
                    unpack.dWallSeconds, qPrintable(Mb(unpack.i64PeakBytes)), whole ? "complete" : "WRONG SIZE");
        ok = ok && pack.bOk && check.bOk && unpack.bOk && whole;
    }
    return ok ? 0 : 1;
}
