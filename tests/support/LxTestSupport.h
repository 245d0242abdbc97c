#pragma once
// Test support: assertion recorder, log capture, temporary product folders.

#include <LxCore/FrameWork.h>

#include <QMutex>
#include <QString>
#include <QTemporaryDir>

#include <vector>

namespace lxtest {

// Records soft assertions while alive (and keeps them from reaching the previous handler).
class AssertRecorder {
public:
    AssertRecorder();
    ~AssertRecorder();
    std::vector<FrameWork::AssertInfo> asserts() const;
    int count() const;
    bool has(const QString& fileSuffix, const QString& expression, int line = -1) const;
    void clear();

private:
    mutable QMutex m_mutex;
    std::vector<FrameWork::AssertInfo> m_vec;
    FrameWork::AssertHandler m_prev;
};

// Captures every log record while alive (from any thread).
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    std::vector<FrameWork::LogContext> records() const;
    QStringList texts() const;
    // True when a record's text equals `text` exactly.
    bool hasExact(const QString& text) const;
    bool contains(const QString& fragment) const;
    int indexOf(const QString& fragment) const;  // -1 when absent
    void clear();

private:
    mutable QMutex m_mutex;
    std::vector<FrameWork::LogContext> m_vec;
};

// A temporary folder made the product root for the test's lifetime.
class TempProductRoot {
public:
    TempProductRoot();
    ~TempProductRoot();
    QString path() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

#if defined(__SANITIZE_ADDRESS__)
#define LX_TEST_ADDRESS_SANITIZER 1
#endif
#if defined(__SANITIZE_THREAD__)
#define LX_TEST_THREAD_SANITIZER 1
#endif
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LX_TEST_ADDRESS_SANITIZER 1
#endif
#if __has_feature(thread_sanitizer)
#define LX_TEST_THREAD_SANITIZER 1
#endif
#endif

// What a piece of work cost the process, through getrusage: CPU time and how far the peak
// resident size rose (0 when it stayed under an earlier peak, so put costly checks first).
class CostMeter {
public:
    // Ceilings are set for an uninstrumented build; under AddressSanitizer (shadow memory, freed
    // memory held in quarantine, slower allocation) they are multiplied by this, and more under
    // ThreadSanitizer, which checks every memory access against the other threads' history.
    static constexpr double kSanitizerFactor =
#if defined(LX_TEST_THREAD_SANITIZER)
        10.0;
#elif defined(LX_TEST_ADDRESS_SANITIZER)
        4.0;
#else
        1.0;
#endif

    CostMeter();
    double CpuSeconds() const;
    double PeakGrowthMiB() const;
    // How far the peak resident size now lies above the resident size at construction: the
    // memory a piece of work needed at its worst, whatever the process's earlier peak.
    qint64 PeakAboveStartBytes() const;

private:
    double m_dCpuStart = 0;
    long m_lPeakStartKiB = 0;
    qint64 m_i64RssStart = 0;
};

// Open file descriptors of this process (entries of /proc/self/fd).
int OpenFileCount();

// Writes bytes to a file, creating folders; returns the absolute path.
QString WriteFile(const QString& path, const QByteArray& data);

// Puts the process-wide state a test may change back to how the process started: the language
// (Chinese), the Light theme, no server-time offset, an empty core init block and no
// unknown-scheme callback, no report or web delegates, the default log file size bound. Suites
// call it from cleanup() so that no test inherits what an earlier one installed.
void ResetGlobals();

}  // namespace lxtest
