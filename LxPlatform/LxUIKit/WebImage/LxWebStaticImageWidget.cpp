#include <LxUIKit/WebImage/LxWebStaticImageWidget_p.h>

#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxDecodedFrom_p.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageDecoder_p.h>

CLxWebStaticImageWidget::CLxWebStaticImageWidget(QWidget* parent) : CLxImageWidgetBase(parent) {
    d_func()->m_prepared.m_bShared = true;
}

bool CLxWebStaticImageWidget::Load(const QString& url, const QString& filePath) {
    // Widgets showing one URL hear of one download together: only the first decodes the file.
    CLxWebImageCacheMgr& cache = CLxWebImageCacheMgr::GetInstance();
    const QString stamp = lxuikit_image::FileStamp(filePath);
    const QPixmap cached = cache.GetPixmap(url);
    if (!cached.isNull() && lxuikit_image::WasDecodedFrom(lxuikit_image::CachedKind::Pixmap, url, stamp,
                                                          std::uintptr_t(cached.cacheKey()))) {
        SetPixmap(cached);
        return true;
    }
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
    cache.InsertPixmap(url, pixmap);
    lxuikit_image::RememberDecoded(lxuikit_image::CachedKind::Pixmap, url, stamp, std::uintptr_t(pixmap.cacheKey()));
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
    lxuikit_image::CopyToClipboard(m_pixmap.toImage());
}

bool CLxWebStaticImageWidget::GetRoundedCornerPixmapCache(QPixmap& pixmap) {
    // The scaled pixmap is new on every call, so the key is what it was made from.
    const LxImageDrawOptions& options = GetDrawOptions();
    LxPrepareKey key = LxPrepareKey::Of(m_pixmap.cacheKey(), pixmap.size(), pixmap.devicePixelRatio(), options,
                                        lxuikit_image::CropRect(options, m_pixmap.size()));
    key.bScaleToWidget = false;  // only the size the picture was scaled to matters
    key.dScale = 0;
    if (!m_roundedPixmap.isNull() && key == m_roundedKey) {
        pixmap = m_roundedPixmap;
        return true;
    }
    DrawRoundedCorner(pixmap);
    m_roundedPixmap = pixmap;
    m_roundedKey = key;
    return true;
}
