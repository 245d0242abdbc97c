#pragma once
// The content area's two overlays: the scan line shown while a translation is pending, and the
// translated picture laid over the original.

#include <QElapsedTimer>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

// A translucent sweep: the line runs from top to bottom once every 3 1/3 seconds (y =
// floor((height - 1) * fmod(seconds * 0.3, 1))), the area above it tinted, the line itself a
// horizontal gradient that is strongest in the middle.
class CScanLineWidget : public QWidget {
    Q_OBJECT
public:
    explicit CScanLineWidget(QWidget* parent = nullptr);
    void Start();
    void Stop();
    bool IsRunning() const { return m_timer.isActive(); }
    // The line's row for `seconds` since Start() in a widget of `height` rows.
    static int LineY(int height, double seconds);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer m_timer;
    QElapsedTimer m_elapsed;
};

// Paints a pixmap stretched over the widget, scaling only the exposed part.
class CLxTranslateOverlayWidget : public QWidget {
    Q_OBJECT
public:
    explicit CLxTranslateOverlayWidget(QWidget* parent = nullptr);
    void SetPixmap(const QPixmap& pixmap);
    QPixmap GetPixmap() const { return m_pixmap; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_pixmap;
};
