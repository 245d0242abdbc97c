#pragma once
// CFpsHelper: counts the paint events of one object and turns them into frames-per-second
// samples, one per Compute() (the frame counter calls it every second).
//
// The history keeps the newest kMaxSamples samples (two minutes at one a second), oldest first.
// Statistics over it are 0 while it is empty:
//   Fps()             the newest sample;
//   AverageFps()      the mean of all samples;
//   ValidAverageFps() the mean of the samples above kValidFpsThreshold only, so seconds in which
//                     the widget sat idle do not drag it down (0 when none is above);
//   MaxFps()          the largest sample.
// The display name is kept on the watched object as the dynamic property "fpshelper_name".

#include <LxUIKit/LxUIKitExport.h>

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

class LXUIKIT_EXPORT CFpsHelper : public QObject {
    Q_OBJECT
public:
    static constexpr int kMaxSamples = 120;
    static constexpr double kValidFpsThreshold = 10.0;

    CFpsHelper(QObject* object, const QString& name);
    ~CFpsHelper() override;

    // Stop(), then catch paint events and start the clock.
    void Start();
    // No more catching; frame count and history cleared.
    void Stop();
    void CatchPaintEvent(bool bOn);
    bool IsCatching() const { return m_bCatching; }

    // One sample: frames since the last sample over the time since then.
    void Compute();
    // Records a sample as Compute() does (history capped), for replaying a known sequence.
    void AppendSample(double dFps);
    void AddFrame() { ++m_i32FrameCount; }
    int FrameCount() const { return m_i32FrameCount; }

    QObject* Object() const { return m_pObject; }
    QString Name() const;
    const QList<double>& History() const { return m_listHistory; }
    double Fps() const;
    double AverageFps() const;
    double ValidAverageFps() const;
    double MaxFps() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QObject> m_pObject;
    QElapsedTimer m_elapsed;
    bool m_bCatching = false;
    int m_i32FrameCount = 0;
    QList<double> m_listHistory;
};
