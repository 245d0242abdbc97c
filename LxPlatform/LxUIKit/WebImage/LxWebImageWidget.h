#pragma once
// LxWebImageWidget: shows a picture given by URL or local path, wherever the application shows
// one (avatars, pictures in posts, the image preview, slideshows).
//
// SetUrl(url): an existing local path is shown at once; otherwise the image cache is asked
// (a hit shows at once, shared with every other widget of that URL) and on a miss the picture is
// downloaded through ILxUIKitHttpDownloadMgr with the loading placeholder shown meanwhile. The
// kind of picture is found from the file's content first (static, animated GIF / WebP, SVG), its
// name second; one private child of the right kind (CLxWebStaticImageWidget,
// CLxWebAnimatedImageWidget, CLxWebSvgImageWidget) shows it and is reused while the kind stays.
//
// The latest SetUrl wins: an answer for a URL the widget has since left is ignored, and a
// destroyed widget unregisters from the downloader. Every outcome is reported once through
// ImageLoadStatusSignal: Loaded, DownloadFailed (no file) or LoadFailed (a file that cannot be
// shown); an empty URL shows the loading placeholder and reports nothing. The widget itself never
// reports Loading.
//
// Placeholders ("loading" and "failed", resource paths) come from the theme's resources and follow
// theme changes; an empty path shows nothing. Rounded corners, scale, crop and border apply to the
// picture and to the placeholder alike.
//
// Choices of ours:
// - a new widget starts with the kit's own placeholders (kDefaultInitImagePath,
//   kDefaultFailImagePath, light and dark variants), so a host that sets none still shows
//   something while loading and after a failure; SetDefaultImageSkin replaces them;
// - a finished download is always classified and decoded from its file, even when the cache
//   already holds a picture for the URL (it may be older than the download). Widgets answered for
//   one download therefore decode it once each; widgets that ask later share the cached picture;
// - the kind of a download is decided from the file only; a cache entry of another kind for the
//   URL stays until it is replaced or evicted (the cache answers the SVG table first, then
//   pixmaps, then movies).

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/ILxUIKitHttpDownloadMgr.h>
#include <LxUIKit/WebImage/LxImageDrawOptions.h>
#include <LxUIKit/WebImage/LxImageWidgetBase.h>
#include <LxUIKit/WebImage/LxWebImageDefine.h>

#include <QPixmap>
#include <QWidget>

#include <memory>
#include <string>

class LxWebImageWidgetPrivate;

class LXUIKIT_EXPORT LxWebImageWidget : public QWidget, public LUIKitHttpDownloadDelegate {
    Q_OBJECT
public:
    enum LxImageType { ImageType_None = 0, ImageType_Static = 1, ImageType_Svg = 2, ImageType_Animated = 3 };
    Q_ENUM(LxImageType)

    static const char* const kDefaultInitImagePath;  // ":/LxUIKit/img/image_loading.svg"
    static const char* const kDefaultFailImagePath;  // ":/LxUIKit/img/image_failed.svg"

    explicit LxWebImageWidget(QWidget* parent = nullptr);
    ~LxWebImageWidget() override;

    void OnDownloadSuccess(const QString& url, const QString& filePath, const QByteArray& data) override;
    void OnDownloadFailed(const QString& url, int, int) override;

    // Starts showing `url` (web address or local path); `downloadDirPath` (optional) is where the
    // downloader keeps the file.
    void SetUrl(const QString& url, const QString& downloadDirPath = QString());
    QString GetUrl() const;
    // Shows a file that exists on disk (the path is also its cache key).
    void LoadLocalImage(const QString& path);
    // Kind of picture in a file: content first, then the name.
    static LxImageType GetImageType(const QString& filePath);

    void Clear();
    void Copy();
    QSize GetImageSize() const;
    QPixmap GetSourcePixmap() const;

    // The drawing options of the picture and the placeholder (see LxImageDrawOptions); the setters
    // below change one of them. Each reaches the current picture widget and repaints.
    void SetDrawOptions(const LxImageDrawOptions& options);
    const LxImageDrawOptions& GetDrawOptions() const;
    void SetRoundedCorner(LxCornerRadiusType type, double dRadiusX, double dRadiusY);
    void EnableScaleToWidgetSize(bool bEnable);
    void SetScaleFactor(double dScale);
    double GetScaleFactor() const;
    void SetBorder(const std::string& strColorKey, double dWidth);
    void SetImageCropper(std::shared_ptr<ILxWebImageCropper> pCropper);

    void SetDefaultImageSkin(const QString& initImagePath, const QString& failImagePath);
    void ShowDefaultInitImage();
    void ShowDefaultFailImage();
    void ClearDefaultImage();

    // Introspection (tests, tools).
    CLxImageWidgetBase* GetPrivateImageWidget() const;
    LxImageType GetPrivateImageType() const;
    QPixmap GetDefaultPixmap() const;
    bool IsShowingFailImage() const;

Q_SIGNALS:
    void ImageLoadStatusSignal(const QString& url, LxImageLoadStatus status);

protected:
    void paintEvent(QPaintEvent* event) override;

private Q_SLOTS:
    void OnThemeChanged();

private:
    bool CreateAndInitPrivateImageWidget(LxImageType type);

    std::unique_ptr<LxWebImageWidgetPrivate> m_pD;
};
