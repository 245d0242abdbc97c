#pragma once
// CLxImageWidgetBase: base of the three widgets that show one picture inside LxWebImageWidget
// (static, animated, SVG). It owns the drawing options and the common paint path:
//
//   current frame -> crop (cropper, when its rectangle is valid) -> device pixel ratio of the
//   widget -> scale (to the widget's size x ratio ignoring the aspect ratio, or to the picture's
//   size x scale factor keeping it; smooth) -> rounded corners -> painted at (0, 0) with
//   antialiasing and smooth transformation -> border.
//
// With the scale factor 1 a picture pixel is a device pixel (crisp at any ratio). The prepared
// pixmap is kept until the frame, the size, the ratio or an option changes, so repaints of a still
// picture (scrolling lists) cost one blit; widgets showing the same still picture the same way
// share one prepared pixmap (a bounded process-wide LRU of 64 MiB). A widget with nothing to paint
// hides itself.
//
// Borders take their colour from the theme (colour key through lx_ui_res::Provider) and follow
// theme changes. Copy() puts the picture on the clipboard; a PNG copy is also written to the
// temporary folder ("<server time ms>.png") so that pasting into a file manager works.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/LxWebImageDefine.h>

#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <string>

class QPainter;
class QPainterPath;

class LXUIKIT_EXPORT CLxImageWidgetBase : public QWidget {
    Q_OBJECT
public:
    // Everything that shapes a prepared pixmap.
    struct PrepareKey {
        qint64 i64Source = 0;  // QPixmap::cacheKey of the frame (0: nothing prepared)
        QSize widgetSize;
        qreal dDpr = 0;
        bool bScaleToWidget = false;
        double dScale = 0;
        int i32Corner = 0;
        double dRadiusX = 0, dRadiusY = 0;
        QRect crop;
        QRectF viewBox;  // SVG only
        bool operator==(const PrepareKey& o) const {
            return i64Source == o.i64Source && widgetSize == o.widgetSize && dDpr == o.dDpr &&
                   bScaleToWidget == o.bScaleToWidget && dScale == o.dScale && i32Corner == o.i32Corner &&
                   dRadiusX == o.dRadiusX && dRadiusY == o.dRadiusY && crop == o.crop && viewBox == o.viewBox;
        }
        bool operator!=(const PrepareKey& o) const { return !(*this == o); }
    };

    explicit CLxImageWidgetBase(QWidget* parent = nullptr);
    ~CLxImageWidgetBase() override;

    // Shows the file at `filePath` and stores what was decoded in the cache under `url`.
    virtual bool Load(const QString& url, const QString& filePath) = 0;
    // Shows what the cache holds for `url`.
    virtual bool LoadCache(const QString& url) = 0;
    // Empties the widget for the next picture.
    virtual void Clear() = 0;
    virtual QSize GetImageSize() const;
    virtual void Copy();
    // Rounds the corners of `pixmap` (same size and ratio) with the widget's corner settings.
    virtual void DrawRoundedCorner(QPixmap& pixmap);
    // Replaces `pixmap` by a rounded version kept from an earlier paint; false when there is none.
    virtual bool GetRoundedCornerPixmapCache(QPixmap& pixmap);
    // The frame to paint now (null when there is none).
    virtual QPixmap GetCurPixmap();
    // The undecorated picture (no crop, scale or corners), for copying and translation.
    virtual QPixmap GetSourcePixmap();

    void SetScaleFactor(double dScale);
    double GetScaleFactor() const { return m_dScaleFactor; }
    void EnableScaleToWidgetSize(bool bEnable);
    bool IsScaleToWidgetSize() const { return m_bScaleToWidgetSize; }
    void SetRoundedCorner(LxCornerRadiusType type, double dRadiusX, double dRadiusY);
    LxCornerRadiusType GetRoundedCornerType() const { return m_enCornerType; }
    void SetBorder(const std::string& strColorKey, double dWidth);
    void SetImageCropper(std::shared_ptr<ILxWebImageCropper> pCropper);

    // Writes `bytes` to "<temp>/<server time ms>.png" and answers the path (empty on failure).
    static QString SaveImageByteToClipboardTempFile(const QByteArray& bytes);

    // The drawing rules, shared with the placeholder that LxWebImageWidget paints itself.
    // Outline of `rect` with the corners of `type` rounded by the two radii (clamped to half sides).
    static QPainterPath MakeRoundedPath(const QRectF& rect, LxCornerRadiusType type, double dRadiusX, double dRadiusY);
    // Rounds `pixmap` in place (antialiased edge; size and device pixel ratio kept).
    static void RoundPixmap(QPixmap& pixmap, LxCornerRadiusType type, double dRadiusX, double dRadiusY);
    // Strokes a border of `dWidth` inside `rect` in the theme colour `strColorKey`, following the
    // rounded outline when a corner type is set. Nothing for an empty key, an unknown colour or
    // a non-positive width.
    static void PaintBorder(QPainter& painter, const QRectF& rect, const std::string& strColorKey, double dWidth,
                            LxCornerRadiusType type, double dRadiusX, double dRadiusY);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

    // The crop rectangle for a picture of `size`, intersected with it; null when none applies.
    QRect CropRectFor(const QSize& size) const;
    void DrawBorder(QPainter& painter, const QRectF& rect) const;
    // Forget prepared pixmaps (the picture or an option changed).
    virtual void InvalidatePrepared();
    // Picture pixels per logical pixel at scale 1: a raster pixel is a device pixel; vector
    // pictures override this with 1 (their size is in logical pixels at any ratio).
    virtual qreal SourcePixelRatio() const { return devicePixelRatioF(); }

    PrepareKey CurrentKey(qint64 i64Source, const QRect& crop) const;

    // Still pictures share prepared pixmaps process-wide: a list that shows one avatar at one size
    // in many rows scales it once. (Animation frames change too often to be worth it.)
    bool m_bSharePrepared = false;

    bool m_bScaleToWidgetSize = false;
    double m_dScaleFactor = 1.0;
    LxCornerRadiusType m_enCornerType = LxCornerRadiusType::None;
    double m_dRadiusX = 0.0;
    double m_dRadiusY = 0.0;
    std::string m_strBorderColorKey;
    double m_dBorderWidth = 0.0;
    std::shared_ptr<ILxWebImageCropper> m_pCropper;

private:
    QPixmap Prepare(const QPixmap& source);

    PrepareKey m_preparedKey;
    QPixmap m_preparedPixmap;
};
