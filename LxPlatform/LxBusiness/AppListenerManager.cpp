#include <LxBusiness/AppListenerManager.h>

#include <LxBusiness/LxBusinessLog_p.h>
#include <LxBusiness/ObjectHooks_p.h>
#include <LxBusiness/ProcSampler_p.h>

#include <LxCore/Http.h>
#include <LxCore/MessageDispatch.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QPointer>
#include <QTimerEvent>

CAppListenerManager* CAppListenerManager::instance() {
    static QPointer<CAppListenerManager> s_p;
    if (!s_p) {
        s_p = new CAppListenerManager();
        s_p->setParent(QCoreApplication::instance());
    }
    return s_p;
}

CAppListenerManager::CAppListenerManager() : m_pSampler(new CProcSampler()) {}

CAppListenerManager::~CAppListenerManager() {
    UninstallObjectHooks();
    delete m_pSampler;
}

int CAppListenerManager::RegisterUpdateEvent(UpdateEvent callback) {
    LXBUSINESS_ASSERT_MAIN_THREAD();
    if (!LXBUSINESS_ASSERT(callback))
        return 0;
    InstallObjectHooks();
    const int id = m_i32NextId++;
    m_mapSubscribers[id] = std::move(callback);
    UpdateTimer();
    return id;
}

void CAppListenerManager::UnregisterUpdateEvent(int i32Id) {
    m_mapSubscribers.erase(i32Id);
    UpdateTimer();
}

int CAppListenerManager::SubscriberCount() const { return int(m_mapSubscribers.size()); }

void CAppListenerManager::SetSampleInterval(int i32Ms) {
    m_i32IntervalMs = qMax(100, i32Ms);
    m_set.i32IntervalMs = m_i32IntervalMs;
    if (m_i32TimerId) {
        killTimer(m_i32TimerId);
        m_i32TimerId = 0;
    }
    UpdateTimer();
}

int CAppListenerManager::SampleInterval() const { return m_i32IntervalMs; }

void CAppListenerManager::UpdateTimer() {
    if (m_mapSubscribers.empty() && m_i32TimerId) {
        killTimer(m_i32TimerId);
        m_i32TimerId = 0;
    } else if (!m_mapSubscribers.empty() && !m_i32TimerId) {
        m_i32TimerId = startTimer(m_i32IntervalMs);
    }
}

void CAppListenerManager::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_i32TimerId)
        SampleNow();
    else
        QObject::timerEvent(event);
}

void CAppListenerManager::SampleNow() {
    LXBUSINESS_ASSERT_MAIN_THREAD();
    CAppInformation info;
    info.i64TimeMs = QDateTime::currentMSecsSinceEpoch();
    m_pSampler->Sample(info.i64TimeMs, info);

    lxbusiness::hooks::ResolvePending();
    const lxbusiness::hooks::Counts counts = lxbusiness::hooks::GetCounts();
    info.i32ObjectCount = int(counts.i64LiveObjects);
    info.i32WidgetCount = int(counts.i64LiveWidgets);
    info.i64TotalObjectCount = counts.i64TotalObjects;

    info.i64TotalRequests = qint64(core::network::http::TotalRequestCount());
    info.i64UpstreamBytes = qint64(core::network::http::TotalBytesSent());
    info.i64DownstreamBytes = qint64(core::network::http::TotalBytesReceived());
    info.i64TotalPushes = qint64(_CMessageDispatch::TotalPushCount());

    if (m_set.vecSamples.isEmpty())
        m_set.i64StartMs = info.i64TimeMs;
    m_set.vecSamples.append(info);
    if (m_set.vecSamples.size() > CAppInformationSet::kMaxSamples)
        m_set.vecSamples.remove(0, m_set.vecSamples.size() - CAppInformationSet::kMaxSamples);

    // A callback may unregister itself (or others): call a snapshot, skipping the ones gone.
    std::vector<int> ids;
    for (const auto& kv : m_mapSubscribers)
        ids.push_back(kv.first);
    for (int id : ids) {
        auto it = m_mapSubscribers.find(id);
        if (it == m_mapSubscribers.end())
            continue;
        UpdateEvent cb = it->second;
        cb(m_set);
    }
}

const CAppInformationSet& CAppListenerManager::GetAppInformationSet() const { return m_set; }

void CAppListenerManager::InstallObjectHooks() { lxbusiness::hooks::Install(); }
void CAppListenerManager::UninstallObjectHooks() { lxbusiness::hooks::Uninstall(); }
bool CAppListenerManager::ObjectHooksInstalled() const { return lxbusiness::hooks::IsInstalled(); }

QMap<QString, qint64> CAppListenerManager::GetActiveObjectMap() const { return lxbusiness::hooks::ActiveByClass(); }
QMap<QString, qint64> CAppListenerManager::GetDestroyedObjectMap() const {
    return lxbusiness::hooks::DestroyedByClass();
}
