#pragma once
// Download facade of the web images.
//
// The kit never downloads by itself: every request goes through ILxUIKitHttpDownloadMgr to the
// one ILUIKitHttpMgrDelegate the host installed, and the host answers the requester through
// LUIKitHttpDownloadDelegate. The kit owns the installed delegate. A ready implementation over the
// core's HTTP is CLxHttpDownloadDelegate (LxHttpDownloadDelegate.h).
//
// Everything here runs on the GUI thread; delegates must answer there too.

#include <LxUIKit/LxUIKitExport.h>
#include <QByteArray>
#include <QString>

#include <string>

namespace lxuikit_http {

// How the downloader keeps a URL's file. The kit only ever passes ReuseDownloaded (1).
enum class LxHttpDownloadCacheMode : int {
    AlwaysDownload = 0,   // fetch again even when the file is on disk
    ReuseDownloaded = 1,  // a file already downloaded for the URL is answered without a request
};

// Worker pool of the downloader that runs a request. The kit only ever passes Image (1).
enum class HttpWorkPool : int {
    Default = 0,
    Image = 1,
};

}  // namespace lxuikit_http

// Receiver of one download's outcome. A receiver that is destroyed unregisters itself (the base
// destructor calls ILxUIKitHttpDownloadMgr::removeDownloadDelegate), so a delegate must never call
// a receiver after removeDownloadDelegate returned.
class LXUIKIT_EXPORT LUIKitHttpDownloadDelegate {
public:
    virtual ~LUIKitHttpDownloadDelegate();
    // The file for `url` is on disk at `filePath`; `data` may carry its bytes (may be empty).
    virtual void OnDownloadSuccess(const QString& url, const QString& filePath, const QByteArray& data) = 0;
    // The download of `url` failed; the two codes are the downloader's (CLxHttpDownloadDelegate
    // passes the network error and the HTTP status).
    virtual void OnDownloadFailed(const QString& url, int, int) = 0;
};

// The host's downloader.
class LXUIKIT_EXPORT ILUIKitHttpMgrDelegate {
public:
    virtual ~ILUIKitHttpMgrDelegate() = default;
    virtual void download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                          const lxuikit_http::HttpWorkPool& pool) = 0;
    virtual void setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode) = 0;
    // (sic) the name is part of the interface.
    virtual void setDowndloadDirPath(const std::string& url, const std::string& dirPath) = 0;
    virtual void removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver) = 0;
};

// Static facade. Each operation forwards unchanged to the installed delegate; without one it
// raises the soft assertion and does nothing.
class LXUIKIT_EXPORT ILxUIKitHttpDownloadMgr {
public:
    // Deletes the installed delegate (if any) and takes ownership of `delegate` (null uninstalls).
    static void setDelegate(ILUIKitHttpMgrDelegate* delegate);
    static ILUIKitHttpMgrDelegate* delegate() { return m_delegate; }

    static void download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                         const lxuikit_http::HttpWorkPool& pool);
    static void setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode);
    static void setDowndloadDirPath(const std::string& url, const std::string& dirPath);
    static void removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver);

private:
    static ILUIKitHttpMgrDelegate* m_delegate;
};
