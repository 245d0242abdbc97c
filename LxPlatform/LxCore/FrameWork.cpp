#include <LxCore/FrameWork.h>

#include <LxCore/LxCoreLog_p.h>
#include <LxCore/ProductPath.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>

namespace FrameWork {
namespace {

struct CallSiteKey {
    std::string file;
    int line;
    bool operator<(const CallSiteKey& o) const { return line != o.line ? line < o.line : file < o.file; }
};

struct LogState {
    std::mutex mutex;  // guards everything below (a pthread mutex, which ThreadSanitizer understands)
    QFile file;
    QString strPath;
    qint64 i64SizeLimit = qint64(10) * 1024 * 1024;
    std::map<CallSiteKey, LogCallSite> mapSites;
    std::map<int, uint64_t> mapPerLevel;
    std::map<std::string, uint64_t> mapPerModule;
    uint64_t u64Total = 0;
    std::shared_ptr<const StdOutCallback> hook;  // shared so a record never copies the function
    AssertHandler assertHandler;
    std::map<QString, IOStatistic> mapIO;
    // The log file stops taking records when a write fails (a full disk, a lost mount); records
    // then only reach the other outputs until a retry succeeds.
    bool bFileFailing = false;
    int64_t i64RetryAtMs = 0;
    uint64_t u64Missed = 0;  // records that did not reach the file while it was failing
};

LogState& State() {
    static LogState* s = new LogState;  // never destroyed: logging may run during static teardown
    return *s;
}

const int kKeptRotations = 3;

QString CurrentLogPath() {
    QString app = QCoreApplication::applicationName();
    if (app.isEmpty())
        app = QStringLiteral("LxClient");
    return core::product_path::GetLogDir() + QLatin1Char('/') + app + QStringLiteral(".log");
}

// How often a failing log file is tried again. A failed attempt costs one refused write, so this
// only bounds the work on a disk that stays full.
constexpr int64_t kRetryFailedFileMs = 500;

// Called with the mutex held.
void RotateIfNeeded(LogState& s, qint64 size) {
    if (!s.file.isOpen() || size < s.i64SizeLimit)
        return;
    s.file.close();
    QFile::remove(s.strPath + QStringLiteral(".%1").arg(kKeptRotations));
    for (int i = kKeptRotations - 1; i >= 1; --i)
        QFile::rename(s.strPath + QStringLiteral(".%1").arg(i), s.strPath + QStringLiteral(".%1").arg(i + 1));
    QFile::rename(s.strPath, s.strPath + QStringLiteral(".1"));
}

// What happened to the log file with one record, for a line about it once the mutex is released.
struct FileEvent {
    enum Kind { kNone, kFailed, kRecovered } enKind = kNone;
    QString strPath;
    QString strError;
    uint64_t u64Missed = 0;
};

// Unbuffered, so that a failed write is known at once and nothing lingers in a buffer; a record
// cut short by a full disk is cut off again, so the file holds whole records only.
bool WriteRecord(LogState& s, const QByteArray& line, QString& error) {
    const QString path = CurrentLogPath();
    if (s.file.isOpen() && path != s.strPath)
        s.file.close();  // product root changed (tests do this)
    qint64 before = s.file.isOpen() ? s.file.size() : 0;
    RotateIfNeeded(s, before);
    if (!s.file.isOpen()) {
        s.strPath = path;
        QDir().mkpath(QFileInfo(path).absolutePath());
        s.file.setFileName(path);
        if (!s.file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
            error = s.file.errorString();
            return false;
        }
        before = s.file.size();
    }
    errno = 0;
    if (s.file.write(line) == line.size())
        return true;
    // A short write sets no error on the file; the refused write behind it left its reason in errno.
    const int reason = errno;
    error = s.file.error() != QFileDevice::NoError || reason == 0 ? s.file.errorString()
                                                                  : QString::fromLocal8Bit(std::strerror(reason));
    s.file.resize(before);
    s.file.close();  // reopened on the next attempt: the file may have been removed or replaced
    return false;
}

FileEvent AppendToFile(LogState& s, const QByteArray& line) {
    // A steady clock: a wall clock set back must not postpone the retry.
    const int64_t nowMs =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    FileEvent event;
    if (s.bFileFailing && nowMs < s.i64RetryAtMs) {
        ++s.u64Missed;
        return event;
    }
    QString error;
    if (!WriteRecord(s, line, error)) {
        ++s.u64Missed;
        s.i64RetryAtMs = nowMs + kRetryFailedFileMs;
        if (!s.bFileFailing) {
            s.bFileFailing = true;
            event.enKind = FileEvent::kFailed;
            event.strPath = s.strPath;
            event.strError = error;
        }
        return event;
    }
    if (s.bFileFailing) {
        s.bFileFailing = false;
        event.enKind = FileEvent::kRecovered;
        event.strPath = s.strPath;
        event.u64Missed = s.u64Missed;
        s.u64Missed = 0;
    }
    return event;
}

// Tells the other outputs (and, once it works again, the file) what became of the log file. The
// line about a failure does not touch the file again: it is still within its retry interval.
void ReportFileEvent(const FileEvent& event) {
    if (event.enKind == FileEvent::kFailed) {
        LXCORE_LOG_ERROR(
            "log file {} cannot be written ({}); records go to the other outputs only, the file is "
            "tried again every {} ms",
            event.strPath, event.strError, kRetryFailedFileMs);
#ifdef NDEBUG
        // Release builds echo nothing to stderr; this one line must still be seen somewhere.
        const QByteArray line =
            QStringLiteral("log file %1 cannot be written (%2)\n").arg(event.strPath, event.strError).toLocal8Bit();
        fwrite(line.constData(), 1, size_t(line.size()), stderr);
#endif
    } else if (event.enKind == FileEvent::kRecovered) {
        LXCORE_LOG_WARN("log file {} is written again; {} records did not reach it", event.strPath, event.u64Missed);
    }
}

std::string StripExtension(const char* file) {
    std::string f = file ? file : "";
    const size_t slash = f.find_last_of('/');
    const size_t dot = f.find_last_of('.');
    if (dot != std::string::npos && (slash == std::string::npos || dot > slash))
        f.erase(dot);
    return f;
}

bool IsMainThread() {
    QCoreApplication* app = QCoreApplication::instance();
    return app && QThread::currentThread() == app->thread();
}

// The handler that was installed before ours: every Qt message is passed on to it, so a host's
// own handler (or Qt's default one, which prints to stderr) keeps working.
std::atomic<QtMessageHandler> g_previousQtHandler{nullptr};

void ForwardQtMessage(QtMsgType type, const QMessageLogContext& ctx, const QString& msg) {
    WriteLogRaw(ctx.file ? ctx.file : "", ctx.line, ctx.function ? ctx.function : "", kLogQt, "#Qt#", msg);
    if (const QtMessageHandler previous = g_previousQtHandler.load())
        previous(type, ctx, msg);
    if (type == QtFatalMsg)
        abort();
}

}  // namespace

const char* LogLevelName(int level) {
    switch (level) {
    case kLogDebug: return "DEBUG";
    case kLogInfo: return "INFO";
    case kLogWarning: return "WARN";
    case kLogError: return "ERROR";
    case kLogReport: return "REPORT";
    case kLogWeb: return "WEB";
    case kLogProtocol: return "PROTO";
    case kLogQt: return "QT";
    case kLogSystem: return "SYS";
    default: return "LOG";
    }
}

void WriteLogRaw(const char* file, int line, const char* function, int level, const char* module,
                 const std::string& text) {
    WriteLogRaw(file, line, function, level, module, QString::fromStdString(text));
}

void WriteLogRaw(const char* file, int line, const char* function, int level, const char* module, const QString& text) {
    LogContext ctx;
    ctx.i64TimeMs = QDateTime::currentMSecsSinceEpoch();
    ctx.u64ThreadId = reinterpret_cast<uint64_t>(QThread::currentThreadId());
    ctx.bMainThread = IsMainThread();
    ctx.i32Level = level;
    ctx.strModule = module ? module : "";
    ctx.strFile = file ? file : "";
    ctx.strFunction = function ? function : "";
    ctx.i32Line = line;
    ctx.strText = text;

    const QByteArray record =
        QStringLiteral("%1 [%2] [%3] [%4] %5:%6 %7 | %8\n")
            .arg(QDateTime::fromMSecsSinceEpoch(ctx.i64TimeMs).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz")),
                 QLatin1String(LogLevelName(level)), QString::fromStdString(ctx.strModule),
                 QString::number(ctx.u64ThreadId, 16), QString::fromStdString(ctx.strFile), QString::number(line),
                 QString::fromStdString(ctx.strFunction), text)
            .toUtf8();

    std::shared_ptr<const StdOutCallback> hook;
    FileEvent fileEvent;
    {
        LogState& s = State();
        std::lock_guard<std::mutex> lock(s.mutex);
        fileEvent = AppendToFile(s, record);
        LogCallSite& site = s.mapSites[CallSiteKey{ctx.strFile, line}];
        if (site.u64Count == 0) {
            site.strModule = ctx.strModule;
            site.strFile = ctx.strFile;
            site.strFunction = ctx.strFunction;
            site.i32Line = line;
            site.i32Level = level;
        }
        ++site.u64Count;
        ++s.mapPerLevel[level];
        ++s.mapPerModule[ctx.strModule];
        ++s.u64Total;
        hook = s.hook;
    }
#ifndef NDEBUG
    if (level != kLogQt) {  // Qt's messages reach stderr through the handler we pass them on to
        fwrite(record.constData(), 1, size_t(record.size()), stderr);
    }
#endif
    if (hook)
        (*hook)(ctx);
    ReportFileEvent(fileEvent);
}

LogStatisticsContext GetLogStatistics() {
    LogState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    LogStatisticsContext out;
    out.vecCallSites.reserve(s.mapSites.size());
    for (const auto& kv : s.mapSites)
        out.vecCallSites.push_back(kv.second);
    out.mapCountPerLevel = s.mapPerLevel;
    out.mapCountPerModule = s.mapPerModule;
    out.u64Total = s.u64Total;
    return out;
}

void ResetLogStatistics() {
    LogState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    s.mapSites.clear();
    s.mapPerLevel.clear();
    s.mapPerModule.clear();
    s.u64Total = 0;
}

QString GetLogFilePath() { return CurrentLogPath(); }

void SetLogFileSizeLimit(qint64 bytes) {
    LogState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    s.i64SizeLimit = qMax<qint64>(1024, bytes);
}

void _FW_InitStdOutInMainThread(StdOutCallback callback) {
    LogState& s = State();
    std::shared_ptr<const StdOutCallback> hook;
    if (callback)
        hook = std::make_shared<const StdOutCallback>(std::move(callback));
    std::lock_guard<std::mutex> lock(s.mutex);
    s.hook.swap(hook);  // the old hook is released after the lock, outside any record in flight
}

StdOutCallback GetStdOutHook() {
    LogState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    return s.hook ? *s.hook : StdOutCallback();
}

AssertHandler SetAssertHandler(AssertHandler handler) {
    LogState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    AssertHandler old = std::move(s.assertHandler);
    s.assertHandler = std::move(handler);
    return old;
}

void _FW_OnAssertFailed(const char* module, const char* file, int line, const char* expression) {
    _FW_OnAssertFailed(kAssertError, module, file, line, expression);
}

void _FW_OnAssertFailed(int i32Severity, const char* module, const char* file, int line, const char* expression) {
    AssertInfo info;
    info.i32Severity = i32Severity;
    info.strModule = module ? module : "";
    info.strFile = StripExtension(file);
    info.i32Line = line;
    info.strExpression = expression ? expression : "";
    WriteLogRaw(file, line, "_FW_OnAssertFailed", i32Severity == kAssertWarning ? kLogWarning : kLogError, module,
                QStringLiteral("ASSERT FAILED: %1 (%2:%3)")
                    .arg(QString::fromStdString(info.strExpression), QString::fromStdString(info.strFile))
                    .arg(line));
    AssertHandler handler;
    {
        LogState& s = State();
        std::lock_guard<std::mutex> lock(s.mutex);
        handler = s.assertHandler;
    }
    if (handler)
        handler(info);
}

bool _FW_AssertInMainThread(const char* module, const char* file, int line) {
    if (IsMainThread())
        return true;
    _FW_OnAssertFailed(module, file, line, "InMainThread");
    return false;
}

std::map<QString, IOStatistic> GetIOStaticstic() {
    LogState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    return s.mapIO;
}

void AddIORead(const QString& path, uint64_t bytes) {
    LogState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    IOStatistic& io = s.mapIO[path];
    ++io.u64ReadCount;
    io.u64ReadBytes += bytes;
}

void AddIOWrite(const QString& path, uint64_t bytes) {
    LogState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    IOStatistic& io = s.mapIO[path];
    ++io.u64WriteCount;
    io.u64WriteBytes += bytes;
}

QtMessageHandler InstallQtMessageHandler() {
    const QtMessageHandler replaced = qInstallMessageHandler(ForwardQtMessage);
    if (replaced != ForwardQtMessage)  // installing twice must not make the handler call itself
        g_previousQtHandler.store(replaced);
    return replaced;
}

}  // namespace FrameWork

static void lxcore_install_at_startup() { FrameWork::InstallQtMessageHandler(); }
Q_COREAPP_STARTUP_FUNCTION(lxcore_install_at_startup)
