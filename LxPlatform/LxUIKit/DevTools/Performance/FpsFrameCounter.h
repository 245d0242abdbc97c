#pragma once
// CFpsFrameCounter: the process-wide owner of the FPS helpers. While started, every helper takes
// one sample a second and fpsUpdated() follows (the FPS monitor dialog redraws its table on it).
// Widgets are added by the developer tools (the FPS dialog, the inspector) or by a host.

#include <LxUIKit/LxUIKitExport.h>

#include <QList>
#include <QObject>
#include <QString>

class CFpsHelper;

class LXUIKIT_EXPORT CFpsFrameCounter : public QObject {
    Q_OBJECT
public:
    static constexpr int kSampleIntervalMs = 1000;

    // Made on first use, owned by the application object.
    static CFpsFrameCounter* Singleton();

    // Ignored for a null object or one already watched.
    void AddWidget(QObject* object, const QString& name);
    void RemoveWidget(QObject* object);
    // Removes every helper, those whose object is gone included.
    void Clear();
    void Start();
    void Stop();
    bool IsStarted() const { return m_i32TimerId != 0; }
    void CatchPaintEvent(QObject* object);
    const QList<CFpsHelper*>& GetFpsHelpers() const { return m_listHelpers; }
    CFpsHelper* HelperOf(QObject* object) const;

    ~CFpsFrameCounter() override;

Q_SIGNALS:
    void fpsUpdated();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    CFpsFrameCounter();
    QList<CFpsHelper*> m_listHelpers;
    int m_i32TimerId = 0;
};
