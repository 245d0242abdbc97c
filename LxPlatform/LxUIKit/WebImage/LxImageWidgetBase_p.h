#pragma once
// Internals of the picture widgets: the drawing rules shared by pictures and placeholders, the
// prepared-pixmap bookkeeping, the clipboard helper and CLxImageWidgetBase's private part.

#include <LxUIKit/WebImage/LxImageDrawOptions.h>

#include <QByteArray>
#include <QImage>
#include <QPixmap>
#include <QRect>
#include <QString>

#include <functional>

class QPainter;
class QPainterPath;

namespace lxuikit_image {

// What a prepared pixmap is scaled to: a picture stretches over the widget or follows the scale
// factor; a placeholder stretches over the widget or keeps its size (it is stretched when drawn).
enum class Fit { Picture, Placeholder };

// The crop rectangle of `options` for a picture of `size`, intersected with it; null when none applies.
QRect CropRect(const LxImageDrawOptions& options, const QSize& size);
// Outline of `rect` with the corners of `type` rounded by the two radii (clamped to half sides).
QPainterPath RoundedPath(const QRectF& rect, LxCornerRadiusType type, double dRadiusX, double dRadiusY);
// Rounds `pixmap` in place (antialiased edge; size and device pixel ratio kept).
void RoundPixmap(QPixmap& pixmap, LxCornerRadiusType type, double dRadiusX, double dRadiusY);
// Strokes the border of `options` inside `rect`, following the rounded outline when a corner type
// is set. Nothing for an empty key, an unknown colour or a non-positive width.
void PaintBorder(QPainter& painter, const QRectF& rect, const LxImageDrawOptions& options);

// Pictures whose scaled size passes this many device pixels are never scaled whole: each paint
// scales only the exposed part (a 6000 x 4000 photo at zoom 4 would be 1.5 GB prepared).
constexpr qint64 kScalePartPixels = qint64(16) * 1024 * 1024;

// Draws the part of `source` (its `sourceRect`) that lands inside `exposed` when the whole of it is
// stretched over `target` (painter coordinates), smoothly, touching no other pixel of the source.
void DrawScaledPart(QPainter& painter, const QRectF& target, const QPixmap& source, const QRectF& sourceRect,
                    const QRectF& exposed);

// Puts one picture on the clipboard. `image`, when not null, goes as image data and as PNG bytes
// ("image/png"), and that PNG is written to the temporary folder and listed as the URL. `fileBytes`,
// when `fileMime` is set, go under that type as they are; `filePath` is listed as the URL when
// there is no image.
void CopyToClipboard(const QImage& image, const QString& fileMime = QString(),
                     const QByteArray& fileBytes = QByteArray(), const QString& filePath = QString());

}  // namespace lxuikit_image

// Everything that shapes a prepared pixmap.
struct LxPrepareKey {
    qint64 i64Source = 0;  // QPixmap::cacheKey of the frame (0: nothing prepared)
    QSize widgetSize;
    qreal dDpr = 0;
    bool bScaleToWidget = false;
    double dScale = 0;
    int i32Corner = 0;
    double dRadiusX = 0, dRadiusY = 0;
    QRect crop;
    QRectF viewBox;  // SVG only

    static LxPrepareKey Of(qint64 i64Source, const QSize& widgetSize, qreal dDpr, const LxImageDrawOptions& options,
                           const QRect& crop);
    bool operator==(const LxPrepareKey& o) const;
    bool operator!=(const LxPrepareKey& o) const { return !(*this == o); }
};

// One prepared pixmap and the key it was made for. Shared instances also look in a process-wide
// LRU (64 MiB) of still pictures, so widgets showing one picture the same way prepare it once.
class CLxPreparedPixmap {
public:
    // The pixmap kept for `key`, else what `make` answers (kept under `key` unless null).
    QPixmap Get(const LxPrepareKey& key, const std::function<QPixmap()>& make);
    // Crop, device pixel ratio, scale and corners of `source` (the one raster path), kept as above.
    // `round` replaces the plain rounding (widgets that keep rounded pixmaps of their own).
    QPixmap Prepare(const QPixmap& source, const LxImageDrawOptions& options, const QSize& widgetSize, qreal dDpr,
                    lxuikit_image::Fit fit, const std::function<void(QPixmap&)>& round = nullptr);
    void Invalidate();

    bool m_bShared = false;

private:
    LxPrepareKey m_key;
    QPixmap m_pixmap;
};

class CLxImageWidgetBasePrivate {
public:
    LxImageDrawOptions m_options;
    CLxPreparedPixmap m_prepared;
};
