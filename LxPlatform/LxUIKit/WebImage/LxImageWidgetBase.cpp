#include <LxUIKit/WebImage/LxImageWidgetBase.h>
#include <LxUIKit/WebImage/LxImageWidgetBase_p.h>

#include <LxCore/FileSystem.h>
#include <LxCore/TimeDate.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QApplication>
#include <QBuffer>
#include <QCache>
#include <QClipboard>
#include <QDataStream>
#include <QDir>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QUrl>

#include <cmath>

namespace {

// Prepared pixmaps of still pictures, shared by every widget that shows one the same way.
QCache<QByteArray, QPixmap>& SharedPrepared() {
    static auto* s_pCache = new QCache<QByteArray, QPixmap>(64 * 1024 * 1024);  // bytes
    return *s_pCache;
}

QByteArray SharedKey(const LxPrepareKey& key) {
    QByteArray out;
    QDataStream stream(&out, QIODevice::WriteOnly);
    // The widget's size matters only when the picture is stretched to it.
    stream << key.i64Source << (key.bScaleToWidget ? key.widgetSize : QSize()) << key.dDpr << key.bScaleToWidget
           << key.dScale << key.i32Corner << key.dRadiusX << key.dRadiusY << key.crop;
    return out;
}

}  // namespace

// ---- drawing rules --------------------------------------------------------------------------

namespace lxuikit_image {

QRect CropRect(const LxImageDrawOptions& options, const QSize& size) {
    if (!options.pCropper || size.isEmpty())
        return QRect();
    const QRect rect = options.pCropper->GetCropRect(size);
    if (!rect.isValid())
        return QRect();
    const QRect inside = rect.intersected(QRect(QPoint(0, 0), size));
    return inside.isEmpty() ? QRect() : inside;
}

QPainterPath RoundedPath(const QRectF& rect, LxCornerRadiusType type, double dRadiusX, double dRadiusY) {
    QPainterPath path;
    const double rx = qBound(0.0, dRadiusX, rect.width() / 2), ry = qBound(0.0, dRadiusY, rect.height() / 2);
    bool tl = false, tr = false, br = false, bl = false;
    switch (type) {
    case LxCornerRadiusType::None: break;
    case LxCornerRadiusType::All: tl = tr = br = bl = true; break;
    case LxCornerRadiusType::Top: tl = tr = true; break;
    case LxCornerRadiusType::Bottom: bl = br = true; break;
    case LxCornerRadiusType::Left: tl = bl = true; break;
    case LxCornerRadiusType::Right: tr = br = true; break;
    }
    if (rx <= 0 || ry <= 0 || !(tl || tr || br || bl)) {
        path.addRect(rect);
        return path;
    }
    const double l = rect.left(), t = rect.top(), r = rect.right(), b = rect.bottom();
    path.moveTo(l + (tl ? rx : 0), t);
    path.lineTo(r - (tr ? rx : 0), t);
    if (tr)
        path.arcTo(QRectF(r - 2 * rx, t, 2 * rx, 2 * ry), 90, -90);
    path.lineTo(r, b - (br ? ry : 0));
    if (br)
        path.arcTo(QRectF(r - 2 * rx, b - 2 * ry, 2 * rx, 2 * ry), 0, -90);
    path.lineTo(l + (bl ? rx : 0), b);
    if (bl)
        path.arcTo(QRectF(l, b - 2 * ry, 2 * rx, 2 * ry), 270, -90);
    path.lineTo(l, t + (tl ? ry : 0));
    if (tl)
        path.arcTo(QRectF(l, t, 2 * rx, 2 * ry), 180, -90);
    path.closeSubpath();
    return path;
}

void RoundPixmap(QPixmap& pixmap, LxCornerRadiusType type, double dRadiusX, double dRadiusY) {
    if (pixmap.isNull() || type == LxCornerRadiusType::None)
        return;
    const qreal dpr = pixmap.devicePixelRatio();
    QPixmap rounded(pixmap.size());
    rounded.setDevicePixelRatio(dpr);
    rounded.fill(Qt::transparent);
    QPainter p(&rounded);
    p.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    // An antialiased mask first, then the picture kept only where the mask is.
    p.fillPath(RoundedPath(QRectF(QPointF(0, 0), QSizeF(pixmap.size()) / dpr), type, dRadiusX, dRadiusY), Qt::black);
    p.setCompositionMode(QPainter::CompositionMode_SourceIn);
    p.drawPixmap(0, 0, pixmap);
    p.end();
    pixmap = rounded;
}

void PaintBorder(QPainter& painter, const QRectF& rect, const LxImageDrawOptions& options) {
    const double width = options.dBorderWidth;
    if (width <= 0 || options.strBorderColorKey.empty() || rect.isEmpty())
        return;
    const QColor color = lx_ui_res::Provider::instance()->color(QString::fromStdString(options.strBorderColorKey));
    if (!color.isValid())
        return;
    const double half = width / 2;
    const QRectF inner = rect.adjusted(half, half, -half, -half);
    if (inner.isEmpty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    if (options.enCornerType == LxCornerRadiusType::None)
        painter.drawRect(inner);
    else  // the radii shrink by the half width the stroke moved in
        painter.drawPath(RoundedPath(inner, options.enCornerType, qMax(0.0, options.dRadiusX - half),
                                     qMax(0.0, options.dRadiusY - half)));
    painter.restore();
}

void DrawScaledPart(QPainter& painter, const QRectF& target, const QPixmap& source, const QRectF& sourceRect,
                    const QRectF& exposed) {
    const QRectF visible = exposed.intersected(target);
    if (visible.isEmpty() || sourceRect.isEmpty() || target.isEmpty())
        return;
    const double sx = sourceRect.width() / target.width(), sy = sourceRect.height() / target.height();
    // Whole source pixels (one more on each side for the filter), mapped back exactly.
    QRectF part(sourceRect.x() + (visible.left() - target.left()) * sx,
                sourceRect.y() + (visible.top() - target.top()) * sy, visible.width() * sx, visible.height() * sy);
    const QRectF whole = QRectF(QPointF(std::floor(part.left()) - 1, std::floor(part.top()) - 1),
                                QPointF(std::ceil(part.right()) + 1, std::ceil(part.bottom()) + 1))
                             .intersected(sourceRect);
    const QRectF onScreen(target.left() + (whole.left() - sourceRect.x()) / sx,
                          target.top() + (whole.top() - sourceRect.y()) / sy, whole.width() / sx, whole.height() / sy);
    painter.save();
    painter.setClipRect(visible, Qt::IntersectClip);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(onScreen, source, whole);
    painter.restore();
}

void CopyToClipboard(const QImage& image, const QString& fileMime, const QByteArray& fileBytes,
                     const QString& filePath) {
    auto* mime = new QMimeData;
    if (!fileMime.isEmpty())
        mime->setData(fileMime, fileBytes);
    QString url = filePath;
    if (!image.isNull()) {
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        mime->setImageData(image);
        mime->setData(QStringLiteral("image/png"), png);
        url = CLxImageWidgetBase::SaveImageByteToClipboardTempFile(png);
    }
    if (!url.isEmpty())
        mime->setUrls({QUrl::fromLocalFile(url)});
    QApplication::clipboard()->setMimeData(mime);
}

}  // namespace lxuikit_image

// ---- prepared pixmaps -----------------------------------------------------------------------

LxPrepareKey LxPrepareKey::Of(qint64 i64Source, const QSize& widgetSize, qreal dDpr, const LxImageDrawOptions& options,
                              const QRect& crop) {
    LxPrepareKey key;
    key.i64Source = i64Source;
    key.widgetSize = widgetSize;
    key.dDpr = dDpr;
    key.bScaleToWidget = options.bScaleToWidget;
    key.dScale = options.dScale;
    key.i32Corner = int(options.enCornerType);
    key.dRadiusX = options.dRadiusX;
    key.dRadiusY = options.dRadiusY;
    key.crop = crop;
    return key;
}

bool LxPrepareKey::operator==(const LxPrepareKey& o) const {
    return i64Source == o.i64Source && widgetSize == o.widgetSize && dDpr == o.dDpr &&
           bScaleToWidget == o.bScaleToWidget && dScale == o.dScale && i32Corner == o.i32Corner &&
           dRadiusX == o.dRadiusX && dRadiusY == o.dRadiusY && crop == o.crop && viewBox == o.viewBox;
}

void CLxPreparedPixmap::Invalidate() {
    m_key = LxPrepareKey();
    m_pixmap = QPixmap();
}

QPixmap CLxPreparedPixmap::Get(const LxPrepareKey& key, const std::function<QPixmap()>& make) {
    if (!m_pixmap.isNull() && key == m_key)
        return m_pixmap;
    QByteArray sharedKey;
    if (m_bShared) {
        sharedKey = SharedKey(key);
        if (const QPixmap* shared = SharedPrepared().object(sharedKey)) {
            m_key = key;
            m_pixmap = *shared;
            return m_pixmap;
        }
    }
    const QPixmap pixmap = make();
    if (pixmap.isNull())
        return pixmap;
    m_key = key;
    m_pixmap = pixmap;
    if (m_bShared)
        SharedPrepared().insert(sharedKey, new QPixmap(pixmap),
                                qMax(1, pixmap.width() * pixmap.height() * qMax(1, pixmap.depth() / 8)));
    return pixmap;
}

QPixmap CLxPreparedPixmap::Prepare(const QPixmap& source, const LxImageDrawOptions& options, const QSize& widgetSize,
                                   qreal dDpr, lxuikit_image::Fit fit, const std::function<void(QPixmap&)>& round) {
    const QRect crop = lxuikit_image::CropRect(options, source.size());
    return Get(LxPrepareKey::Of(source.cacheKey(), widgetSize, dDpr, options, crop), [&] {
        QPixmap pixmap = crop.isNull() ? source : source.copy(crop);
        pixmap.setDevicePixelRatio(dDpr);
        QSize target = pixmap.size();
        Qt::AspectRatioMode mode = Qt::KeepAspectRatio;
        if (options.bScaleToWidget) {
            target = QSize(qRound(widgetSize.width() * dDpr), qRound(widgetSize.height() * dDpr));
            mode = Qt::IgnoreAspectRatio;
        } else if (fit == lxuikit_image::Fit::Picture) {
            target = QSize(qRound(pixmap.width() * options.dScale), qRound(pixmap.height() * options.dScale));
        }
        if (target.isEmpty())
            return QPixmap();
        if (target != pixmap.size()) {
            pixmap = pixmap.scaled(target, mode, Qt::SmoothTransformation);
            pixmap.setDevicePixelRatio(dDpr);
        }
        if (options.enCornerType != LxCornerRadiusType::None) {
            if (round)
                round(pixmap);
            else
                lxuikit_image::RoundPixmap(pixmap, options.enCornerType, options.dRadiusX, options.dRadiusY);
        }
        return pixmap;
    });
}

// ---- CLxImageWidgetBase ---------------------------------------------------------------------

CLxImageWidgetBase::CLxImageWidgetBase(QWidget* parent)
    : QWidget(parent), m_pD(std::make_unique<CLxImageWidgetBasePrivate>()) {
    setAttribute(Qt::WA_TranslucentBackground);
    // Border colours come from the theme.
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { update(); });
}

CLxImageWidgetBase::~CLxImageWidgetBase() = default;

QSize CLxImageWidgetBase::GetImageSize() const { return QSize(); }

QPixmap CLxImageWidgetBase::GetCurPixmap() { return QPixmap(); }

QPixmap CLxImageWidgetBase::GetSourcePixmap() { return GetCurPixmap(); }

void CLxImageWidgetBase::Copy() {
    const QPixmap pixmap = GetSourcePixmap();
    if (!LXUIKIT_ASSERT(!pixmap.isNull()))
        return;
    lxuikit_image::CopyToClipboard(pixmap.toImage());
}

QString CLxImageWidgetBase::SaveImageByteToClipboardTempFile(const QByteArray& bytes) {
    QString path = QDir::tempPath() + QStringLiteral("/%1.png").arg(core::time_date::GetSvrTimeMillis());
    if (!core::fs::WriteFile(path, bytes)) {
        LXUIKIT_LOG_WARN("cannot write the clipboard copy {}", path);
        return QString();
    }
    return path;
}

void CLxImageWidgetBase::SetDrawOptions(const LxImageDrawOptions& options) {
    m_pD->m_options = options;
    InvalidatePrepared();
    updateGeometry();
    update();
}

const LxImageDrawOptions& CLxImageWidgetBase::GetDrawOptions() const { return m_pD->m_options; }

void CLxImageWidgetBase::SetScaleFactor(double dScale) { SetDrawOptions(m_pD->m_options.WithScale(dScale)); }

double CLxImageWidgetBase::GetScaleFactor() const { return m_pD->m_options.dScale; }

void CLxImageWidgetBase::EnableScaleToWidgetSize(bool bEnable) {
    if (m_pD->m_options.bScaleToWidget == bEnable)
        return;
    SetDrawOptions(m_pD->m_options.WithScaleToWidget(bEnable));
}

bool CLxImageWidgetBase::IsScaleToWidgetSize() const { return m_pD->m_options.bScaleToWidget; }

void CLxImageWidgetBase::SetRoundedCorner(LxCornerRadiusType type, double dRadiusX, double dRadiusY) {
    SetDrawOptions(m_pD->m_options.WithCorners(type, dRadiusX, dRadiusY));
}

LxCornerRadiusType CLxImageWidgetBase::GetRoundedCornerType() const { return m_pD->m_options.enCornerType; }

void CLxImageWidgetBase::SetBorder(const std::string& strColorKey, double dWidth) {
    SetDrawOptions(m_pD->m_options.WithBorder(strColorKey, dWidth));
}

void CLxImageWidgetBase::SetImageCropper(std::shared_ptr<ILxWebImageCropper> pCropper) {
    SetDrawOptions(m_pD->m_options.WithCropper(std::move(pCropper)));
}

QSize CLxImageWidgetBase::sizeHint() const {
    QSize image = GetImageSize();
    if (image.isEmpty())
        return QWidget::sizeHint();
    const QRect crop = lxuikit_image::CropRect(m_pD->m_options, image);
    if (!crop.isNull())
        image = crop.size();
    return (QSizeF(image) * m_pD->m_options.dScale / SourcePixelRatio()).toSize();
}

void CLxImageWidgetBase::DrawRoundedCorner(QPixmap& pixmap) {
    const LxImageDrawOptions& o = m_pD->m_options;
    lxuikit_image::RoundPixmap(pixmap, o.enCornerType, o.dRadiusX, o.dRadiusY);
}

bool CLxImageWidgetBase::GetRoundedCornerPixmapCache(QPixmap&) { return false; }

void CLxImageWidgetBase::InvalidatePrepared() { m_pD->m_prepared.Invalidate(); }

void CLxImageWidgetBase::paintEvent(QPaintEvent* event) {
    const QPixmap source = GetCurPixmap();
    if (source.isNull()) {
        hide();
        return;
    }
    const LxImageDrawOptions& options = m_pD->m_options;
    const qreal dpr = devicePixelRatioF();
    const QRect crop = lxuikit_image::CropRect(options, source.size());
    const QSizeF shown = QSizeF(crop.isNull() ? source.size() : crop.size()) * options.dScale;
    if (!options.bScaleToWidget && options.enCornerType == LxCornerRadiusType::None &&
        qint64(shown.width()) * qint64(shown.height()) > lxuikit_image::kScalePartPixels && options.dScale != 1.0) {
        // Too large to prepare whole: scale only what is exposed, on every paint.
        m_pD->m_prepared.Invalidate();
        const QRectF target(QPointF(0, 0), shown / dpr);
        QPainter painter(this);
        lxuikit_image::DrawScaledPart(painter, target, source, crop.isNull() ? QRectF(source.rect()) : QRectF(crop),
                                      QRectF(event->rect()));
        lxuikit_image::PaintBorder(painter, target, options);
        return;
    }
    const QPixmap pixmap = m_pD->m_prepared.Prepare(source, m_pD->m_options, size(), devicePixelRatioF(),
                                                    lxuikit_image::Fit::Picture, [this](QPixmap& p) {
                                                        if (!GetRoundedCornerPixmapCache(p))
                                                            DrawRoundedCorner(p);
                                                    });
    if (pixmap.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QPointF(0, 0), pixmap);
    lxuikit_image::PaintBorder(painter, QRectF(QPointF(0, 0), QSizeF(pixmap.size()) / pixmap.devicePixelRatio()),
                               m_pD->m_options);
}
