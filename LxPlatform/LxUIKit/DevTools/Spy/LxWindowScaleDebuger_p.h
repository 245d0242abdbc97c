#pragma once
// The inspector's "window scale" tab: the selected widget's window rendered at device pixel ratios
// 1, 1.25, 1.5 and 2 side by side, to spot blurry pictures, clipped texts and off-by-one lines before
// a user on a scaled screen does. Each picture is rendered into a QPixmap carrying that ratio (so
// the window paints itself as it would on such a screen) and labelled with its ratio and pixel
// size.
//
// Choices made here:
// - Pictures wider than kMaxShownWidth or taller than kMaxShownHeight device pixels are scaled down
//   (smoothly) for display, and the label gives the display scale; "actual pixels" shows them
//   unscaled, to be scrolled through.
// - Rendering happens when the tab is shown, on a new selection while it is shown, and on the
//   refresh button: four renders of a large window are not free, and a hidden tab needs none.

#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QCheckBox>
#include <QLabel>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QVector>
#include <QWidget>

class LxWindowScaleDebuger : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    static constexpr int kMaxShownWidth = 480;
    static constexpr int kMaxShownHeight = 640;
    static const QVector<qreal>& Ratios();  // 1, 1.25, 1.5, 2

    explicit LxWindowScaleDebuger(QWidget* parent);

    // The window rendered at one ratio: a pixmap of round(size × ratio) pixels carrying the ratio.
    static QPixmap RenderAt(QWidget* window, qreal ratio);
    // Renders the current window at every ratio and shows the pictures.
    void Render();
    QWidget* renderedWindow() const { return m_pWindow; }
    const QVector<QPixmap>& pixmaps() const { return m_pixmaps; }
    QPushButton* refreshButton() const { return m_pRefresh; }
    QCheckBox* actualPixelsBox() const { return m_pActual; }

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override;
    void showEvent(QShowEvent* ev) override;

private:
    void ShowPixmaps();

    QPointer<QWidget> m_pWindow;
    QPointer<QPushButton> m_pRefresh;
    QPointer<QCheckBox> m_pActual;
    QPointer<QLabel> m_pStatus;
    QPointer<QScrollArea> m_pScroll;
    QPointer<QWidget> m_pStrip;
    QVector<QPixmap> m_pixmaps;
    bool m_bDirty = true;
};
