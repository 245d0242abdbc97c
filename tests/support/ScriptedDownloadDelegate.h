#pragma once
// An in-process download delegate for widget tests. It records every call and answers only when
// the test says so: late, out of order, or for a URL a widget has since left. Like a real
// downloader it never calls a receiver after removeDownloadDelegate and answers each waiting
// receiver once.

#include <LxUIKit/WebImage/ILxUIKitHttpDownloadMgr.h>

#include <QHash>
#include <QString>

#include <map>
#include <vector>

namespace lxtest {

class ScriptedDownloadDelegate : public ILUIKitHttpMgrDelegate {
public:
    struct DownloadCall {
        QString strUrl;
        LUIKitHttpDownloadDelegate* pReceiver = nullptr;
        int i32Pool = -1;
    };

    // Installs a new instance into the facade (which owns it and deletes the previous one).
    static ScriptedDownloadDelegate* Install();

    void download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                  const lxuikit_http::HttpWorkPool& pool) override;
    void setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode) override;
    void setDowndloadDirPath(const std::string& url, const std::string& dirPath) override;
    void removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver) override;

    // Answers every receiver waiting for `url`, in the order they asked; answers how many were called.
    int Succeed(const QString& url, const QString& filePath) { return Answer(url, true, filePath, 0, 0); }
    int Fail(const QString& url, int code1, int code2) { return Answer(url, false, QString(), code1, code2); }

    const std::vector<DownloadCall>& Downloads() const { return m_vecDownloads; }
    int DownloadCount(const QString& url) const;
    int CacheMode(const QString& url) const { return m_hashCacheMode.value(url, -1); }
    QString DownloadDir(const QString& url) const { return m_hashDir.value(url); }
    int RemoveCount(LUIKitHttpDownloadDelegate* receiver) const { return m_hashRemoved.value(receiver); }

private:
    int Answer(const QString& url, bool bSuccess, const QString& filePath, int code1, int code2);

    std::vector<DownloadCall> m_vecDownloads;
    std::multimap<QString, LUIKitHttpDownloadDelegate*> m_mapWaiting;
    QHash<QString, int> m_hashCacheMode;
    QHash<QString, QString> m_hashDir;
    QHash<LUIKitHttpDownloadDelegate*, int> m_hashRemoved;
    std::vector<std::vector<LUIKitHttpDownloadDelegate*>*> m_vecAnswering;  // answers being delivered
};

}  // namespace lxtest
