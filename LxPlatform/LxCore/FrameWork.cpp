#include <LxCore/FrameWork.h>

#include <LxCore/ProductPath.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <mutex>

#include <atomic>
#include <cstdio>
#include <memory>

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

// Called with the mutex held.
void RotateIfNeeded(LogState& s) {
    if (!s.file.isOpen() || s.file.size() < s.i64SizeLimit)
        return;
    s.file.close();
    QFile::remove(s.strPath + QStringLiteral(".%1").arg(kKeptRotations));
    for (int i = kKeptRotations - 1; i >= 1; --i)
        QFile::rename(s.strPath + QStringLiteral(".%1").arg(i), s.strPath + QStringLiteral(".%1").arg(i + 1));
    QFile::rename(s.strPath, s.strPath + QStringLiteral(".1"));
}

void AppendToFile(LogState& s, const QByteArray& line) {
    const QString path = CurrentLogPath();
    if (s.file.isOpen() && path != s.strPath)
        s.file.close();  // product root changed (tests do this)
    RotateIfNeeded(s);
    if (!s.file.isOpen()) {
        s.strPath = path;
        QDir().mkpath(QFileInfo(path).absolutePath());
        s.file.setFileName(path);
        if (!s.file.open(QIODevice::WriteOnly | QIODevice::Append))
            return;
    }
    s.file.write(line);
    s.file.flush();
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
    {
        LogState& s = State();
        std::lock_guard<std::mutex> lock(s.mutex);
        AppendToFile(s, record);
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
