#include <LxBusiness/UnitTestManager.h>

#include <LxBusiness/LxBusinessLog_p.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <exception>

CUnitTestManager* CUnitTestManager::instance() {
    static QPointer<CUnitTestManager> s_p;
    if (!s_p) {
        s_p = new CUnitTestManager();
        s_p->setParent(QCoreApplication::instance());
    }
    return s_p;
}

CUnitTestManager::CUnitTestManager() { qRegisterMetaType<CUnitTestSessionResult>(); }

CUnitTestManager::Session* CUnitTestManager::Find(const QString& name) {
    for (Session& s : m_vecSessions)
        if (s.strName == name)
            return &s;
    return nullptr;
}

bool CUnitTestManager::RegisterTestSession(const QString& name, TestFunction function) {
    if (name.isEmpty() || !function) {
        LXBUSINESS_LOG_WARN("unit test session refused: empty {}", name.isEmpty() ? "name" : "function");
        return false;
    }
    if (Find(name)) {
        LXBUSINESS_LOG_WARN("unit test session \"{}\" is already registered", name);
        return false;
    }
    Session s;
    s.strName = name;
    s.function = std::move(function);
    s.result.strName = name;
    m_vecSessions.push_back(std::move(s));
    return true;
}

bool CUnitTestManager::UnregisterTestSession(const QString& name) {
    for (auto it = m_vecSessions.begin(); it != m_vecSessions.end(); ++it) {
        if (it->strName == name) {
            m_vecSessions.erase(it);
            m_listQueue.removeAll(name);
            return true;
        }
    }
    return false;
}

void CUnitTestManager::ClearTestSessions() {
    m_vecSessions.clear();
    m_listQueue.clear();
}

QStringList CUnitTestManager::GetTestSessionNames() const {
    QStringList names;
    for (const Session& s : m_vecSessions)
        names << s.strName;
    return names;
}

CUnitTestSessionResult CUnitTestManager::RunTestSession(const QString& name) {
    LXBUSINESS_ASSERT_MAIN_THREAD();
    Session* session = Find(name);
    if (!session) {
        LXBUSINESS_LOG_WARN("no unit test session \"{}\"", name);
        CUnitTestSessionResult none;
        none.strName = name;
        return none;
    }
    // Copied: the session may unregister itself (or others) while it runs.
    const TestFunction function = session->function;
    CUnitTestResult result;
    QElapsedTimer clock;
    clock.start();
    try {
        result = function();
    } catch (const std::exception& e) {
        result = CUnitTestResult::Fail(QStringLiteral("exception: %1").arg(QString::fromLocal8Bit(e.what())));
    } catch (...) {
        result = CUnitTestResult::Fail(QStringLiteral("exception of unknown type"));
    }
    CUnitTestSessionResult out;
    out.strName = name;
    out.dDurationMs = double(clock.nsecsElapsed()) / 1e6;
    out.enState = result.bPassed ? CUnitTestSessionResult::Passed : CUnitTestSessionResult::Failed;
    out.strMessage = result.strMessage;
    if (Session* again = Find(name))
        again->result = out;
    LXBUSINESS_LOG_INFO("unit test \"{}\" {} in {:.3f} ms{}{}", name, result.bPassed ? "passed" : "FAILED",
                        out.dDurationMs, out.strMessage.isEmpty() ? "" : ": ", out.strMessage);
    return out;
}

bool CUnitTestManager::StartRun(const QStringList& names) {
    if (m_bRunning)
        return false;
    m_listQueue = names.isEmpty() ? GetTestSessionNames() : names;
    m_bRunning = true;
    m_i32Passed = m_i32Failed = 0;
    m_dTotalMs = 0;
    for (const QString& name : qAsConst(m_listQueue))
        if (Session* s = Find(name))
            s->result.enState = CUnitTestSessionResult::Queued;
    QTimer::singleShot(0, this, &CUnitTestManager::RunNext);
    return true;
}

void CUnitTestManager::CancelRun() {
    for (const QString& name : qAsConst(m_listQueue))
        if (Session* s = Find(name))
            if (s->result.enState == CUnitTestSessionResult::Queued)
                s->result.enState = CUnitTestSessionResult::NotRun;
    m_listQueue.clear();
}

void CUnitTestManager::RunNext() {
    if (!m_bRunning)
        return;
    if (m_listQueue.isEmpty()) {
        m_bRunning = false;
        emit runFinished(m_i32Passed, m_i32Failed, m_dTotalMs);
        return;
    }
    const QString name = m_listQueue.takeFirst();
    if (Find(name)) {
        const CUnitTestSessionResult result = RunTestSession(name);
        m_dTotalMs += result.dDurationMs;
        (result.enState == CUnitTestSessionResult::Passed ? m_i32Passed : m_i32Failed) += 1;
        emit sessionFinished(result);
    }
    QTimer::singleShot(0, this, &CUnitTestManager::RunNext);
}

CUnitTestSessionResult CUnitTestManager::GetResult(const QString& name) const {
    for (const Session& s : m_vecSessions)
        if (s.strName == name)
            return s.result;
    CUnitTestSessionResult none;
    none.strName = name;
    return none;
}
