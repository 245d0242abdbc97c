#include <LxUIKit/DevTools/Performance/FpsFrameCounter.h>

#include <LxUIKit/DevTools/Performance/FpsHelper.h>

#include <QCoreApplication>
#include <QPointer>
#include <QTimerEvent>

CFpsFrameCounter* CFpsFrameCounter::Singleton() {
    static QPointer<CFpsFrameCounter> s_p;
    if (!s_p) {
        s_p = new CFpsFrameCounter();
        s_p->setParent(QCoreApplication::instance());
    }
    return s_p;
}

CFpsFrameCounter::CFpsFrameCounter() = default;

CFpsFrameCounter::~CFpsFrameCounter() { Clear(); }

CFpsHelper* CFpsFrameCounter::HelperOf(QObject* object) const {
    for (CFpsHelper* h : m_listHelpers)
        if (h->Object() == object)
            return h;
    return nullptr;
}

void CFpsFrameCounter::AddWidget(QObject* object, const QString& name) {
    if (!object || HelperOf(object))
        return;
    auto* helper = new CFpsHelper(object, name);
    m_listHelpers.append(helper);
    if (IsStarted())
        helper->Start();
}

void CFpsFrameCounter::RemoveWidget(QObject* object) {
    if (CFpsHelper* h = object ? HelperOf(object) : nullptr) {
        m_listHelpers.removeOne(h);
        delete h;
    }
}

void CFpsFrameCounter::Clear() {
    const QList<CFpsHelper*> helpers = m_listHelpers;
    m_listHelpers.clear();
    qDeleteAll(helpers);
}

void CFpsFrameCounter::Start() {
    Stop();
    for (CFpsHelper* h : qAsConst(m_listHelpers))
        h->Start();
    m_i32TimerId = startTimer(kSampleIntervalMs);
}

void CFpsFrameCounter::Stop() {
    if (m_i32TimerId) {
        killTimer(m_i32TimerId);
        m_i32TimerId = 0;
    }
    for (CFpsHelper* h : qAsConst(m_listHelpers))
        h->Stop();
}

void CFpsFrameCounter::CatchPaintEvent(QObject* object) {
    if (CFpsHelper* h = HelperOf(object))
        h->CatchPaintEvent(true);
}

void CFpsFrameCounter::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_i32TimerId) {
        QObject::timerEvent(event);
        return;
    }
    for (CFpsHelper* h : qAsConst(m_listHelpers))
        h->Compute();
    emit fpsUpdated();
}
