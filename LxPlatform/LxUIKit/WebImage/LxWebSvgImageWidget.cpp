#include <LxUIKit/WebImage/LxWebSvgImageWidget_p.h>

#include <LxCore/FileSystem.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxImageWidgetBase_p.h>
#include <LxUIKit/WebImage/LxSvgDocumentGuard_p.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>

#include <QPainter>
#include <QSvgRenderer>

namespace {
// A copy is rendered at the intrinsic size, but never larger than this on its longer side.
constexpr int kMaxCopySide = 4096;
}  // namespace

CLxWebSvgImageWidget::CLxWebSvgImageWidget(QWidget* parent) : CLxImageWidgetBase(parent) {}

CLxWebSvgImageWidget::~CLxWebSvgImageWidget() = default;

bool CLxWebSvgImageWidget::Load(const QString& url, const QString& filePath) {
    if (!LoadFile(filePath))
        return false;
    CLxWebImageCacheMgr::GetInstance().InsertSvgFilePath(url, filePath);
    return true;
}

bool CLxWebSvgImageWidget::LoadCache(const QString& url) {
    const QString path = CLxWebImageCacheMgr::GetInstance().GetSvgFilePath(url);
    if (path.isEmpty()) {
        Clear();
        return false;
    }
    return LoadFile(path);
}

bool CLxWebSvgImageWidget::LoadFile(const QString& filePath) {
    Clear();
    QByteArray document;
    const CLxSvgDocumentGuard::Verdict verdict = CLxSvgDocumentGuard::ReadChecked(filePath, document);
    if (verdict != CLxSvgDocumentGuard::Verdict::Ok) {
        LXUIKIT_LOG_WARN("svg {} refused: {}", filePath, CLxSvgDocumentGuard::VerdictName(verdict));
        return false;
    }
    auto* renderer = new QSvgRenderer(this);
    if (!renderer->load(document) || !renderer->isValid()) {
        LXUIKIT_LOG_WARN("svg {} cannot be parsed", filePath);
        delete renderer;
        return false;
    }
    m_pRenderer = renderer;
    m_strFilePath = filePath;
    LXUIKIT_SAFE_CONNECT(renderer, &QSvgRenderer::repaintNeeded, this, [this] {
        InvalidatePrepared();
        update();
    });
    UpdateVisibility();
    updateGeometry();
    update();
    return true;
}

void CLxWebSvgImageWidget::UpdateVisibility() {
    setVisible(m_pRenderer && m_pRenderer->isValid() && !m_pRenderer->defaultSize().isEmpty());
}

void CLxWebSvgImageWidget::Clear() {
    if (m_pRenderer)
        delete m_pRenderer.data();
    m_pRenderer = nullptr;
    m_strFilePath.clear();
    InvalidatePrepared();
    updateGeometry();
    update();
}

QSize CLxWebSvgImageWidget::GetImageSize() const {
    return m_pRenderer && m_pRenderer->isValid() ? m_pRenderer->defaultSize() : QSize();
}

void CLxWebSvgImageWidget::renderSvg(QPainter* painter, const QRectF& target, const QRectF& viewBox) {
    if (!m_pRenderer || !m_pRenderer->isValid() || target.isEmpty() || viewBox.isEmpty())
        return;
    const QRectF full = m_pRenderer->viewBoxF();
    if (full.isEmpty())
        return;
    painter->save();
    painter->setClipRect(target, Qt::IntersectClip);
    // Place the whole document so that `viewBox` of it lands on `target`.
    const double sx = target.width() / viewBox.width(), sy = target.height() / viewBox.height();
    const QRectF bounds(target.left() - (viewBox.left() - full.left()) * sx,
                        target.top() - (viewBox.top() - full.top()) * sy, full.width() * sx, full.height() * sy);
    m_pRenderer->render(painter, bounds);
    painter->restore();
}

QImage CLxWebSvgImageWidget::RenderImage(const QSize& logicalSize, qreal dpr) {
    QSize pixels = (QSizeF(logicalSize) * dpr).toSize();
    if (pixels.isEmpty())
        return QImage();
    if (pixels.width() > kMaxCopySide || pixels.height() > kMaxCopySide)
        pixels.scale(kMaxCopySide, kMaxCopySide, Qt::KeepAspectRatio);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    renderSvg(&p, QRectF(QPointF(0, 0), QSizeF(pixels)), m_pRenderer->viewBoxF());
    p.end();
    image.setDevicePixelRatio(dpr);
    return image;
}

QPixmap CLxWebSvgImageWidget::GetSourcePixmap() {
    if (!m_pRenderer || !m_pRenderer->isValid())
        return QPixmap();
    return QPixmap::fromImage(RenderImage(m_pRenderer->defaultSize(), devicePixelRatioF()));
}

void CLxWebSvgImageWidget::Copy() {
    if (!LXUIKIT_ASSERT(m_pRenderer != nullptr && m_pRenderer->isValid()))
        return;
    QByteArray svg;
    core::fs::ReadFile(m_strFilePath, svg);
    lxuikit_image::CopyToClipboard(RenderImage(m_pRenderer->defaultSize(), devicePixelRatioF()),
                                   QStringLiteral("image/svg+xml"), svg);
}

bool CLxWebSvgImageWidget::GetRoundedCornerPixmapCache(QPixmap& pixmap) {
    // Renderings are kept whole (rounded or not) in paintEvent; a fresh one is rounded here.
    DrawRoundedCorner(pixmap);
    return true;
}

void CLxWebSvgImageWidget::paintEvent(QPaintEvent*) {
    if (!m_pRenderer || !m_pRenderer->isValid()) {
        hide();
        return;
    }
    const LxImageDrawOptions& options = GetDrawOptions();
    const QSize intrinsic = m_pRenderer->defaultSize();
    const QRect crop = lxuikit_image::CropRect(options, intrinsic);
    QRectF viewBox = m_pRenderer->viewBoxF();
    QSizeF logical =
        options.bScaleToWidget ? QSizeF(size()) : QSizeF(crop.isNull() ? intrinsic : crop.size()) * options.dScale;
    if (!crop.isNull() && !intrinsic.isEmpty()) {
        // The crop is in intrinsic pixels; map it into view box units.
        const double kx = viewBox.width() / intrinsic.width(), ky = viewBox.height() / intrinsic.height();
        viewBox = QRectF(viewBox.left() + crop.left() * kx, viewBox.top() + crop.top() * ky, crop.width() * kx,
                         crop.height() * ky);
    }
    const qreal dpr = devicePixelRatioF();
    const QSize pixels(qRound(logical.width() * dpr), qRound(logical.height() * dpr));
    if (pixels.isEmpty())
        return;
    // Vector pictures are rendered at the target size rather than scaled; an animated one every time.
    CLxPreparedPixmap& prepared = d_func()->m_prepared;
    if (m_pRenderer->animated())
        prepared.Invalidate();
    LxPrepareKey key = LxPrepareKey::Of(1, size(), dpr, options, crop);
    key.viewBox = viewBox;
    const QPixmap pixmap = prepared.Get(key, [&] {
        QPixmap rendered(pixels);
        rendered.fill(Qt::transparent);
        {
            QPainter p(&rendered);
            p.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
            renderSvg(&p, QRectF(QPointF(0, 0), QSizeF(pixels)), viewBox);
        }
        rendered.setDevicePixelRatio(dpr);
        if (options.enCornerType != LxCornerRadiusType::None)
            GetRoundedCornerPixmapCache(rendered);
        return rendered;
    });
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QPointF(0, 0), pixmap);
    lxuikit_image::PaintBorder(painter, QRectF(QPointF(0, 0), QSizeF(pixels) / dpr), options);
}
