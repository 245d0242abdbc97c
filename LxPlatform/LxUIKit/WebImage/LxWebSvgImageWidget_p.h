#pragma once
// CLxWebSvgImageWidget: shows an SVG (or gzip-compressed SVGZ) picture through QSvgRenderer.
//
// SVG comes from the network, so the file passes CLxSvgDocumentGuard before the renderer sees a
// byte: at most 2 MiB on disk and 4 MiB inflated, 20,000 elements, nesting 64 deep, 100,000
// elements drawn once <use> references are expanded (chains of at most 16), no entity
// declarations, no reference outside the document, embedded pictures raster and at most 16 Mi
// pixels; scripts are never run. A refused document fails to load like a broken file.
//
// The picture is rendered at the target size times the device pixel ratio (crisp at any ratio)
// into a pixmap kept until the size, ratio, crop or corners change; animated SVG repaints as its
// renderer asks. The cache keeps only the file's path (LoadCache reads and checks it again).
// Visible only with a valid renderer and a non-empty intrinsic size.

#include <LxUIKit/WebImage/LxImageWidgetBase.h>

#include <QPointer>

class QSvgRenderer;

class CLxWebSvgImageWidget : public CLxImageWidgetBase {
    Q_OBJECT
public:
    explicit CLxWebSvgImageWidget(QWidget* parent = nullptr);
    ~CLxWebSvgImageWidget() override;

    bool Load(const QString& url, const QString& filePath) override;
    bool LoadCache(const QString& url) override;
    void Clear() override;
    QSize GetImageSize() const override;  // intrinsic size
    void Copy() override;
    bool GetRoundedCornerPixmapCache(QPixmap& pixmap) override;
    QPixmap GetSourcePixmap() override;

    QString GetFilePath() const { return m_strFilePath; }

    // Renders the part `viewBox` of the document into `target` (painter coordinates).
    void renderSvg(QPainter* painter, const QRectF& target, const QRectF& viewBox);

protected:
    qreal SourcePixelRatio() const override { return 1.0; }
    void paintEvent(QPaintEvent* event) override;

private:
    bool LoadFile(const QString& filePath);
    void UpdateVisibility();
    QImage RenderImage(const QSize& logicalSize, qreal dpr);

    QPointer<QSvgRenderer> m_pRenderer;
    QString m_strFilePath;
};
