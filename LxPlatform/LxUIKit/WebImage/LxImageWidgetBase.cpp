#include <LxUIKit/WebImage/LxImageWidgetBase.h>

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
#include <QPainter>
#include <QPainterPath>
#include <QUrl>

namespace {

// Prepared pixmaps of still pictures, shared by every widget that shows one the same way.
QCache<QByteArray, QPixmap>& SharedPrepared() {
    static auto* s_pCache = new QCache<QByteArray, QPixmap>(64 * 1024 * 1024);  // bytes
    return *s_pCache;
}

QByteArray SharedKey(const CLxImageWidgetBase::PrepareKey& key, bool bScaleToWidget) {
    QByteArray out;
    QDataStream stream(&out, QIODevice::WriteOnly);
    // The widget's size matters only when the picture is stretched to it.
    stream << key.i64Source << (bScaleToWidget ? key.widgetSize : QSize()) << key.dDpr << key.bScaleToWidget
           << key.dScale << key.i32Corner << key.dRadiusX << key.dRadiusY << key.crop;
    return out;
}

}  // namespace

CLxImageWidgetBase::CLxImageWidgetBase(QWidget* parent) : QWidget(parent) {
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
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    pixmap.save(&buffer, "PNG");
    auto* mime = new QMimeData;
    mime->setImageData(pixmap.toImage());
    mime->setData(QStringLiteral("image/png"), png);
    const QString path = SaveImageByteToClipboardTempFile(png);
    if (!path.isEmpty())
        mime->setUrls({QUrl::fromLocalFile(path)});
    QApplication::clipboard()->setMimeData(mime);
}

QString CLxImageWidgetBase::SaveImageByteToClipboardTempFile(const QByteArray& bytes) {
    const QString path = QDir::tempPath() + QStringLiteral("/%1.png").arg(core::time_date::GetSvrTimeMillis());
    if (!core::fs::WriteFile(path, bytes)) {
        LXUIKIT_LOG_WARN("cannot write the clipboard copy {}", path);
        return QString();
    }
    return path;
}

void CLxImageWidgetBase::SetScaleFactor(double dScale) {
    m_dScaleFactor = dScale;
    InvalidatePrepared();
    updateGeometry();
    update();
}

void CLxImageWidgetBase::EnableScaleToWidgetSize(bool bEnable) {
    if (m_bScaleToWidgetSize == bEnable)
        return;
    m_bScaleToWidgetSize = bEnable;
    InvalidatePrepared();
    updateGeometry();
    update();
}

void CLxImageWidgetBase::SetRoundedCorner(LxCornerRadiusType type, double dRadiusX, double dRadiusY) {
    m_enCornerType = type;
    m_dRadiusX = dRadiusX;
    m_dRadiusY = dRadiusY;
    InvalidatePrepared();
    update();
}

void CLxImageWidgetBase::SetBorder(const std::string& strColorKey, double dWidth) {
    m_strBorderColorKey = strColorKey;
    m_dBorderWidth = dWidth;
    update();
}

void CLxImageWidgetBase::SetImageCropper(std::shared_ptr<ILxWebImageCropper> pCropper) {
    m_pCropper = std::move(pCropper);
    InvalidatePrepared();
    updateGeometry();
    update();
}

QSize CLxImageWidgetBase::sizeHint() const {
    QSize image = GetImageSize();
    if (image.isEmpty())
        return QWidget::sizeHint();
    const QRect crop = CropRectFor(image);
    if (!crop.isNull())
        image = crop.size();
    return (QSizeF(image) * m_dScaleFactor / SourcePixelRatio()).toSize();
}

QRect CLxImageWidgetBase::CropRectFor(const QSize& size) const {
    if (!m_pCropper || size.isEmpty())
        return QRect();
    const QRect rect = m_pCropper->GetCropRect(size);
    if (!rect.isValid())
        return QRect();
    const QRect inside = rect.intersected(QRect(QPoint(0, 0), size));
    return inside.isEmpty() ? QRect() : inside;
}

QPainterPath CLxImageWidgetBase::MakeRoundedPath(const QRectF& rect, LxCornerRadiusType type, double dRadiusX,
                                                 double dRadiusY) {
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

void CLxImageWidgetBase::RoundPixmap(QPixmap& pixmap, LxCornerRadiusType type, double dRadiusX, double dRadiusY) {
    if (pixmap.isNull() || type == LxCornerRadiusType::None)
        return;
    const qreal dpr = pixmap.devicePixelRatio();
    QPixmap rounded(pixmap.size());
    rounded.setDevicePixelRatio(dpr);
    rounded.fill(Qt::transparent);
    QPainter p(&rounded);
    p.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    // An antialiased mask first, then the picture kept only where the mask is.
    p.fillPath(MakeRoundedPath(QRectF(QPointF(0, 0), QSizeF(pixmap.size()) / dpr), type, dRadiusX, dRadiusY),
               Qt::black);
    p.setCompositionMode(QPainter::CompositionMode_SourceIn);
    p.drawPixmap(0, 0, pixmap);
    p.end();
    pixmap = rounded;
}

void CLxImageWidgetBase::PaintBorder(QPainter& painter, const QRectF& rect, const std::string& strColorKey,
                                     double dWidth, LxCornerRadiusType type, double dRadiusX, double dRadiusY) {
    if (dWidth <= 0 || strColorKey.empty() || rect.isEmpty())
        return;
    const QColor color = lx_ui_res::Provider::instance()->color(QString::fromStdString(strColorKey));
    if (!color.isValid())
        return;
    const double half = dWidth / 2;
    const QRectF inner = rect.adjusted(half, half, -half, -half);
    if (inner.isEmpty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, dWidth));
    painter.setBrush(Qt::NoBrush);
    if (type == LxCornerRadiusType::None)
        painter.drawRect(inner);
    else  // the radii shrink by the half width the stroke moved in
        painter.drawPath(MakeRoundedPath(inner, type, qMax(0.0, dRadiusX - half), qMax(0.0, dRadiusY - half)));
    painter.restore();
}

void CLxImageWidgetBase::DrawRoundedCorner(QPixmap& pixmap) {
    RoundPixmap(pixmap, m_enCornerType, m_dRadiusX, m_dRadiusY);
}

bool CLxImageWidgetBase::GetRoundedCornerPixmapCache(QPixmap&) { return false; }

void CLxImageWidgetBase::DrawBorder(QPainter& painter, const QRectF& rect) const {
    PaintBorder(painter, rect, m_strBorderColorKey, m_dBorderWidth, m_enCornerType, m_dRadiusX, m_dRadiusY);
}

CLxImageWidgetBase::PrepareKey CLxImageWidgetBase::CurrentKey(qint64 i64Source, const QRect& crop) const {
    PrepareKey key;
    key.i64Source = i64Source;
    key.widgetSize = size();
    key.dDpr = devicePixelRatioF();
    key.bScaleToWidget = m_bScaleToWidgetSize;
    key.dScale = m_dScaleFactor;
    key.i32Corner = int(m_enCornerType);
    key.dRadiusX = m_dRadiusX;
    key.dRadiusY = m_dRadiusY;
    key.crop = crop;
    return key;
}

void CLxImageWidgetBase::InvalidatePrepared() {
    m_preparedKey = PrepareKey();
    m_preparedPixmap = QPixmap();
}

QPixmap CLxImageWidgetBase::Prepare(const QPixmap& source) {
    const QRect crop = CropRectFor(source.size());
    const PrepareKey key = CurrentKey(source.cacheKey(), crop);
    if (!m_preparedPixmap.isNull() && key == m_preparedKey)
        return m_preparedPixmap;
    QByteArray sharedKey;
    if (m_bSharePrepared) {
        sharedKey = SharedKey(key, m_bScaleToWidgetSize);
        if (const QPixmap* shared = SharedPrepared().object(sharedKey)) {
            m_preparedKey = key;
            m_preparedPixmap = *shared;
            return m_preparedPixmap;
        }
    }

    QPixmap pixmap = crop.isNull() ? source : source.copy(crop);
    const qreal dpr = key.dDpr;
    pixmap.setDevicePixelRatio(dpr);
    QSize target;
    Qt::AspectRatioMode mode = Qt::KeepAspectRatio;
    if (m_bScaleToWidgetSize) {
        target = QSize(qRound(width() * dpr), qRound(height() * dpr));
        mode = Qt::IgnoreAspectRatio;
    } else {
        target = QSize(qRound(pixmap.width() * m_dScaleFactor), qRound(pixmap.height() * m_dScaleFactor));
    }
    if (target.isEmpty())
        return QPixmap();
    if (target != pixmap.size()) {
        pixmap = pixmap.scaled(target, mode, Qt::SmoothTransformation);
        pixmap.setDevicePixelRatio(dpr);
    }
    if (m_enCornerType != LxCornerRadiusType::None && !GetRoundedCornerPixmapCache(pixmap))
        DrawRoundedCorner(pixmap);

    m_preparedKey = key;
    m_preparedPixmap = pixmap;
    if (m_bSharePrepared)
        SharedPrepared().insert(sharedKey, new QPixmap(pixmap),
                                qMax(1, pixmap.width() * pixmap.height() * qMax(1, pixmap.depth() / 8)));
    return pixmap;
}

void CLxImageWidgetBase::paintEvent(QPaintEvent*) {
    const QPixmap source = GetCurPixmap();
    if (source.isNull()) {
        hide();
        return;
    }
    const QPixmap pixmap = Prepare(source);
    if (pixmap.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QPointF(0, 0), pixmap);
    DrawBorder(painter, QRectF(QPointF(0, 0), QSizeF(pixmap.size()) / pixmap.devicePixelRatio()));
}
