#pragma once
// CLxWebStaticImageWidget: shows one decoded still picture (PNG, JPEG, single-frame WebP, BMP ...).
// Load decodes the file through CLxWebImageDecoder's checks and puts the pixmap into the image
// cache, unless the cache already holds the pixmap decoded from that very file (same path, size
// and times) for the URL: widgets showing one URL decode it once. LoadCache takes the cache's
// pixmap (shared, never copied).

#include <LxUIKit/WebImage/LxImageWidgetBase.h>
#include <LxUIKit/WebImage/LxImageWidgetBase_p.h>

class CLxWebStaticImageWidget : public CLxImageWidgetBase {
    Q_OBJECT
public:
    explicit CLxWebStaticImageWidget(QWidget* parent = nullptr);

    bool Load(const QString& url, const QString& filePath) override;
    bool LoadCache(const QString& url) override;
    void Clear() override;
    QSize GetImageSize() const override;
    void Copy() override;
    bool GetRoundedCornerPixmapCache(QPixmap& pixmap) override;
    QPixmap GetCurPixmap() override;

protected:
    void InvalidatePrepared() override;

private:
    void SetPixmap(const QPixmap& pixmap);

    QPixmap m_pixmap;
    // The last rounded pixmap and what it was made from (the source's cache key, the scaled size
    // and ratio, the corner type and radii).
    QPixmap m_roundedPixmap;
    LxPrepareKey m_roundedKey;
};
