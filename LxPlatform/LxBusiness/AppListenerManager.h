#pragma once
// CAppListenerManager: samples the running process on a timer and hands the history to whoever
// subscribed, on the GUI thread. The developer tools' performance monitor charts it.
//
// What one sample holds (CAppInformation), where it comes from and in which unit:
//   i64TimeMs            wall clock of the sample, ms since the epoch.
//   dMemoryMB            resident set size: /proc/self/statm field 2 (pages) x page size, in MiB.
//   dCpuPercent          process CPU time (user + system, /proc/self/stat fields 14 and 15, in clock
//                        ticks) spent during the interval, as a percentage of the interval's wall
//                        time. One busy core is 100; a process busy on several cores reads more.
//   i64IOReadTimes       read system calls during the interval (/proc/self/io "syscr").
//   i64IOWriteTimes      write system calls during the interval ("syscw").
//   i64IOReadBytes       bytes read during the interval ("rchar": files, pipes and sockets alike).
//   i64IOWriteBytes      bytes written during the interval ("wchar").
//   dTcpRecvKBps         network bytes received per second, KiB/s (1 kb = 1024 bytes), from
//   dTcpSentKBps         /proc/self/net/netstat "IpExt: InOctets / OutOctets". Linux keeps no
//                        per-process byte counter that a process can read about itself, so these
//                        are the counters of the process's network namespace: in a container of
//                        its own they are the process's traffic, on a shared host they include the
//                        other processes of the namespace. Loopback traffic is counted too.
//   i64TcpRecvBytes      the same counters summed since the listener's first sample, bytes.
//   i64TcpSentBytes
//   i32WidgetCount       live QWidgets and live QObjects (widgets included), counted through Qt's
//   i32ObjectCount       object hooks since InstallObjectHooks(); objects made earlier are unknown.
//   i64TotalObjectCount  QObjects created since the hooks were installed.
//   i64TotalRequests     HTTP requests started through the core runtime since process start.
//   i64TotalPushes       messages dispatched through _CMessageDispatch since process start.
//   i64UpstreamBytes     HTTP request body bytes sent through the core runtime, since start.
//   i64DownstreamBytes   HTTP response body bytes received through the core runtime, since start.
// Interval fields of the very first sample are 0 (there is no earlier reading to subtract).
//
// A /proc file that is missing or unreadable (another kernel, a locked-down container) makes its
// fields read 0; the listener logs that once per file and carries on.
//
// Per-class object counts: Qt calls the hooks from inside QObject's constructor and destructor,
// when the object is only a QObject, so the class is looked up later, on the GUI thread, at the
// next turn of the event loop (or when the maps are read). Objects made outside the GUI thread,
// and objects destroyed before the event loop ran again, are counted under "QObject". The hooks
// chain to any hook installed before them and restore it when removed.

#include <LxBusiness/LxBusinessExport.h>

#include <QMap>
#include <QObject>
#include <QString>
#include <QVector>

#include <functional>
#include <map>

struct LXBUSINESS_EXPORT CAppInformation {
    qint64 i64TimeMs = 0;
    double dMemoryMB = 0;
    double dCpuPercent = 0;
    qint64 i64IOReadTimes = 0;
    qint64 i64IOWriteTimes = 0;
    qint64 i64IOReadBytes = 0;
    qint64 i64IOWriteBytes = 0;
    double dTcpRecvKBps = 0;
    double dTcpSentKBps = 0;
    qint64 i64TcpRecvBytes = 0;
    qint64 i64TcpSentBytes = 0;
    int i32WidgetCount = 0;
    int i32ObjectCount = 0;
    qint64 i64TotalObjectCount = 0;
    qint64 i64TotalRequests = 0;
    qint64 i64TotalPushes = 0;
    qint64 i64UpstreamBytes = 0;
    qint64 i64DownstreamBytes = 0;
};

// The samples kept so far, oldest first, at most kMaxSamples (ten minutes at the default rate).
struct LXBUSINESS_EXPORT CAppInformationSet {
    static constexpr int kMaxSamples = 600;
    QVector<CAppInformation> vecSamples;
    int i32IntervalMs = 1000;
    qint64 i64StartMs = 0;  // wall clock of the first sample

    bool IsEmpty() const { return vecSamples.isEmpty(); }
    // The newest sample (a zero record when there is none).
    CAppInformation Latest() const { return vecSamples.isEmpty() ? CAppInformation() : vecSamples.last(); }
};

class CProcSampler;

class LXBUSINESS_EXPORT CAppListenerManager : public QObject {
    Q_OBJECT
public:
    using UpdateEvent = std::function<void(const CAppInformationSet&)>;

    // Made on first use, owned by the application object (GUI thread only).
    static CAppListenerManager* instance();

    // Subscribes; sampling runs while at least one subscriber is registered. Returns the id that
    // UnregisterUpdateEvent takes (0 for an empty callback).
    int RegisterUpdateEvent(UpdateEvent callback);
    void UnregisterUpdateEvent(int i32Id);
    int SubscriberCount() const;

    void SetSampleInterval(int i32Ms);  // at least 100 ms; default 1000
    int SampleInterval() const;
    // Takes one sample now and delivers it to every subscriber.
    void SampleNow();
    const CAppInformationSet& GetAppInformationSet() const;

    // Installs Qt's object hooks (idempotent). Call it early, on the GUI thread: only objects
    // made afterwards are counted. Registering a subscriber installs them too.
    void InstallObjectHooks();
    void UninstallObjectHooks();
    bool ObjectHooksInstalled() const;
    // Class name -> live objects / objects destroyed since the hooks were installed.
    QMap<QString, qint64> GetActiveObjectMap() const;
    QMap<QString, qint64> GetDestroyedObjectMap() const;

    ~CAppListenerManager() override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    CAppListenerManager();
    void UpdateTimer();

    std::map<int, UpdateEvent> m_mapSubscribers;
    int m_i32NextId = 1;
    int m_i32TimerId = 0;
    int m_i32IntervalMs = 1000;
    CAppInformationSet m_set;
    CProcSampler* m_pSampler = nullptr;
};
