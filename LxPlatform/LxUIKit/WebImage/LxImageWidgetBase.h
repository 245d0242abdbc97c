#pragma once
// CLxImageWidgetBase: base of the three widgets that show one picture inside LxWebImageWidget
// (static, animated, SVG). It owns the drawing options (LxImageDrawOptions) and the common paint
// path:
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
#include <LxUIKit/WebImage/LxImageDrawOptions.h>
#include <LxUIKit/WebImage/LxWebImageDefine.h>

#include <QPixmap>
#include <QWidget>

#include <memory>
#include <string>

class CLxImageWidgetBasePrivate;

class LXUIKIT_EXPORT CLxImageWidgetBase : public QWidget {
    Q_OBJECT
public:
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

    // All drawing options at once; the setters below change one of them. Each repaints.
    void SetDrawOptions(const LxImageDrawOptions& options);
    const LxImageDrawOptions& GetDrawOptions() const;

    void SetScaleFactor(double dScale);
    double GetScaleFactor() const;
    void EnableScaleToWidgetSize(bool bEnable);
    bool IsScaleToWidgetSize() const;
    void SetRoundedCorner(LxCornerRadiusType type, double dRadiusX, double dRadiusY);
    LxCornerRadiusType GetRoundedCornerType() const;
    void SetBorder(const std::string& strColorKey, double dWidth);
    void SetImageCropper(std::shared_ptr<ILxWebImageCropper> pCropper);

    // Writes `bytes` to "<temp>/<server time ms>.png" and answers the path (empty on failure).
    static QString SaveImageByteToClipboardTempFile(const QByteArray& bytes);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

    // Forget prepared pixmaps (the picture or an option changed).
    virtual void InvalidatePrepared();
    // Picture pixels per logical pixel at scale 1: a raster pixel is a device pixel; vector
    // pictures override this with 1 (their size is in logical pixels at any ratio).
    virtual qreal SourcePixelRatio() const { return devicePixelRatioF(); }

    CLxImageWidgetBasePrivate* d_func() const { return m_pD.get(); }

private:
    std::unique_ptr<CLxImageWidgetBasePrivate> m_pD;
};
