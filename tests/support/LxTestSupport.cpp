#include "LxTestSupport.h"

#include <dirent.h>
#include <sys/resource.h>
#include <unistd.h>

#include <LxCore/CoreInit.h>
#include <LxCore/Environment.h>
#include <LxCore/ProductPath.h>
#include <LxCore/Scheme.h>
#include <LxCore/TimeDate.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LUIKitReport.h>
#include <LxUIKit/LUIKitWebDelegate.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace lxtest {

AssertRecorder::AssertRecorder() {
    m_prev = FrameWork::SetAssertHandler([this](const FrameWork::AssertInfo& info) {
        QMutexLocker lock(&m_mutex);
        m_vec.push_back(info);
    });
}

AssertRecorder::~AssertRecorder() { FrameWork::SetAssertHandler(m_prev); }

std::vector<FrameWork::AssertInfo> AssertRecorder::asserts() const {
    QMutexLocker lock(&m_mutex);
    return m_vec;
}

int AssertRecorder::count() const {
    QMutexLocker lock(&m_mutex);
    return int(m_vec.size());
}

bool AssertRecorder::has(const QString& fileSuffix, const QString& expression, int line) const {
    QMutexLocker lock(&m_mutex);
    for (const auto& a : m_vec)
        if (QString::fromStdString(a.strFile).endsWith(fileSuffix) &&
            QString::fromStdString(a.strExpression) == expression && (line < 0 || a.i32Line == line))
            return true;
    return false;
}

void AssertRecorder::clear() {
    QMutexLocker lock(&m_mutex);
    m_vec.clear();
}

LogCapture::LogCapture() {
    FrameWork::_FW_InitStdOutInMainThread([this](const FrameWork::LogContext& ctx) {
        QMutexLocker lock(&m_mutex);
        m_vec.push_back(ctx);
    });
}

LogCapture::~LogCapture() { FrameWork::_FW_InitStdOutInMainThread({}); }

std::vector<FrameWork::LogContext> LogCapture::records() const {
    QMutexLocker lock(&m_mutex);
    return m_vec;
}

QStringList LogCapture::texts() const {
    QMutexLocker lock(&m_mutex);
    QStringList out;
    for (const auto& r : m_vec)
        out << r.strText;
    return out;
}

bool LogCapture::hasExact(const QString& text) const { return texts().contains(text); }

bool LogCapture::contains(const QString& fragment) const { return indexOf(fragment) >= 0; }

int LogCapture::indexOf(const QString& fragment) const {
    const QStringList t = texts();
    for (int i = 0; i < t.size(); ++i)
        if (t[i].contains(fragment))
            return i;
    return -1;
}

void LogCapture::clear() {
    QMutexLocker lock(&m_mutex);
    m_vec.clear();
}

TempProductRoot::TempProductRoot() { core::product_path::SetRootDir(m_dir.path()); }
TempProductRoot::~TempProductRoot() { core::product_path::SetRootDir(QString()); }

QString WriteFile(const QString& path, const QByteArray& data) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(data);
    return QFileInfo(path).absoluteFilePath();
}

void ResetGlobals() {
    core::lang::SetLanguageId(core::lang::kLangZhCN);
    lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light);
    core::time_date::SetSvrTimeOffsetMillis(0);
    core::InitCore(core::CoreInitParam());
    core::scheme::RegisterUnknowSchemeCallBack({});
    lxuikit_report::setReportDelegate({});
    lxuikit_web::setSetRemoteDebugPortDelegate({});
    lxuikit_web::setShowWebViewDelegate({});
    FrameWork::SetLogFileSizeLimit(10 * 1024 * 1024);
}

namespace {
double CpuNow(long* pPeakKiB) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    if (pPeakKiB)
        *pPeakKiB = usage.ru_maxrss;
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

qint64 ResidentBytes() {
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toLongLong() * ::sysconf(_SC_PAGESIZE) : 0;
}
}  // namespace

CostMeter::CostMeter() : m_i64RssStart(ResidentBytes()) { m_dCpuStart = CpuNow(&m_lPeakStartKiB); }

qint64 CostMeter::PeakAboveStartBytes() const {
    long peak = 0;
    CpuNow(&peak);
    return qint64(peak) * 1024 - m_i64RssStart;
}

double CostMeter::CpuSeconds() const { return CpuNow(nullptr) - m_dCpuStart; }

double CostMeter::PeakGrowthMiB() const {
    long peak = 0;
    CpuNow(&peak);
    return double(peak - m_lPeakStartKiB) / 1024.0;
}

int OpenFileCount() {
    int n = 0;
    if (DIR* dir = opendir("/proc/self/fd")) {
        while (dirent* entry = readdir(dir))
            n += entry->d_name[0] != '.';
        closedir(dir);
        --n;  // the descriptor of the listing itself
    }
    return n;
}

}  // namespace lxtest
