#pragma once
// Core runtime logging and soft assertions.
//
// Every log record goes through WriteLogRaw: it is appended to the process log file under
// product_path::GetLogDir() (rotated when it passes a size bound), echoed to stderr in debug
// builds, counted per call site, and handed to the std-out hook installed by the developer tools.
// Qt's own messages are captured too and arrive with the module "#Qt#".
//
// Assertions are soft: _FW_OnAssertFailed logs the failure and returns, unless a handler was
// installed (tests install one to count and read assertions).

#include <LxCore/LxCoreExport.h>
#include <QString>
#include <QtGlobal>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace FrameWork {

// Log level codes are log-type bits.
enum LogLevel : int {
    kLogDebug = 0x002,
    kLogInfo = 0x004,
    kLogWarning = 0x008,
    kLogError = 0x010,
    kLogReport = 0x040,
    kLogWeb = 0x080,
    kLogProtocol = 0x100,
    kLogQt = 0x200,
    kLogSystem = 0x400,
};

// Short name of a level ("INFO", "WARN", ...); "LOG" for unknown codes.
LXCORE_EXPORT const char* LogLevelName(int level);

struct LXCORE_EXPORT LogContext {
    int64_t i64TimeMs = 0;  // local wall clock, ms since epoch
    uint64_t u64ThreadId = 0;
    bool bMainThread = false;
    int i32Level = kLogInfo;
    std::string strModule;
    std::string strFile;  // source path relative to the project, extension kept
    std::string strFunction;
    int i32Line = 0;
    QString strText;
};

struct LXCORE_EXPORT LogCallSite {
    std::string strModule;
    std::string strFile;
    std::string strFunction;
    int i32Line = 0;
    int i32Level = 0;
    uint64_t u64Count = 0;
};

struct LXCORE_EXPORT LogStatisticsContext {
    std::vector<LogCallSite> vecCallSites;     // one row per (file, line)
    std::map<int, uint64_t> mapCountPerLevel;  // level code -> records
    std::map<std::string, uint64_t> mapCountPerModule;
    uint64_t u64Total = 0;
};

LXCORE_EXPORT void WriteLogRaw(const char* file, int line, const char* function, int level, const char* module,
                               const QString& text);
LXCORE_EXPORT void WriteLogRaw(const char* file, int line, const char* function, int level, const char* module,
                               const std::string& text);

LXCORE_EXPORT LogStatisticsContext GetLogStatistics();
LXCORE_EXPORT void ResetLogStatistics();

// Path of the current log file (may not exist until the first record).
LXCORE_EXPORT QString GetLogFilePath();
// Size bound of one log file before it rotates to .1, .2 ... (kept: 3 old files).
LXCORE_EXPORT void SetLogFileSizeLimit(qint64 bytes);

// Hook that receives every record. It runs on the thread that wrote the record (LogContext::
// bMainThread tells which), right after the record reached the log file, so nothing written on a
// worker thread is lost or delayed. A consumer that needs main-thread delivery marshals the records
// itself: the developer tools' log viewer queues worker-thread records and moves them in on the GUI
// thread, keeping each thread's order. One hook at a time; an empty function removes it. Calling
// the hook costs one reference-count increment per record, never a copy of the function.
using StdOutCallback = std::function<void(const LogContext&)>;
// NOLINTNEXTLINE(bugprone-reserved-identifier): a name the host's code calls
LXCORE_EXPORT void _FW_InitStdOutInMainThread(StdOutCallback callback);
// The hook installed now (empty when none), so a new consumer can pass records on to it.
LXCORE_EXPORT StdOutCallback GetStdOutHook();

// Severity of a soft assertion: a warning-level one flags something suspicious but legal (a very
// long log text), an error-level one a programming error.
enum AssertSeverity : int { kAssertWarning = 2, kAssertError = 3 };

// Soft assertion. `file` is the source path; the extension is dropped in the record. The form
// without a severity raises an error-level one.
// NOLINTNEXTLINE(bugprone-reserved-identifier): a name the host's code calls
LXCORE_EXPORT void _FW_OnAssertFailed(const char* module, const char* file, int line, const char* expression);
// NOLINTNEXTLINE(bugprone-reserved-identifier): a name the host's code calls
LXCORE_EXPORT void _FW_OnAssertFailed(int i32Severity, const char* module, const char* file, int line,
                                      const char* expression);
struct LXCORE_EXPORT AssertInfo {
    int i32Severity = kAssertError;
    std::string strModule;
    std::string strFile;  // without extension, e.g. "LxPlatform/LxUIKit/LUIKitReport"
    int i32Line = 0;
    std::string strExpression;
};
using AssertHandler = std::function<void(const AssertInfo&)>;
// Returns the previous handler. With a handler installed the failure is still logged.
LXCORE_EXPORT AssertHandler SetAssertHandler(AssertHandler handler);

// Asserts (expression "InMainThread") when called off the GUI thread. Returns whether on it.
// NOLINTNEXTLINE(bugprone-reserved-identifier): a name the host's code calls
LXCORE_EXPORT bool _FW_AssertInMainThread(const char* module, const char* file, int line);

// Per-path IO counters, fed by core::fs helpers.
struct LXCORE_EXPORT IOStatistic {
    uint64_t u64ReadCount = 0;
    uint64_t u64ReadBytes = 0;
    uint64_t u64WriteCount = 0;
    uint64_t u64WriteBytes = 0;
};
LXCORE_EXPORT std::map<QString, IOStatistic> GetIOStaticstic();
LXCORE_EXPORT void AddIORead(const QString& path, uint64_t bytes);
LXCORE_EXPORT void AddIOWrite(const QString& path, uint64_t bytes);

// Installs the Qt message handler; done automatically when QCoreApplication starts. Every message
// is logged, then passed on to the handler that was installed before (Qt's default one prints it).
// Returns the handler it replaced.
LXCORE_EXPORT QtMessageHandler InstallQtMessageHandler();

}  // namespace FrameWork
