#pragma once
// CLxHttpDownloadDelegate: a ready downloader for the web images, over core::network::http
// (QNetworkAccessManager). A host installs it with
//     ILxUIKitHttpDownloadMgr::setDelegate(new CLxHttpDownloadDelegate);
// and needs no downloader of its own.
//
// - http and https URLs are saved to "<dir>/<64-bit hash of the URL in hex>[.<suffix>]", where
//   <dir> is the folder given for the URL by setDowndloadDirPath or else the default folder
//   (core::product_path::GetCacheDir() + "/webimage"). A file is written under "<name>.part" and
//   renamed when complete, so a failed download never leaves a file under the final name.
// - Cache mode ReuseDownloaded (1): a file already downloaded for the URL is answered without a
//   request. Any other mode (and URLs never given a mode) download again.
// - file: URLs are answered with the local path itself (nothing is copied).
// - One request per URL however many receivers wait on it; each receiver is answered once per
//   download() call that found it not already waiting.
// - At most GetMaxConcurrent(pool) requests run at once per work pool (6 unless set); the rest
//   wait in order.
// - A receiver removed through removeDownloadDelegate is never called again, even by an answer
//   being delivered at that moment. A queued download nobody waits for any more is dropped; a
//   running one completes (its file serves the next request).
// - Answers come on the GUI thread, never from inside download(): OnDownloadSuccess(url, path,
//   empty data) or OnDownloadFailed(url, network error, HTTP status) with the
//   QNetworkReply::NetworkError value (203 for a missing local file, 301 for an unsupported
//   scheme, 299 for a body over the size bound or one that could not be written, a full disk for
//   one) and the HTTP status (0 when none came). Every failed download is logged with its reason.
// - Bodies over GetMaxFileBytes() (64 MiB unless set) are aborted.
// - Deleting the delegate cancels its requests; nobody is called afterwards.
//
// GUI thread only.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/ILxUIKitHttpDownloadMgr.h>

#include <QString>

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <vector>

class LXUIKIT_EXPORT CLxHttpDownloadDelegate : public ILUIKitHttpMgrDelegate {
public:
    struct Statistics {
        uint64_t u64Requests = 0;    // network requests started
        uint64_t u64DiskHits = 0;    // answered from a file already downloaded
        uint64_t u64LocalFiles = 0;  // file: URLs answered
        uint64_t u64Coalesced = 0;   // receivers that joined a download already under way
        uint64_t u64Succeeded = 0;   // downloads (not receivers) that succeeded
        uint64_t u64Failed = 0;      // downloads that failed
        uint64_t u64Dropped = 0;     // downloads dropped before they ran: nobody waited any more
    };

    // `defaultDir` empty: core::product_path::GetCacheDir() + "/webimage".
    explicit CLxHttpDownloadDelegate(const QString& defaultDir = QString());
    ~CLxHttpDownloadDelegate() override;

    void download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                  const lxuikit_http::HttpWorkPool& pool) override;
    void setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode) override;
    void setDowndloadDirPath(const std::string& url, const std::string& dirPath) override;
    void removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver) override;

    void SetMaxConcurrent(int i32Pool, int i32Max);
    int GetMaxConcurrent(int i32Pool) const;
    void SetMaxFileBytes(qint64 i64Bytes) { m_i64MaxFileBytes = i64Bytes; }
    qint64 GetMaxFileBytes() const { return m_i64MaxFileBytes; }
    void SetTimeoutMs(int i32Ms) { m_i32TimeoutMs = i32Ms; }

    QString GetDefaultDir() const { return m_strDefaultDir; }
    // The file a URL is (or will be) saved to.
    QString FilePathFor(const QString& url) const;
    const Statistics& GetStatistics() const { return m_stats; }
    int RunningCount(int i32Pool) const;
    int QueuedCount(int i32Pool) const;
    int PendingUrlCount() const { return int(m_mapJobs.size()); }

private:
    struct Job;
    using Receivers = std::vector<LUIKitHttpDownloadDelegate*>;

    void Pump(int i32Pool);
    void StartRequest(const std::shared_ptr<Job>& job);
    void AnswerLater(const QString& url);
    void Answer(const std::shared_ptr<Job>& job, bool bSuccess, const QString& filePath, int i32Code1, int i32Code2);

    QString m_strDefaultDir;
    std::map<QString, std::shared_ptr<Job>> m_mapJobs;  // URLs being downloaded or about to be answered
    std::map<int, std::deque<QString>> m_mapQueue;      // per pool, URLs waiting for a slot
    std::map<int, int> m_mapRunning;                    // per pool
    std::map<int, int> m_mapMaxConcurrent;
    std::map<QString, int> m_mapCacheMode;
    std::map<QString, QString> m_mapDir;
    std::vector<Receivers*> m_vecAnswering;  // answers being delivered right now
    qint64 m_i64MaxFileBytes = 64LL * 1024 * 1024;
    int m_i32TimeoutMs = 30000;
    Statistics m_stats;
    std::shared_ptr<bool> m_pAlive;
};
