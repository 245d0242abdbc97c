#include "ScriptedDownloadDelegate.h"

#include <LxCore/Post.h>

#include <QByteArray>

#include <algorithm>

namespace lxtest {

ScriptedDownloadDelegate::ScriptedDownloadDelegate() : m_pAlive(std::make_shared<bool>(true)) {}

ScriptedDownloadDelegate::~ScriptedDownloadDelegate() { *m_pAlive = false; }

ScriptedDownloadDelegate* ScriptedDownloadDelegate::Install() {
    auto* d = new ScriptedDownloadDelegate;
    ILxUIKitHttpDownloadMgr::setDelegate(d);
    return d;
}

void ScriptedDownloadDelegate::download(const std::string& url, LUIKitHttpDownloadDelegate* receiver,
                                        const lxuikit_http::HttpWorkPool& pool) {
    const QString strUrl = QString::fromStdString(url);
    m_vecDownloads.push_back({strUrl, receiver, int(pool)});
    bool bAlready = false;
    for (auto range = m_mapWaiting.equal_range(strUrl); range.first != range.second; ++range.first)
        bAlready = bAlready || range.first->second == receiver;
    if (!bAlready)
        m_mapWaiting.emplace(strUrl, receiver);
    auto it = m_mapScripts.find(strUrl);
    if (it == m_mapScripts.end())
        return;
    const Script script = it->second;
    std::weak_ptr<bool> alive = m_pAlive;
    core::post::ToMainDelay(
        [this, alive, strUrl, script, receiver] {
            if (alive.expired())
                return;
            Answer(strUrl, script, receiver);
        },
        script.i32DelayMs);
}

void ScriptedDownloadDelegate::setCacheMode(const std::string& url, const lxuikit_http::LxHttpDownloadCacheMode& mode) {
    m_mapCacheMode[QString::fromStdString(url)] = int(mode);
}

void ScriptedDownloadDelegate::setDowndloadDirPath(const std::string& url, const std::string& dirPath) {
    m_mapDir[QString::fromStdString(url)] = QString::fromStdString(dirPath);
}

void ScriptedDownloadDelegate::removeDownloadDelegate(LUIKitHttpDownloadDelegate* receiver) {
    ++m_mapRemoved[receiver];
    for (auto it = m_mapWaiting.begin(); it != m_mapWaiting.end();) {
        if (it->second == receiver)
            it = m_mapWaiting.erase(it);
        else
            ++it;
    }
    for (std::vector<LUIKitHttpDownloadDelegate*>* due : m_vecAnswering)
        due->erase(std::remove(due->begin(), due->end(), receiver), due->end());
}

void ScriptedDownloadDelegate::ScriptSuccess(const QString& url, const QString& filePath, int delayMs) {
    Script s;
    s.bSuccess = true;
    s.strFilePath = filePath;
    s.i32DelayMs = delayMs;
    m_mapScripts[url] = s;
}

void ScriptedDownloadDelegate::ScriptFailure(const QString& url, int code1, int code2, int delayMs) {
    Script s;
    s.bSuccess = false;
    s.i32Code1 = code1;
    s.i32Code2 = code2;
    s.i32DelayMs = delayMs;
    m_mapScripts[url] = s;
}

void ScriptedDownloadDelegate::ClearScripts() { m_mapScripts.clear(); }

int ScriptedDownloadDelegate::Answer(const QString& url, const Script& script, LUIKitHttpDownloadDelegate* only) {
    // Take the receivers out first: a callback may ask again (a retry) or remove other receivers,
    // which removeDownloadDelegate also strikes from `due`.
    std::vector<LUIKitHttpDownloadDelegate*> due;
    for (auto it = m_mapWaiting.begin(); it != m_mapWaiting.end();) {
        if (it->first == url && (!only || it->second == only)) {
            due.push_back(it->second);
            it = m_mapWaiting.erase(it);
        } else {
            ++it;
        }
    }
    std::weak_ptr<bool> alive = m_pAlive;
    m_vecAnswering.push_back(&due);
    int called = 0;
    while (!due.empty()) {
        LUIKitHttpDownloadDelegate* r = due.front();
        due.erase(due.begin());
        ++called;
        if (script.bSuccess)
            r->OnDownloadSuccess(url, script.strFilePath, QByteArray());
        else
            r->OnDownloadFailed(url, script.i32Code1, script.i32Code2);
        if (alive.expired())
            return called;  // the delegate was replaced from inside the callback
    }
    m_vecAnswering.pop_back();
    return called;
}

int ScriptedDownloadDelegate::Succeed(const QString& url, const QString& filePath) {
    Script s;
    s.strFilePath = filePath;
    return Answer(url, s, nullptr);
}

int ScriptedDownloadDelegate::Fail(const QString& url, int code1, int code2) {
    Script s;
    s.bSuccess = false;
    s.i32Code1 = code1;
    s.i32Code2 = code2;
    return Answer(url, s, nullptr);
}

bool ScriptedDownloadDelegate::SucceedOne(LUIKitHttpDownloadDelegate* receiver, const QString& url,
                                          const QString& filePath) {
    Script s;
    s.strFilePath = filePath;
    return receiver && Answer(url, s, receiver) == 1;
}

int ScriptedDownloadDelegate::PendingCount(const QString& url) const { return int(m_mapWaiting.count(url)); }

bool ScriptedDownloadDelegate::IsWaiting(LUIKitHttpDownloadDelegate* receiver) const {
    for (const auto& pair : m_mapWaiting)
        if (pair.second == receiver)
            return true;
    return false;
}

int ScriptedDownloadDelegate::DownloadCount(const QString& url) const {
    int n = 0;
    for (const DownloadCall& c : m_vecDownloads)
        n += c.strUrl == url ? 1 : 0;
    return n;
}

int ScriptedDownloadDelegate::CacheMode(const QString& url) const {
    auto it = m_mapCacheMode.find(url);
    return it == m_mapCacheMode.end() ? -1 : it->second;
}

QString ScriptedDownloadDelegate::DownloadDir(const QString& url) const {
    auto it = m_mapDir.find(url);
    return it == m_mapDir.end() ? QString() : it->second;
}

int ScriptedDownloadDelegate::RemoveCount(LUIKitHttpDownloadDelegate* receiver) const {
    auto it = m_mapRemoved.find(receiver);
    return it == m_mapRemoved.end() ? 0 : it->second;
}

void ScriptedDownloadDelegate::ResetRecords() {
    m_vecDownloads.clear();
    m_mapCacheMode.clear();
    m_mapDir.clear();
    m_mapRemoved.clear();
}

}  // namespace lxtest
