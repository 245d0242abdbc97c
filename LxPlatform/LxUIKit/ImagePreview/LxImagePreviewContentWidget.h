#pragma once
// CLxImagePreviewContentWidget: the client area of the image preview window. It holds one
// LxWebImageWidget showing the current picture and lets the user
// - zoom: OnZoomIn / OnZoomOut (buttons, mouse wheel: one step of 0.1 per notch whatever its size)
//   and Zoom(delta) (pinch: slower as the picture gets small), always within [0.05, 10.0];
//   animated pictures are never zoomed;
// - drag the picture with the left button, only while it is larger than the area; it never leaves
//   a gap on a side it overflows (a side that fits stays centred);
// and shows the state of the picture with a 44 x 44 status icon over it: a spinner while loading
// (turning 20 degrees every 50 ms), a refresh icon after a failed download (a click asks for the
// picture again: refreshRequested) and a broken picture after any other failure.
//
// The translated picture (ImageInfo::translatedPixmap, while bShowTranslated) is laid exactly over
// the picture; while a translation is pending a scan line sweeps over the visible part of it.
//
// Large pictures stay smooth at any zoom: only the part of the picture inside the area is scaled
// when painting (see CLxImageWidgetBase).

#include <LxUIKit/ImagePreview/LxImagePreviewDefine.h>
#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/LxWebImageDefine.h>

#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>

class LIconButton;
class LxWebImageWidget;
class CScanLineWidget;
class CLxTranslateOverlayWidget;
class QResizeEvent;

class LXUIKIT_EXPORT CLxImagePreviewContentWidget : public QWidget {
    Q_OBJECT
public:
    enum ImageStatus : int { Status_Loading = 0, Status_DownloadFailed = 1, Status_Loaded = 2, Status_Failed = 3 };
    Q_ENUM(ImageStatus)

    static constexpr double kMinScale = 0.05;
    static constexpr double kMaxScale = 10.0;
    static constexpr double kZoomStep = 0.1;
    static constexpr int kLoadingIntervalMs = 50;

    explicit CLxImagePreviewContentWidget(QWidget* parent = nullptr);
    ~CLxImagePreviewContentWidget() override;

    void SetContentImgWidget(LxWebImageWidget* pWidget);
    LxWebImageWidget* GetContentImgWidget() const;
    void SetImageInfo(std::shared_ptr<ImageInfo> spInfo);
    std::shared_ptr<ImageInfo> GetImageInfo() const { return m_spImageInfo; }

    void SetImageStatus(ImageStatus status);
    ImageStatus GetCurrentImageStatus() const { return m_enStatus; }
    // The mapping from the picture widget's outcome; None is a programming error (asserted).
    static ImageStatus GetImageStatus(LxImageLoadStatus status);

    void OnZoomIn();
    void OnZoomOut();
    void Zoom(double delta);
    bool IsGif() const;

    void StartOrStopScanning(bool bStart);
    bool IsScanning() const;
    void UpdateTranslateView();
    void UpdateTranslateViewGeometry();

    void CenterWebImageWidget();
    void MoveWebImageWidget(const QPoint& topLeft);
    void ResizeImgWidget();
    void UpdateImgWidgetPos(QResizeEvent* event);
    // True when the picture is larger than the area (it can be dragged).
    bool IsWidgetResizable() const;

    QPixmap GetSourcePixmap() const;
    void SetFirstShowed(bool bFirst) { m_bFirstShowed = bFirst; }
    bool IsFirstShowed() const { return m_bFirstShowed; }

    // Introspection (tests, tools).
    LIconButton* GetStatusIcon() const;
    int GetLoadingAngle() const { return m_i32Angle; }
    bool IsLoadingTimerActive() const { return m_loadingTimer.isActive(); }
    QWidget* GetTranslateView() const;

Q_SIGNALS:
    void refreshRequested();

public Q_SLOTS:
    void OnImageDownloadStatus(const QString& url, LxImageLoadStatus status);

private Q_SLOTS:
    void OnLoadingTimer();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void ApplyScale(double dScale);
    void PlaceStatusIcon();
    void PlaceOverlays();

    QPointer<LxWebImageWidget> m_pImgWidget;
    std::shared_ptr<ImageInfo> m_spImageInfo;
    ImageStatus m_enStatus = Status_Loading;
    QPointer<LIconButton> m_pStatusIcon;
    QTimer m_loadingTimer;
    int m_i32Angle = 0;
    QPointer<CScanLineWidget> m_pScanLine;
    QPointer<CLxTranslateOverlayWidget> m_pTranslateView;
    bool m_bDragging = false;
    QPoint m_dragOffset;
    bool m_bFirstShowed = true;
};
