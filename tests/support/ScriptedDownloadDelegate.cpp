#include "ScriptedDownloadDelegate.h"

#include <QByteArray>

#include <algorithm>

namespace lxtest {

ScriptedDownloadDelegate* ScriptedDownloadDelegate::Install() {
    auto* d = new ScriptedDownloadDelegate;
    ILxUIKitHttpDownloadMgr::setDelegate(d);
    return d;
}

void ScriptedDownloadDelegate::download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                                        const lxuikit_http::HttpWorkPool& pool) {
    const QString strUrl = QString::fromStdString(url);
    m_vecDownloads.push_back({strUrl, receiver, int(pool)});
    auto range = m_mapWaiting.equal_range(strUrl);
    if (std::none_of(range.first, range.second, [receiver](const auto& pair) { return pair.second == receiver; }))
        m_mapWaiting.emplace(strUrl, receiver);
}

void ScriptedDownloadDelegate::setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode) {
    m_hashCacheMode[QString::fromStdString(url)] = int(mode);
}

void ScriptedDownloadDelegate::setDowndloadDirPath(const std::string& url, const std::string& dirPath) {
    m_hashDir[QString::fromStdString(url)] = QString::fromStdString(dirPath);
}

void ScriptedDownloadDelegate::removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver) {
    ++m_hashRemoved[receiver];
    for (auto it = m_mapWaiting.begin(); it != m_mapWaiting.end();)
        it = it->second == receiver ? m_mapWaiting.erase(it) : std::next(it);
    for (std::vector<LUIKitHttpDownloadDelegate*>* due : m_vecAnswering)
        due->erase(std::remove(due->begin(), due->end(), receiver), due->end());
}

int ScriptedDownloadDelegate::Answer(const QString& url, bool bSuccess, const QString& filePath, int code1, int code2) {
    // Take the receivers out first: a callback may ask again (a retry) or remove other receivers,
    // which removeDownloadDelegate also strikes from `due`.
    std::vector<LUIKitHttpDownloadDelegate*> due;
    auto range = m_mapWaiting.equal_range(url);
    for (auto it = range.first; it != range.second; ++it)
        due.push_back(it->second);
    m_mapWaiting.erase(range.first, range.second);
    m_vecAnswering.push_back(&due);
    int called = 0;
    for (; !due.empty(); ++called) {
        LUIKitHttpDownloadDelegate* r = due.front();
        due.erase(due.begin());
        if (bSuccess)
            r->OnDownloadSuccess(url, filePath, QByteArray());
        else
            r->OnDownloadFailed(url, code1, code2);
    }
    m_vecAnswering.pop_back();
    return called;
}

int ScriptedDownloadDelegate::DownloadCount(const QString& url) const {
    return int(std::count_if(m_vecDownloads.begin(), m_vecDownloads.end(),
                             [&url](const DownloadCall& c) { return c.strUrl == url; }));
}

}  // namespace lxtest
