#include <LxUIKit/WebImage/LxWebStaticImageWidget.h>

#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageDecoder.h>

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QMimeData>
#include <QUrl>

CLxWebStaticImageWidget::CLxWebStaticImageWidget(QWidget* parent) : CLxImageWidgetBase(parent) {
    m_bSharePrepared = true;
}

bool CLxWebStaticImageWidget::Load(const QString& url, const QString& filePath) {
    QImage image;
    QString why;
    if (!CLxWebImageDecoder::DecodeStill(filePath, image, &why)) {
        LXUIKIT_LOG_WARN("cannot decode {}: {}", filePath, why);
        Clear();
        return false;
    }
    const QPixmap pixmap = QPixmap::fromImage(std::move(image));
    if (pixmap.isNull()) {
        Clear();
        return false;
    }
    SetPixmap(pixmap);
    CLxWebImageCacheMgr::GetInstance().InsertPixmap(url, pixmap);
    return true;
}

bool CLxWebStaticImageWidget::LoadCache(const QString& url) {
    const QPixmap pixmap = CLxWebImageCacheMgr::GetInstance().GetPixmap(url);
    if (pixmap.isNull()) {
        Clear();
        return false;
    }
    SetPixmap(pixmap);
    return true;
}

void CLxWebStaticImageWidget::InvalidatePrepared() {
    CLxImageWidgetBase::InvalidatePrepared();
    m_roundedPixmap = QPixmap();
}

void CLxWebStaticImageWidget::SetPixmap(const QPixmap& pixmap) {
    m_pixmap = pixmap;
    InvalidatePrepared();
    updateGeometry();
    update();
}

void CLxWebStaticImageWidget::Clear() { SetPixmap(QPixmap()); }

QSize CLxWebStaticImageWidget::GetImageSize() const { return m_pixmap.size(); }

QPixmap CLxWebStaticImageWidget::GetCurPixmap() { return m_pixmap; }

void CLxWebStaticImageWidget::Copy() {
    if (!LXUIKIT_ASSERT(!m_pixmap.isNull()))
        return;
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    m_pixmap.save(&buffer, "PNG");
    auto* mime = new QMimeData;
    mime->setImageData(m_pixmap.toImage());
    mime->setData(QStringLiteral("image/png"), png);
    const QString path = SaveImageByteToClipboardTempFile(png);
    if (!path.isEmpty())
        mime->setUrls({QUrl::fromLocalFile(path)});
    QApplication::clipboard()->setMimeData(mime);
}

bool CLxWebStaticImageWidget::GetRoundedCornerPixmapCache(QPixmap& pixmap) {
    // The scaled pixmap is new on every call, so the key is what it was made from.
    const QString options = QStringLiteral("%1|%2|%3").arg(int(m_enCornerType)).arg(m_dRadiusX).arg(m_dRadiusY);
    if (!m_roundedPixmap.isNull() && m_i64RoundedSource == m_pixmap.cacheKey() && m_roundedSize == pixmap.size() &&
        m_dRoundedDpr == pixmap.devicePixelRatio() && m_strRoundedOptions == options) {
        pixmap = m_roundedPixmap;
        return true;
    }
    DrawRoundedCorner(pixmap);
    m_roundedPixmap = pixmap;
    m_i64RoundedSource = m_pixmap.cacheKey();
    m_roundedSize = pixmap.size();
    m_dRoundedDpr = pixmap.devicePixelRatio();
    m_strRoundedOptions = options;
    return true;
}
