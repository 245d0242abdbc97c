#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget_p.h>

#include <LxStdUI/LIconButton.h>
#include <LxStdUI/LIconResource.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxImageWidgetBase.h>
#include <LxUIKit/WebImage/LxImageWidgetBase_p.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QGestureEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QResizeEvent>
#include <QWheelEvent>

#include <cmath>

namespace {

// Shown while nothing is decoded yet (placeholder, failure look).
constexpr int kPlaceholderSide = 120;

double ClampScale(double d) {
    return qBound(CLxImagePreviewContentWidget::kMinScale, d, CLxImagePreviewContentWidget::kMaxScale);
}

}  // namespace

// ---- CScanLineWidget ----------------------------------------------------------------------

CScanLineWidget::CScanLineWidget(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_timer.setInterval(16);
    LXUIKIT_SAFE_CONNECT(&m_timer, &QTimer::timeout, this, [this] { update(); });
}

void CScanLineWidget::Start() {
    m_elapsed.restart();
    m_timer.start();
}

void CScanLineWidget::Stop() { m_timer.stop(); }

int CScanLineWidget::LineY(int height, double seconds) {
    if (height <= 0)
        return 0;
    return int(std::floor((height - 1) * std::fmod(seconds * 0.3, 1.0)));
}

void CScanLineWidget::paintEvent(QPaintEvent*) {
    if (!m_elapsed.isValid())
        return;
    const int y = LineY(height(), double(m_elapsed.elapsed()) / 1000.0);
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), y), QColor(31, 111, 235, 40));
    QLinearGradient gradient(0, 0, width(), 0);
    gradient.setColorAt(0, QColor(64, 160, 255, 0));
    gradient.setColorAt(0.5, QColor(64, 160, 255, 230));
    gradient.setColorAt(1, QColor(64, 160, 255, 0));
    painter.fillRect(QRect(0, y, width(), 2), gradient);
}

// ---- CLxTranslateOverlayWidget ------------------------------------------------------------

CLxTranslateOverlayWidget::CLxTranslateOverlayWidget(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void CLxTranslateOverlayWidget::SetPixmap(const QPixmap& pixmap) {
    m_pixmap = pixmap;
    update();
}

void CLxTranslateOverlayWidget::paintEvent(QPaintEvent* event) {
    if (m_pixmap.isNull())
        return;
    QPainter painter(this);
    lxuikit_image::DrawScaledPart(painter, QRectF(rect()), m_pixmap, QRectF(m_pixmap.rect()), QRectF(event->rect()));
}

// ---- CLxImagePreviewContentWidget ---------------------------------------------------------

CLxImagePreviewContentWidget::CLxImagePreviewContentWidget(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("CLxImagePreviewContentWidget"));
    setContextMenuPolicy(Qt::CustomContextMenu);
    grabGesture(Qt::PinchGesture);
    m_pTranslateView = new CLxTranslateOverlayWidget(this);
    m_pTranslateView->hide();
    m_pScanLine = new CScanLineWidget(this);
    m_pScanLine->hide();
    m_pStatusIcon = new LIconButton(this);
    m_pStatusIcon->setObjectName(QStringLiteral("ImagePreviewStatusIcon"));
    m_pStatusIcon->setFixedSize(44, 44);
    m_pStatusIcon->setIconSize(QSize(32, 32));
    m_pStatusIcon->setHoverBackgroundEnabled(true);
    LXUIKIT_SAFE_CONNECT(m_pStatusIcon.data(), &QAbstractButton::clicked, this, [this] {
        if (m_enStatus == Status_DownloadFailed)
            Q_EMIT refreshRequested();
    });
    m_loadingTimer.setInterval(kLoadingIntervalMs);
    LXUIKIT_SAFE_CONNECT(&m_loadingTimer, &QTimer::timeout, this, &CLxImagePreviewContentWidget::OnLoadingTimer);
    SetImageStatus(Status_Loading);
}

CLxImagePreviewContentWidget::~CLxImagePreviewContentWidget() = default;

void CLxImagePreviewContentWidget::SetContentImgWidget(LxWebImageWidget* pWidget) {
    if (m_pImgWidget == pWidget)
        return;
    if (m_pImgWidget)
        disconnect(m_pImgWidget, nullptr, this, nullptr);
    m_pImgWidget = pWidget;
    if (!pWidget)
        return;
    pWidget->setParent(this);
    pWidget->lower();
    pWidget->setAttribute(Qt::WA_TransparentForMouseEvents);  // drags and wheels are ours
    pWidget->show();
    LXUIKIT_SAFE_CONNECT(pWidget, &LxWebImageWidget::ImageLoadStatusSignal, this,
                         &CLxImagePreviewContentWidget::OnImageDownloadStatus);
    ResizeImgWidget();
    CenterWebImageWidget();
}

LxWebImageWidget* CLxImagePreviewContentWidget::GetContentImgWidget() const { return m_pImgWidget; }

void CLxImagePreviewContentWidget::SetImageInfo(std::shared_ptr<ImageInfo> spInfo) {
    m_spImageInfo = std::move(spInfo);
    if (m_pImgWidget && m_spImageInfo)
        m_pImgWidget->SetScaleFactor(IsGif() ? 1.0 : ClampScale(m_spImageInfo->dScale));
    ResizeImgWidget();
    CenterWebImageWidget();
    UpdateTranslateView();
}

CLxImagePreviewContentWidget::ImageStatus CLxImagePreviewContentWidget::GetImageStatus(LxImageLoadStatus status) {
    switch (status) {
    case LxImageLoadStatus::Loading: return Status_Loading;
    case LxImageLoadStatus::DownloadFailed: return Status_DownloadFailed;
    case LxImageLoadStatus::Loaded: return Status_Loaded;
    case LxImageLoadStatus::None: LXUIKIT_ASSERT_TEXT(false, "LxImageLoadStatus is None"); return Status_Failed;
    case LxImageLoadStatus::LoadFailed: break;
    }
    return Status_Failed;
}

void CLxImagePreviewContentWidget::SetImageStatus(ImageStatus status) {
    m_enStatus = status;
    if (!m_pStatusIcon)
        return;
    switch (status) {
    case Status_Loading:
        m_pStatusIcon->setIconPath(QString::fromLatin1(LResource::icon_pic_loading_normal));
        m_pStatusIcon->setCursor(Qt::ArrowCursor);
        m_pStatusIcon->show();
        if (!m_loadingTimer.isActive())
            m_loadingTimer.start(kLoadingIntervalMs);
        break;
    case Status_DownloadFailed:
        m_loadingTimer.stop();
        m_pStatusIcon->setRotate(0);
        m_pStatusIcon->setIconPath(QString::fromLatin1(LResource::icon_pic_refresh_24_normal));
        m_pStatusIcon->setCursor(Qt::PointingHandCursor);
        m_pStatusIcon->show();
        break;
    case Status_Loaded:
        m_loadingTimer.stop();
        m_pStatusIcon->setRotate(0);
        m_pStatusIcon->hide();
        ResizeImgWidget();
        CenterWebImageWidget();
        break;
    case Status_Failed:
        m_loadingTimer.stop();
        m_pStatusIcon->setRotate(0);
        m_pStatusIcon->setIconPath(QString::fromLatin1(LResource::icon_picture_rupture_20_normal));
        m_pStatusIcon->setCursor(Qt::ArrowCursor);
        m_pStatusIcon->show();
        break;
    }
    m_pStatusIcon->raise();
    PlaceStatusIcon();
}

void CLxImagePreviewContentWidget::OnImageDownloadStatus(const QString&, LxImageLoadStatus status) {
    SetImageStatus(GetImageStatus(status));
}

void CLxImagePreviewContentWidget::OnLoadingTimer() {
    if (m_pStatusIcon)
        m_pStatusIcon->setRotate(m_i32Angle);
    m_i32Angle += 20;
    if (m_i32Angle >= 360)
        m_i32Angle = 0;
    update();
}

bool CLxImagePreviewContentWidget::IsGif() const {
    return m_pImgWidget && m_pImgWidget->GetPrivateImageType() == LxWebImageWidget::ImageType_Animated;
}

void CLxImagePreviewContentWidget::ApplyScale(double dScale) {
    m_spImageInfo->bUserChangedScale = true;
    m_spImageInfo->dScale = dScale;
    m_pImgWidget->SetScaleFactor(dScale);
    ResizeImgWidget();
    CenterWebImageWidget();
}

void CLxImagePreviewContentWidget::OnZoomIn() {
    if (!m_pImgWidget || !m_spImageInfo || IsGif())
        return;
    ApplyScale(ClampScale(m_spImageInfo->dScale + kZoomStep));
}

void CLxImagePreviewContentWidget::OnZoomOut() {
    if (!m_pImgWidget || !m_spImageInfo || IsGif())
        return;
    ApplyScale(ClampScale(m_spImageInfo->dScale - kZoomStep));
}

void CLxImagePreviewContentWidget::Zoom(double delta) {
    if (!m_pImgWidget || !m_spImageInfo || IsGif())
        return;
    const double s = m_spImageInfo->dScale;
    double next = s;
    if (s > 1.0)
        next = s + delta;
    else if (s > 0.01)
        next = s + delta * s * s;
    else
        next = s + delta * 0.0001;
    next = ClampScale(next);
    if (std::abs(s - next) <= 1e-12)
        return;
    ApplyScale(next);
}

void CLxImagePreviewContentWidget::StartOrStopScanning(bool bStart) {
    if (!m_pScanLine)
        return;
    if (bStart) {
        PlaceOverlays();
        m_pScanLine->show();
        m_pScanLine->raise();
        if (m_pStatusIcon)
            m_pStatusIcon->raise();
        if (!m_pScanLine->IsRunning())
            m_pScanLine->Start();
    } else {
        m_pScanLine->Stop();
        m_pScanLine->hide();
    }
}

bool CLxImagePreviewContentWidget::IsScanning() const { return m_pScanLine && m_pScanLine->IsRunning(); }

void CLxImagePreviewContentWidget::UpdateTranslateView() {
    const bool bShow = m_spImageInfo && m_spImageInfo->bShowTranslated &&
                       m_spImageInfo->i32TranslateState == ImageInfo::Translated &&
                       !m_spImageInfo->translatedPixmap.isNull();
    if (m_pTranslateView) {
        m_pTranslateView->SetPixmap(bShow ? m_spImageInfo->translatedPixmap : QPixmap());
        m_pTranslateView->setVisible(bShow);
    }
    UpdateTranslateViewGeometry();
    StartOrStopScanning(m_spImageInfo && m_spImageInfo->i32TranslateState == ImageInfo::Translating);
}

void CLxImagePreviewContentWidget::UpdateTranslateViewGeometry() { PlaceOverlays(); }

void CLxImagePreviewContentWidget::PlaceOverlays() {
    if (!m_pImgWidget)
        return;
    const QRect picture = m_pImgWidget->geometry();
    if (m_pTranslateView) {
        m_pTranslateView->setGeometry(picture);
        if (m_pTranslateView->isVisible())
            m_pTranslateView->raise();
    }
    if (m_pScanLine)
        m_pScanLine->setGeometry(picture.intersected(rect()));
    if (m_pStatusIcon)
        m_pStatusIcon->raise();
}

void CLxImagePreviewContentWidget::PlaceStatusIcon() {
    if (m_pStatusIcon)
        m_pStatusIcon->move((width() - m_pStatusIcon->width()) / 2, (height() - m_pStatusIcon->height()) / 2);
}

void CLxImagePreviewContentWidget::ResizeImgWidget() {
    if (!m_pImgWidget)
        return;
    QSize size;
    if (CLxImageWidgetBase* inner = m_pImgWidget->GetPrivateImageWidget())
        if (!inner->GetImageSize().isEmpty())
            size = inner->sizeHint();
    if (size.isEmpty())
        size = QSize(kPlaceholderSide, kPlaceholderSide);
    m_pImgWidget->resize(size);
    PlaceOverlays();
}

bool CLxImagePreviewContentWidget::IsWidgetResizable() const {
    return m_pImgWidget && (m_pImgWidget->width() > width() || m_pImgWidget->height() > height());
}

void CLxImagePreviewContentWidget::CenterWebImageWidget() {
    if (!m_pImgWidget)
        return;
    m_pImgWidget->move((width() - m_pImgWidget->width()) / 2, (height() - m_pImgWidget->height()) / 2);
    PlaceOverlays();
}

void CLxImagePreviewContentWidget::MoveWebImageWidget(const QPoint& topLeft) {
    if (!m_pImgWidget)
        return;
    // A side that overflows may move until its far edge meets the area's; a side that fits stays centred.
    auto axis = [](int want, int picture, int area) {
        return picture > area ? qBound(area - picture, want, 0) : (area - picture) / 2;
    };
    m_pImgWidget->move(axis(topLeft.x(), m_pImgWidget->width(), width()),
                       axis(topLeft.y(), m_pImgWidget->height(), height()));
    PlaceOverlays();
}

void CLxImagePreviewContentWidget::UpdateImgWidgetPos(QResizeEvent*) {
    if (!m_pImgWidget)
        return;
    if (IsWidgetResizable())
        MoveWebImageWidget(m_pImgWidget->pos());
    else
        CenterWebImageWidget();
}

QPixmap CLxImagePreviewContentWidget::GetSourcePixmap() const {
    return m_pImgWidget ? m_pImgWidget->GetSourcePixmap() : QPixmap();
}

LIconButton* CLxImagePreviewContentWidget::GetStatusIcon() const { return m_pStatusIcon; }

QWidget* CLxImagePreviewContentWidget::GetTranslateView() const { return m_pTranslateView; }

bool CLxImagePreviewContentWidget::event(QEvent* event) {
    if (event->type() == QEvent::Gesture) {
        auto* gesture = static_cast<QGestureEvent*>(event);
        if (auto* pinch = static_cast<QPinchGesture*>(gesture->gesture(Qt::PinchGesture))) {
            // The change of scale since the last update, as a step: fingers apart zoom in.
            if (pinch->changeFlags() & QPinchGesture::ScaleFactorChanged)
                Zoom(pinch->scaleFactor() - 1.0);
            gesture->accept(pinch);
            return true;
        }
    } else if (event->type() == QEvent::NativeGesture) {
        auto* native = static_cast<QNativeGestureEvent*>(event);
        if (native->gestureType() == Qt::ZoomNativeGesture) {
            Zoom(native->value());
            return true;
        }
    }
    return QWidget::event(event);
}

void CLxImagePreviewContentWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    UpdateImgWidgetPos(event);
    PlaceStatusIcon();
}

void CLxImagePreviewContentWidget::wheelEvent(QWheelEvent* event) {
    const int dy = event->angleDelta().y();
    if (dy > 0)
        OnZoomIn();
    else if (dy < 0)
        OnZoomOut();
    ResizeImgWidget();
    CenterWebImageWidget();
    event->accept();
}

void CLxImagePreviewContentWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && IsWidgetResizable()) {
        m_bDragging = true;
        m_dragOffset = event->localPos().toPoint() - m_pImgWidget->pos();
        setCursor(Qt::ClosedHandCursor);
        event->accept();
        return;
    }
    QWidget::mousePressEvent(event);
}

void CLxImagePreviewContentWidget::mouseMoveEvent(QMouseEvent* event) {
    if (m_bDragging) {
        MoveWebImageWidget(event->localPos().toPoint() - m_dragOffset);
        event->accept();
        return;
    }
    QWidget::mouseMoveEvent(event);
}

void CLxImagePreviewContentWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && m_bDragging) {
        m_bDragging = false;
        unsetCursor();
        event->accept();
        return;
    }
    QWidget::mouseReleaseEvent(event);
}
