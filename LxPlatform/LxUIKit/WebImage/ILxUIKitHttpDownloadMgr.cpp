#include <LxUIKit/WebImage/ILxUIKitHttpDownloadMgr.h>

#include <LxUIKit/LxUIKitLog_p.h>

ILUIKitHttpMgrDelegate* ILxUIKitHttpDownloadMgr::m_delegate = nullptr;

LUIKitHttpDownloadDelegate::~LUIKitHttpDownloadDelegate() { ILxUIKitHttpDownloadMgr::removeDownloadDelegate(this); }

void ILxUIKitHttpDownloadMgr::setDelegate(ILUIKitHttpMgrDelegate* delegate) {
    // Hosts install once; installing the same pointer again would leave a dangling one.
    delete m_delegate;
    m_delegate = delegate;
}

void ILxUIKitHttpDownloadMgr::download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                                       const lxuikit_http::HttpWorkPool& pool) {
    if (!m_delegate) {
        LXUIKIT_ASSERT(false);
        return;
    }
    m_delegate->download(url, receiver, pool);
}

void ILxUIKitHttpDownloadMgr::setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode) {
    if (!m_delegate) {
        LXUIKIT_ASSERT(false);
        return;
    }
    m_delegate->setCacheMode(url, mode);
}

void ILxUIKitHttpDownloadMgr::setDowndloadDirPath(const std::string& url, const std::string& dirPath) {
    if (!m_delegate) {
        LXUIKIT_ASSERT(false);
        return;
    }
    m_delegate->setDowndloadDirPath(url, dirPath);
}

void ILxUIKitHttpDownloadMgr::removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver) {
    if (!m_delegate) {
        LXUIKIT_ASSERT(false);
        return;
    }
    m_delegate->removeDownloadDelegate(receiver);
}
