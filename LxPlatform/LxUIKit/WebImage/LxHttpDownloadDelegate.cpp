#include <LxUIKit/WebImage/LxHttpDownloadDelegate.h>

#include <LxCore/FileSystem.h>
#include <LxCore/Http.h>
#include <LxCore/Post.h>
#include <LxCore/ProductPath.h>
#include <LxCore/StrConv.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QDir>
#include <QFileInfo>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int kDefaultMaxConcurrent = 6;

enum class Source { Network, Disk, LocalFile, Unsupported };

}  // namespace

struct CLxHttpDownloadDelegate::Job {
    QString strUrl;
    QString strTarget;
    int i32Pool = 0;
    Source enSource = Source::Network;
    bool bRunning = false;
    core::network::http::RequestId u64RequestId = 0;
    Receivers vecReceivers;
};

CLxHttpDownloadDelegate::CLxHttpDownloadDelegate(const QString& defaultDir)
    : m_strDefaultDir(defaultDir.isEmpty() ? core::product_path::GetCacheDir() + QStringLiteral("/webimage")
                                           : defaultDir),
      m_pAlive(std::make_shared<bool>(true)) {}

CLxHttpDownloadDelegate::~CLxHttpDownloadDelegate() {
    *m_pAlive = false;
    for (auto& pair : m_mapJobs)
        if (pair.second->bRunning)
            core::network::http::Cancel(pair.second->u64RequestId);
}

void CLxHttpDownloadDelegate::SetMaxConcurrent(int i32Pool, int i32Max) {
    m_mapMaxConcurrent[i32Pool] = qMax(1, i32Max);
    Pump(i32Pool);
}

int CLxHttpDownloadDelegate::GetMaxConcurrent(int i32Pool) const {
    auto it = m_mapMaxConcurrent.find(i32Pool);
    return it == m_mapMaxConcurrent.end() ? kDefaultMaxConcurrent : it->second;
}

int CLxHttpDownloadDelegate::RunningCount(int i32Pool) const {
    auto it = m_mapRunning.find(i32Pool);
    return it == m_mapRunning.end() ? 0 : it->second;
}

int CLxHttpDownloadDelegate::QueuedCount(int i32Pool) const {
    int n = 0;
    auto it = m_mapQueue.find(i32Pool);
    if (it != m_mapQueue.end())
        for (const QString& url : it->second)
            n += m_mapJobs.count(url) && !m_mapJobs.at(url)->bRunning ? 1 : 0;
    return n;
}

QString CLxHttpDownloadDelegate::FilePathFor(const QString& url) const {
    auto it = m_mapDir.find(url);
    const QString dir = it != m_mapDir.end() && !it->second.isEmpty() ? it->second : m_strDefaultDir;
    // The suffix only helps people reading the folder: pictures are recognised by content.
    static const QRegularExpression s_suffix(QStringLiteral("^[a-z0-9]{1,5}$"));
    QString suffix = QFileInfo(QUrl(url).path()).suffix().toLower();
    if (!s_suffix.match(suffix).hasMatch())
        suffix.clear();
    const QString name = QStringLiteral("%1").arg(core::str_conv::HashStrToUInt64(url), 16, 16, QLatin1Char('0'));
    return QDir(dir).filePath(suffix.isEmpty() ? name : name + QLatin1Char('.') + suffix);
}

void CLxHttpDownloadDelegate::setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode) {
    m_mapCacheMode[QString::fromStdString(url)] = int(mode);
}

void CLxHttpDownloadDelegate::setDowndloadDirPath(const std::string& url, const std::string& dirPath) {
    m_mapDir[QString::fromStdString(url)] = QString::fromStdString(dirPath);
}

void CLxHttpDownloadDelegate::download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                                       const lxuikit_http::HttpWorkPool& pool) {
    LXUIKIT_ASSERT_RETURN(receiver);
    const QString strUrl = QString::fromStdString(url);
    auto found = m_mapJobs.find(strUrl);
    if (found != m_mapJobs.end()) {
        Receivers& receivers = found->second->vecReceivers;
        if (std::find(receivers.begin(), receivers.end(), receiver) == receivers.end()) {
            receivers.push_back(receiver);
            ++m_stats.u64Coalesced;
        }
        return;
    }

    auto job = std::make_shared<Job>();
    job->strUrl = strUrl;
    job->i32Pool = int(pool);
    job->vecReceivers.push_back(receiver);
    m_mapJobs[strUrl] = job;

    const QUrl qurl(strUrl);
    const QString scheme = qurl.scheme().toLower();
    if (scheme == QLatin1String("file")) {
        job->enSource = Source::LocalFile;
        job->strTarget = qurl.toLocalFile();
        AnswerLater(strUrl);
        return;
    }
    if (scheme != QLatin1String("http") && scheme != QLatin1String("https")) {
        job->enSource = Source::Unsupported;
        AnswerLater(strUrl);
        return;
    }
    job->strTarget = FilePathFor(strUrl);
    auto mode = m_mapCacheMode.find(strUrl);
    const bool bReuse =
        mode != m_mapCacheMode.end() && mode->second == int(lxuikit_http::LxHttpDownloadCacheMode::ReuseDownloaded);
    if (bReuse && core::fs::IsFileExist(job->strTarget) && QFileInfo(job->strTarget).size() > 0) {
        job->enSource = Source::Disk;
        AnswerLater(strUrl);
        return;
    }
    m_mapQueue[job->i32Pool].push_back(strUrl);
    Pump(job->i32Pool);
}

void CLxHttpDownloadDelegate::AnswerLater(const QString& url) {
    // Never answer from inside download(): the caller may not be ready (a widget still in SetUrl).
    std::weak_ptr<bool> alive = m_pAlive;
    core::post::ToMain([this, alive, url] {
        if (alive.expired())
            return;
        auto it = m_mapJobs.find(url);
        if (it == m_mapJobs.end() || it->second->enSource == Source::Network)
            return;  // nobody waits any more (or the URL is being downloaded anew)
        const std::shared_ptr<Job> job = it->second;
        m_mapJobs.erase(it);
        switch (job->enSource) {
        case Source::LocalFile:
            ++m_stats.u64LocalFiles;
            if (core::fs::IsFileExist(job->strTarget)) {
                Answer(job, true, job->strTarget, 0, 0);
            } else {
                ++m_stats.u64Failed;
                Answer(job, false, QString(), int(QNetworkReply::ContentNotFoundError), 0);
            }
            break;
        case Source::Disk:
            ++m_stats.u64DiskHits;
            Answer(job, true, job->strTarget, 0, 0);
            break;
        default:
            ++m_stats.u64Failed;
            Answer(job, false, QString(), int(QNetworkReply::ProtocolUnknownError), 0);
            break;
        }
    });
}

void CLxHttpDownloadDelegate::Pump(int i32Pool) {
    std::deque<QString>& queue = m_mapQueue[i32Pool];
    while (!queue.empty() && m_mapRunning[i32Pool] < GetMaxConcurrent(i32Pool)) {
        const QString url = queue.front();
        queue.pop_front();
        auto it = m_mapJobs.find(url);
        if (it == m_mapJobs.end() || it->second->bRunning || it->second->enSource != Source::Network)
            continue;  // dropped, or a newer job for the URL
        StartRequest(it->second);
    }
}

void CLxHttpDownloadDelegate::StartRequest(const std::shared_ptr<Job>& job) {
    core::network::http::Request request;
    request.strUrl = job->strUrl;
    request.strSaveToFile = job->strTarget;
    request.i32TimeoutMs = m_i32TimeoutMs;
    request.i64MaxBodyBytes = m_i64MaxFileBytes;
    job->bRunning = true;
    ++m_mapRunning[job->i32Pool];
    ++m_stats.u64Requests;
    std::weak_ptr<bool> alive = m_pAlive;
    std::weak_ptr<Job> weakJob = job;
    job->u64RequestId =
        core::network::http::Start(request, [this, alive, weakJob](const core::network::http::Response& resp) {
            const std::shared_ptr<Job> done = weakJob.lock();
            if (alive.expired() || !done)
                return;
            auto it = m_mapJobs.find(done->strUrl);
            if (it != m_mapJobs.end() && it->second == done)
                m_mapJobs.erase(it);
            --m_mapRunning[done->i32Pool];
            if (resp.Ok() && !resp.strSavedFile.isEmpty()) {
                ++m_stats.u64Succeeded;
                Answer(done, true, resp.strSavedFile, 0, 0);
            } else {
                ++m_stats.u64Failed;
                LXUIKIT_LOG_WARN("download {} failed: network error {}, status {} ({})", done->strUrl,
                                 resp.i32NetworkError, resp.i32HttpStatus, resp.strError);
                Answer(done, false, QString(),
                       resp.i32NetworkError != 0 ? resp.i32NetworkError : int(QNetworkReply::UnknownContentError),
                       resp.i32HttpStatus);
            }
            if (!alive.expired())
                Pump(done->i32Pool);
        });
}

void CLxHttpDownloadDelegate::Answer(const std::shared_ptr<Job>& job, bool bSuccess, const QString& filePath,
                                     int i32Code1, int i32Code2) {
    // Receivers are taken out first; removeDownloadDelegate strikes them from `due` too, so one
    // removed by an earlier callback of this answer is never called.
    Receivers due;
    due.swap(job->vecReceivers);
    m_vecAnswering.push_back(&due);
    std::weak_ptr<bool> alive = m_pAlive;
    while (!due.empty()) {
        LUIKitHttpDownloadDelegate* receiver = due.front();
        due.erase(due.begin());
        if (bSuccess)
            receiver->OnDownloadSuccess(job->strUrl, filePath, QByteArray());
        else
            receiver->OnDownloadFailed(job->strUrl, i32Code1, i32Code2);
        if (alive.expired())
            return;  // the delegate was replaced from inside a callback
    }
    m_vecAnswering.pop_back();
}

void CLxHttpDownloadDelegate::removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver) {
    for (auto it = m_mapJobs.begin(); it != m_mapJobs.end();) {
        Receivers& receivers = it->second->vecReceivers;
        receivers.erase(std::remove(receivers.begin(), receivers.end(), receiver), receivers.end());
        if (receivers.empty() && !it->second->bRunning) {
            ++m_stats.u64Dropped;
            it = m_mapJobs.erase(it);  // queued or about to be answered: nobody needs it
        } else {
            ++it;
        }
    }
    for (Receivers* due : m_vecAnswering)
        due->erase(std::remove(due->begin(), due->end(), receiver), due->end());
}
