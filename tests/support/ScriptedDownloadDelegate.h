#pragma once
// An in-process download delegate for widget tests. It records every call and answers only what
// the test scripts: automatic answers per URL (success with a file, or failure codes, optionally
// delayed), or manual answers at a moment of the test's choosing (late, out of order, for a URL a
// widget has since left). Like a real downloader it never calls a receiver after
// removeDownloadDelegate and answers each waiting receiver once.

#include <LxUIKit/WebImage/ILxUIKitHttpDownloadMgr.h>

#include <QString>

#include <map>
#include <memory>
#include <set>
#include <vector>

namespace lxtest {

class ScriptedDownloadDelegate : public ILUIKitHttpMgrDelegate {
public:
    struct DownloadCall {
        QString strUrl;
        LUIKitHttpDownloadDelegate* pReceiver = nullptr;
        int i32Pool = -1;
    };

    ScriptedDownloadDelegate();
    ~ScriptedDownloadDelegate() override;

    // Installs a new instance into the facade (which owns it) and returns it.
    static ScriptedDownloadDelegate* Install();

    void download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                  const lxuikit_http::HttpWorkPool& pool) override;
    void setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode) override;
    void setDowndloadDirPath(const std::string& url, const std::string& dirPath) override;
    void removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver) override;

    // Scripts: later download() calls for `url` are answered by themselves after `delayMs`
    // (posted to the event loop; 0 still answers asynchronously).
    void ScriptSuccess(const QString& url, const QString& filePath, int delayMs = 0);
    void ScriptFailure(const QString& url, int code1, int code2, int delayMs = 0);
    void ClearScripts();

    // Manual answers to every receiver waiting for `url`; answers how many were called.
    int Succeed(const QString& url, const QString& filePath);
    int Fail(const QString& url, int code1, int code2);
    // Answers one receiver only (false when it is not waiting for `url`).
    bool SucceedOne(LUIKitHttpDownloadDelegate* receiver, const QString& url, const QString& filePath);

    int PendingCount(const QString& url) const;
    bool IsWaiting(LUIKitHttpDownloadDelegate* receiver) const;

    // Records.
    const std::vector<DownloadCall>& Downloads() const { return m_vecDownloads; }
    int DownloadCount(const QString& url) const;
    int CacheMode(const QString& url) const;  // -1 when never set
    QString DownloadDir(const QString& url) const;
    int RemoveCount(LUIKitHttpDownloadDelegate* receiver) const;
    void ResetRecords();

private:
    struct Script {
        bool bSuccess = true;
        QString strFilePath;
        int i32Code1 = 0;
        int i32Code2 = 0;
        int i32DelayMs = 0;
    };
    int Answer(const QString& url, const Script& script, LUIKitHttpDownloadDelegate* only);

    std::vector<DownloadCall> m_vecDownloads;
    std::multimap<QString, LUIKitHttpDownloadDelegate*> m_mapWaiting;
    std::map<QString, int> m_mapCacheMode;
    std::map<QString, QString> m_mapDir;
    std::map<LUIKitHttpDownloadDelegate*, int> m_mapRemoved;
    std::map<QString, Script> m_mapScripts;
    std::vector<std::vector<LUIKitHttpDownloadDelegate*>*> m_vecAnswering;  // answers being delivered
    std::shared_ptr<bool> m_pAlive;
};

}  // namespace lxtest
