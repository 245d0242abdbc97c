#pragma once
// CUnitTestManager: named test sessions a host registers (a function answering pass or fail with
// a message), run on demand from the developer tools' unit-test window.
//
// A session runs on the GUI thread; StartRun() runs a list of them one per turn of the event loop,
// so the application keeps painting and answering between sessions. A session reports failure by
// its result; one that throws is caught and recorded as failed with the exception's text, so no
// exception leaves the manager. Sessions run in registration order.

#include <LxBusiness/LxBusinessExport.h>

#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

struct LXBUSINESS_EXPORT CUnitTestResult {
    bool bPassed = false;
    QString strMessage;

    static CUnitTestResult Pass(const QString& message = QString()) { return {true, message}; }
    static CUnitTestResult Fail(const QString& message) { return {false, message}; }
};

struct LXBUSINESS_EXPORT CUnitTestSessionResult {
    enum State { NotRun = 0, Queued, Passed, Failed };
    QString strName;
    State enState = NotRun;
    double dDurationMs = 0;  // wall time of the session's function
    QString strMessage;
};

Q_DECLARE_METATYPE(CUnitTestSessionResult)

class LXBUSINESS_EXPORT CUnitTestManager : public QObject {
    Q_OBJECT
public:
    using TestFunction = std::function<CUnitTestResult()>;

    // Made on first use, owned by the application object (GUI thread only).
    static CUnitTestManager* instance();

    // False (with a log line) for an empty name, an empty function or a name already taken.
    bool RegisterTestSession(const QString& name, TestFunction function);
    bool UnregisterTestSession(const QString& name);
    void ClearTestSessions();
    QStringList GetTestSessionNames() const;  // registration order

    // Runs one session now and records its result (state NotRun for an unknown name).
    CUnitTestSessionResult RunTestSession(const QString& name);
    // Queues the sessions (all when `names` is empty) and runs one per event-loop turn, emitting
    // sessionFinished after each and runFinished at the end. False while a run is going on.
    bool StartRun(const QStringList& names = QStringList());
    // Drops the sessions not yet run; runFinished follows for the ones that ran.
    void CancelRun();
    bool IsRunning() const { return m_bRunning; }

    // The latest result of a session (NotRun before its first run).
    CUnitTestSessionResult GetResult(const QString& name) const;

Q_SIGNALS:
    void sessionFinished(const CUnitTestSessionResult& result);
    void runFinished(int i32Passed, int i32Failed, double dTotalMs);

private:
    CUnitTestManager();
    void RunNext();

    struct Session {
        QString strName;
        TestFunction function;
        CUnitTestSessionResult result;
    };
    Session* Find(const QString& name);
    std::vector<Session> m_vecSessions;
    QStringList m_listQueue;
    bool m_bRunning = false;
    int m_i32Passed = 0;
    int m_i32Failed = 0;
    double m_dTotalMs = 0;
};
