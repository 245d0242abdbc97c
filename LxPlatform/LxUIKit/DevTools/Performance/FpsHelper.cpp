#include <LxUIKit/DevTools/Performance/FpsHelper.h>

#include <QEvent>
#include <QVariant>

#include <algorithm>

namespace {
const char kNameProperty[] = "fpshelper_name";
}

CFpsHelper::CFpsHelper(QObject* object, const QString& name) : m_pObject(object) {
    if (object && !name.isEmpty())
        object->setProperty(kNameProperty, name);
}

CFpsHelper::~CFpsHelper() { CatchPaintEvent(false); }

void CFpsHelper::Start() {
    Stop();
    CatchPaintEvent(true);
    m_elapsed.start();
}

void CFpsHelper::Stop() {
    CatchPaintEvent(false);
    m_i32FrameCount = 0;
    m_listHistory.clear();
}

void CFpsHelper::CatchPaintEvent(bool bOn) {
    if (bOn == m_bCatching)
        return;
    m_bCatching = bOn;
    if (!m_pObject)
        return;
    if (bOn)
        m_pObject->installEventFilter(this);
    else
        m_pObject->removeEventFilter(this);
}

bool CFpsHelper::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && watched == m_pObject)
        AddFrame();
    return QObject::eventFilter(watched, event);
}

void CFpsHelper::Compute() {
    const qint64 ms = m_elapsed.isValid() ? m_elapsed.elapsed() : 0;
    // Two samples in the same millisecond would divide by zero: such a sample reads 0.
    AppendSample(ms > 0 ? m_i32FrameCount / (double(ms) / 1000.0) : 0.0);
    m_i32FrameCount = 0;
    m_elapsed.restart();
}

void CFpsHelper::AppendSample(double dFps) {
    m_listHistory.append(dFps);
    if (m_listHistory.size() > kMaxSamples)
        m_listHistory.removeFirst();
}

QString CFpsHelper::Name() const {
    if (!m_pObject)
        return QString();
    const QString name = m_pObject->property(kNameProperty).toString();
    return name.isEmpty() ? QString::fromLatin1(m_pObject->metaObject()->className()) : name;
}

double CFpsHelper::Fps() const { return m_listHistory.isEmpty() ? 0.0 : m_listHistory.last(); }

double CFpsHelper::AverageFps() const {
    if (m_listHistory.isEmpty())
        return 0.0;
    double sum = 0;
    for (double v : m_listHistory)
        sum += v;
    return sum / m_listHistory.size();
}

double CFpsHelper::ValidAverageFps() const {
    double sum = 0;
    int n = 0;
    for (double v : m_listHistory) {
        if (v > kValidFpsThreshold) {
            sum += v;
            ++n;
        }
    }
    return n ? sum / n : 0.0;
}

double CFpsHelper::MaxFps() const {
    double best = 0;
    for (double v : m_listHistory)
        best = std::max(best, v);
    return best;
}
