#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LSlideshow.h>
#include <LxUIKit/LUIKitWebDelegate.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LWebImageReloadHelper.h>

#include <QMouseEvent>
#include <QMovie>
#include <QPainter>
#include <QPointer>

namespace {
// Press and release belong to the slide exactly when it has a link; a left press opens it.
bool HandleSlidePress(QMouseEvent* e, const QString& link, bool bPress) {
    if (link.isEmpty()) {
        e->ignore();
        return false;
    }
    e->accept();
    if (bPress && e->button() == Qt::LeftButton)
        lxuikit_web::showWebView(link);
    return true;
}
}  // namespace

// ---- LSlideshow -------------------------------------------------------------------------------

LSlideshow::LSlideshow(QWidget* parent, LSlideshowBase::WidthHeightRatio ratio) : LSlideshowBase(parent, ratio) {}

bool LSlideshow::CheckIndex(int index, const char* function) const {
    if (index >= -1 && index <= count())
        return true;
    FrameWork::WriteLogRaw(__FILE__, __LINE__, function, FrameWork::kLogWarning, "LxUIKit",
                           lx_log_detail::Format("插入位置{}不合法,最大插入位置为{}", index, count()));
    return false;
}

int LSlideshow::addPixmap(const QPixmap& pixmap, const QString& link) {
    // Appending is always a valid position.
    auto* slide = new LSlidershowNativeImage(link, this);
    slide->SetPixmap(pixmap);
    return addWidget(slide);
}

int LSlideshow::insertPixmap(const QPixmap& pixmap, const QString& link, int index) {
    if (!CheckIndex(index, "insertPixmap"))
        return -1;
    auto* slide = new LSlidershowNativeImage(link, this);
    slide->SetPixmap(pixmap);
    return insertWidget(index, slide, true);
}

int LSlideshow::addNativeImageOrGif(const QString& path, const QString& link) {
    return insertNativeImageOrGif(path, link, -1);
}

int LSlideshow::insertNativeImageOrGif(const QString& path, const QString& link, int index) {
    if (!CheckIndex(index, "insertNativeImageOrGif"))
        return -1;
    auto* slide = new LSlidershowNativeImage(link, this);
    slide->LoadFile(path);  // an unreadable file is logged; the slide stays, empty
    return insertWidget(index, slide, true);
}

int LSlideshow::addWebImageOrGif(const QString& url, const QString& link, int autoRetryTimes) {
    return insertWebImageOrGif(url, link, -1, autoRetryTimes);
}

int LSlideshow::insertWebImageOrGif(const QString& url, const QString& link, int index, int autoRetryTimes) {
    if (!CheckIndex(index, "insertWebImageOrGif"))
        return -1;
    auto* slide = new LSlidershowWebImage(link, this);
    slide->EnableScaleToWidgetSize(true);  // a slide fills the frame, like the native ones
    const int inserted = insertWidget(index, slide, false);
    if (inserted < 0) {
        slide->deleteLater();
        return -1;
    }
    QPointer<LSlidershowWebImage> guard(slide);
    LXUIKIT_SAFE_CONNECT(
        slide, &LxWebImageWidget::ImageLoadStatusSignal, this,
        [this, guard](const QString& u, LxImageLoadStatus status) {
            if (!guard)
                return;
            if (status == LxImageLoadStatus::Loaded) {
                guard->resize(guard->GetImageSize());
                setContentWidgetVisible(indexOfWidget(guard), true);
            } else if (status == LxImageLoadStatus::DownloadFailed || status == LxImageLoadStatus::LoadFailed) {
                Q_EMIT webImageLoadSingleFailed(u, indexOfWidget(guard));
            }
        });
    LWebImageReloadHelper* helper = LWebImageReloadHelper::instance();
    helper->setAutoRetryTimes(slide, unsigned(qMax(0, autoRetryTimes)));
    LXUIKIT_SAFE_CONNECT(helper, &LWebImageReloadHelper::webImageLoadFinalFailed, slide,
                         [this, guard, url](LxWebImageWidget* widget, unsigned int n) {
                             if (guard && widget == guard)
                                 Q_EMIT webImageLoadFinalFailed(url, indexOfWidget(guard), int(n));
                         });
    LXUIKIT_SAFE_CONNECT(helper, &LWebImageReloadHelper::webImageLoadSucess, slide,
                         [this, guard, url](LxWebImageWidget* widget, unsigned int n) {
                             if (guard && widget == guard)
                                 Q_EMIT webImageLoadSucess(url, indexOfWidget(guard), int(n));
                         });
    slide->SetUrl(url, QString());
    return inserted;
}

// ---- LSlidershowNativeImage -------------------------------------------------------------------

LSlidershowNativeImage::LSlidershowNativeImage(const QString& link, QWidget* parent) : QLabel(parent), m_strLink(link) {
    setScaledContents(true);
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { ApplyThemedPixmap(); });
}

void LSlidershowNativeImage::SetPixmap(const QPixmap& pixmap) {
    resize(pixmap.size());
    setPixmap(pixmap);
}

bool LSlidershowNativeImage::IsAnimatedPath(const QString& path) {
    return path.endsWith(QLatin1String(".webp"), Qt::CaseSensitive) ||
           path.endsWith(QLatin1String(".gif"), Qt::CaseSensitive);
}

bool LSlidershowNativeImage::LoadFile(const QString& path) {
    if (IsAnimatedPath(path)) {
        std::shared_ptr<QMovie> movie;
        lx_ui_res::Provider::instance()->get(movie, path);
        if (!movie || !movie->isValid()) {
            FrameWork::WriteLogRaw(__FILE__, __LINE__, "LSlidershowNativeImage", FrameWork::kLogWarning, "LxUIKit",
                                   lx_log_detail::Format("文件{}读取失败，请检查文件名", path));
            return false;
        }
        movie->setCacheMode(QMovie::CacheAll);
        movie->start();
        m_pMovie = movie;
        resize(movie->frameRect().size());
        setMovie(movie.get());
        return true;
    }
    m_pixmapRes.setKey(path);
    ApplyThemedPixmap();
    return m_pixmapRes.get() != nullptr;
}

void LSlidershowNativeImage::ApplyThemedPixmap() {
    if (m_pixmapRes.key().isEmpty())
        return;
    const std::shared_ptr<const QPixmap> pix = m_pixmapRes.get();
    if (!pix)
        return;
    resize(pix->size());
    setPixmap(*pix);
}

bool LSlidershowNativeImage::HasValidMovie() const { return m_pMovie && m_pMovie->isValid(); }

void LSlidershowNativeImage::paintEvent(QPaintEvent* e) {
    if (!HasValidMovie()) {
        QLabel::paintEvent(e);
        return;
    }
    QPainter p(this);
    p.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPixmap frame = m_pMovie->currentPixmap();
    frame.setDevicePixelRatio(devicePixelRatioF());
    const QSize target = size() * devicePixelRatioF();
    frame = frame.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    frame.setDevicePixelRatio(devicePixelRatioF());
    p.drawPixmap(rect(), frame);
}

void LSlidershowNativeImage::mousePressEvent(QMouseEvent* e) { HandleSlidePress(e, m_strLink, true); }
void LSlidershowNativeImage::mouseReleaseEvent(QMouseEvent* e) { HandleSlidePress(e, m_strLink, false); }

// ---- LSlidershowWebImage ----------------------------------------------------------------------

LSlidershowWebImage::LSlidershowWebImage(const QString& link, QWidget* parent)
    : LxWebImageWidget(parent), m_strLink(link) {}

void LSlidershowWebImage::mousePressEvent(QMouseEvent* e) { HandleSlidePress(e, m_strLink, true); }
void LSlidershowWebImage::mouseReleaseEvent(QMouseEvent* e) { HandleSlidePress(e, m_strLink, false); }
