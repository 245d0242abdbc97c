#pragma once
// CLxWebStaticImageWidget: shows one decoded still picture (PNG, JPEG, single-frame WebP, BMP ...).
// Load decodes the file through CLxWebImageDecoder's checks and puts the pixmap into the image
// cache; LoadCache takes the cache's pixmap (shared, never copied).

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/LxImageWidgetBase.h>

class LXUIKIT_EXPORT CLxWebStaticImageWidget : public CLxImageWidgetBase {
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
    // The last rounded pixmap and what it was made from.
    QPixmap m_roundedPixmap;
    qint64 m_i64RoundedSource = 0;
    QSize m_roundedSize;
    qreal m_dRoundedDpr = 0;
    QString m_strRoundedOptions;
};
