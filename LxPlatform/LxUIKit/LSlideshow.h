#pragma once
// LSlideshow: the kit's carousel, an LSlideshowBase filled with three kinds of slides: an
// in-memory pixmap, a local image file (animated when its name ends in ".gif" or ".webp", exactly
// so: ".GIF" is read as a still picture) and a web picture loaded through LxWebImageWidget with
// automatic retries. A slide may carry a link: a left press on it opens the link through
// lxuikit_web::showWebView; a slide without a link lets the press through to the frame (dragging
// pages).
//
// Insert positions run from -1 (append) to the current slide count; any other is logged and
// refused (-1, nothing created). A web slide stays hidden until its picture has loaded and stays
// hidden for good when it finally fails. Its signals carry the slide's index at the moment they
// are sent, so slides inserted or removed meanwhile are accounted for. The download directory of
// web slides is left to the downloader (an empty second argument to SetUrl).

#include <LxStdUI/LSlideshowBase.h>
#include <LxStdUI/ResProvider.h>
#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QLabel>

#include <memory>

class QMovie;

class LXUIKIT_EXPORT LSlideshow : public LSlideshowBase {
    Q_OBJECT
public:
    explicit LSlideshow(QWidget* parent = nullptr, LSlideshowBase::WidthHeightRatio ratio = LSlideshowBase::Ratio_Free);

    int addPixmap(const QPixmap& pixmap, const QString& link);
    int insertPixmap(const QPixmap& pixmap, const QString& link, int index);
    int addNativeImageOrGif(const QString& path, const QString& link);
    int insertNativeImageOrGif(const QString& path, const QString& link, int index);
    int addWebImageOrGif(const QString& url, const QString& link, int autoRetryTimes);
    int insertWebImageOrGif(const QString& url, const QString& link, int index, int autoRetryTimes);

Q_SIGNALS:
    void webImageLoadSucess(const QString& url, int index, int retries);
    void webImageLoadFinalFailed(const QString& url, int index, int retries);
    void webImageLoadSingleFailed(const QString& url, int index);

private:
    // Logs and answers false for a position outside -1..count().
    bool CheckIndex(int index, const char* function) const;
};

// A slide from a pixmap or a local file (see LSlideshow).
class LXUIKIT_EXPORT LSlidershowNativeImage : public QLabel {
    Q_OBJECT
public:
    explicit LSlidershowNativeImage(const QString& link, QWidget* parent = nullptr);

    void SetPixmap(const QPixmap& pixmap);
    // Animated path: a shared movie from the resource provider; a still path: the themed pixmap of
    // that path, re-read after theme changes. Answers false when the file could not be read.
    bool LoadFile(const QString& path);
    static bool IsAnimatedPath(const QString& path);
    const QString& GetLink() const { return m_strLink; }
    bool HasValidMovie() const;

protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    void ApplyThemedPixmap();

    QString m_strLink;
    std::shared_ptr<QMovie> m_pMovie;
    lx_ui_res::TResource<QPixmap> m_pixmapRes;
};

// A web slide (see LSlideshow).
class LXUIKIT_EXPORT LSlidershowWebImage : public LxWebImageWidget {
    Q_OBJECT
public:
    explicit LSlidershowWebImage(const QString& link, QWidget* parent = nullptr);
    const QString& GetLink() const { return m_strLink; }

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    QString m_strLink;
};
