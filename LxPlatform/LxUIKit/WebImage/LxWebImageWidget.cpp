#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <LxCore/FileSystem.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxImageWidgetBase_p.h>
#include <LxUIKit/WebImage/LxSvgDocumentGuard_p.h>
#include <LxUIKit/WebImage/LxWebAnimatedImageWidget_p.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageDecoder_p.h>
#include <LxUIKit/WebImage/LxWebStaticImageWidget_p.h>
#include <LxUIKit/WebImage/LxWebSvgImageWidget_p.h>

#include <QBuffer>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QMovie>
#include <QPainter>
#include <QPointer>
#include <QSvgRenderer>
#include <QUrl>

const char* const LxWebImageWidget::kDefaultInitImagePath = ":/LxUIKit/img/image_loading.svg";
const char* const LxWebImageWidget::kDefaultFailImagePath = ":/LxUIKit/img/image_failed.svg";

namespace {

bool IsSvgSuffix(const QString& suffix) {
    const QString lower = suffix.toLower();
    return lower == QLatin1String("svg") || lower == QLatin1String("svgz");
}

void RegisterMetaTypes() {
    static const bool s_bRegistered = [] {
        qRegisterMetaType<LxImageLoadStatus>("LxImageLoadStatus");
        return true;
    }();
    (void)s_bRegistered;
}

bool HasSvgSuffix(const QString& path) {
    if (IsSvgSuffix(QFileInfo(path).suffix()))
        return true;
    const QString urlPath = QUrl(path, QUrl::TolerantMode).path(QUrl::FullyDecoded);
    return IsSvgSuffix(QFileInfo(urlPath).suffix());
}

}  // namespace

class LxWebImageWidgetPrivate {
public:
    enum ShowingDefault { ShowingNone, ShowingInit, ShowingFail };

    void ShowDefaultImage(LxWebImageWidget* q, ShowingDefault which);

    QPointer<CLxImageWidgetBase> m_pImageWidget;
    LxWebImageWidget::LxImageType m_enImageType = LxWebImageWidget::ImageType_None;
    LxImageDrawOptions m_options;  // handed to every picture widget; the placeholder uses them too
    QPixmap m_defaultPixmap;
    CLxPreparedPixmap m_preparedDefault;
    QString m_strDefaultInitImagePath = QString::fromLatin1(LxWebImageWidget::kDefaultInitImagePath);
    QString m_strDefaultFailImagePath = QString::fromLatin1(LxWebImageWidget::kDefaultFailImagePath);
    ShowingDefault m_enShowingDefault = ShowingNone;
    QString m_strImageUrl;
};

void LxWebImageWidgetPrivate::ShowDefaultImage(LxWebImageWidget* q, ShowingDefault which) {
    const QString& path = which == ShowingInit ? m_strDefaultInitImagePath : m_strDefaultFailImagePath;
    std::shared_ptr<const QPixmap> pixmap;
    if (!path.isEmpty())
        lx_ui_res::Provider::instance()->get(pixmap, path);
    m_defaultPixmap = pixmap ? *pixmap : QPixmap();
    m_enShowingDefault = which;
    if (m_pImageWidget)
        m_pImageWidget->Clear();
    q->update();
}

LxWebImageWidget::LxWebImageWidget(QWidget* parent)
    : QWidget(parent), m_pD(std::make_unique<LxWebImageWidgetPrivate>()) {
    RegisterMetaTypes();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         &LxWebImageWidget::OnThemeChanged);
}

// The base LUIKitHttpDownloadDelegate unregisters this receiver from the downloader.
LxWebImageWidget::~LxWebImageWidget() = default;

void LxWebImageWidget::SetUrl(const QString& url, const QString& downloadDirPath) {
    m_pD->m_strImageUrl = url;
    if (url.isEmpty()) {
        LXUIKIT_LOG_INFO("url is empty, return.");
        ShowDefaultInitImage();
        return;
    }
    if (core::fs::IsFileExist(url)) {
        LoadLocalImage(url);
        return;
    }
    const int i32CacheType = CLxWebImageCacheMgr::GetInstance().GetCacheType(url);
    LxImageType type = ImageType_Static;
    if (i32CacheType == CLxWebImageCacheMgr::CacheType_Svg || HasSvgSuffix(url))
        type = ImageType_Svg;
    else if (i32CacheType == CLxWebImageCacheMgr::CacheType_Movie)
        type = ImageType_Animated;
    if (CreateAndInitPrivateImageWidget(type)) {
        ClearDefaultImage();
        if (m_pD->m_pImageWidget->LoadCache(url)) {
            emit ImageLoadStatusSignal(url, LxImageLoadStatus::Loaded);
            return;
        }
    }
    SetDefaultImageSkin(m_pD->m_strDefaultInitImagePath, m_pD->m_strDefaultFailImagePath);
    if (!downloadDirPath.isEmpty())
        ILxUIKitHttpDownloadMgr::setDowndloadDirPath(url.toStdString(), downloadDirPath.toStdString());
    ILxUIKitHttpDownloadMgr::setCacheMode(url.toStdString(), lxuikit_http::LxHttpDownloadCacheMode::ReuseDownloaded);
    ILxUIKitHttpDownloadMgr::download(url.toStdString(), this, lxuikit_http::HttpWorkPool::Image);
}

void LxWebImageWidget::OnDownloadSuccess(const QString& url, const QString& filePath, const QByteArray&) {
    if (url != m_pD->m_strImageUrl) {
        LXUIKIT_LOG_INFO("m_strImageUrl:{},strUrl:{}", m_pD->m_strImageUrl, url);
        return;
    }
    if (!core::fs::IsFileExist(filePath)) {
        LXUIKIT_LOG_WARN("strFilePath:{} is not exist, so show default fail image.", filePath);
        ShowDefaultFailImage();
        emit ImageLoadStatusSignal(url, LxImageLoadStatus::DownloadFailed);
        return;
    }
    ClearDefaultImage();
    // The file just downloaded is what shows, even when the cache already holds a picture for the
    // URL: that entry may be older than this download (the picture behind the URL changed).
    const LxImageType type = GetImageType(filePath);
    LXUIKIT_LOG_INFO("strUrl:{},strFilePath:{},enImageType:{}", url, filePath, int(type));
    if (CreateAndInitPrivateImageWidget(type)) {
        if (m_pD->m_pImageWidget->Load(url, filePath)) {
            emit ImageLoadStatusSignal(url, LxImageLoadStatus::Loaded);
            return;
        }
    }
    LXUIKIT_LOG_WARN("Load image failed, show default fail image. strUrl:{},strFilePath:{}", url, filePath);
    ShowDefaultFailImage();
    emit ImageLoadStatusSignal(url, LxImageLoadStatus::LoadFailed);
}

void LxWebImageWidget::OnDownloadFailed(const QString& url, int, int) {
    if (url != m_pD->m_strImageUrl) {
        LXUIKIT_LOG_INFO("m_strImageUrl:{},strUrl:{}", m_pD->m_strImageUrl, url);
        return;
    }
    ShowDefaultFailImage();
    emit ImageLoadStatusSignal(url, LxImageLoadStatus::DownloadFailed);
}

void LxWebImageWidget::LoadLocalImage(const QString& path) {
    // A local picture supersedes whatever was being downloaded.
    m_pD->m_strImageUrl = path;
    const LxImageType type = GetImageType(path);
    if (type != ImageType_Svg) {
        QImageReader reader(path);
        reader.setDecideFormatFromContent(true);
        if (!reader.canRead()) {
            ShowDefaultFailImage();
            emit ImageLoadStatusSignal(path, LxImageLoadStatus::LoadFailed);
            return;
        }
    }
    if (CreateAndInitPrivateImageWidget(type)) {
        ClearDefaultImage();
        if (m_pD->m_pImageWidget->Load(path, path)) {
            emit ImageLoadStatusSignal(path, LxImageLoadStatus::Loaded);
            return;
        }
        LXUIKIT_LOG_WARN("Load local image failed, show default fail image. path:{}", path);
    } else {
        LXUIKIT_LOG_WARN("CreateAndInitPrivateImageWidget failed, show default fail image. path:{}", path);
    }
    ShowDefaultFailImage();
    emit ImageLoadStatusSignal(path, LxImageLoadStatus::LoadFailed);
}

LxWebImageWidget::LxImageType LxWebImageWidget::GetImageType(const QString& filePath) {
    const QByteArray format = CLxWebImageDecoder::DetectFormat(filePath);
    if (format == "svg" || format == "svgz")
        return ImageType_Svg;
    if (!format.isEmpty()) {
        if (format == "webp") {
            // The WebP reader reads its whole input to count frames: only a file the decoder would
            // read at all is counted (a larger one is refused when it is loaded).
            QByteArray data;
            if (!CLxWebImageDecoder::ReadFile(filePath, data))
                return ImageType_Static;
            QBuffer buffer(&data);
            buffer.open(QIODevice::ReadOnly);
            QMovie movie(&buffer, format);
            return movie.isValid() && movie.frameCount() >= 2 ? ImageType_Animated : ImageType_Static;
        }
        if (format == "gif")
            return ImageType_Animated;
        return ImageType_Static;
    }
    if (core::fs::IsFileExist(filePath)) {
        // Only a document within the SVG bounds is handed to the renderer.
        QByteArray document;
        if (CLxSvgDocumentGuard::ReadChecked(filePath, document) == CLxSvgDocumentGuard::Verdict::Ok) {
            QSvgRenderer renderer;
            if (renderer.load(document) && renderer.isValid())
                return ImageType_Svg;
        }
    }
    if (HasSvgSuffix(filePath))
        return ImageType_Svg;
    LXUIKIT_LOG_WARN("Cannot determine the image format or file does not exist. imageFormat = {}", format);
    return ImageType_Static;
}

bool LxWebImageWidget::CreateAndInitPrivateImageWidget(LxImageType type) {
    QPointer<CLxImageWidgetBase>& widget = m_pD->m_pImageWidget;
    if (widget && m_pD->m_enImageType == type) {
        widget->Clear();
        widget->show();
    } else {
        if (widget) {
            // Let go of the old picture now (a shared movie, a renderer); the widget goes later.
            widget->Clear();
            widget->hide();
            layout()->removeWidget(widget);
            widget->deleteLater();
        }
        m_pD->m_enImageType = type;
        switch (type) {
        case ImageType_Animated: widget = new CLxWebAnimatedImageWidget(this); break;
        case ImageType_Svg: widget = new CLxWebSvgImageWidget(this); break;
        default: widget = new CLxWebStaticImageWidget(this); break;
        }
        layout()->addWidget(widget);
    }
    if (widget)
        widget->SetDrawOptions(m_pD->m_options);
    return widget != nullptr;
}

QString LxWebImageWidget::GetUrl() const { return m_pD->m_strImageUrl; }

CLxImageWidgetBase* LxWebImageWidget::GetPrivateImageWidget() const { return m_pD->m_pImageWidget; }

LxWebImageWidget::LxImageType LxWebImageWidget::GetPrivateImageType() const { return m_pD->m_enImageType; }

QPixmap LxWebImageWidget::GetDefaultPixmap() const { return m_pD->m_defaultPixmap; }

bool LxWebImageWidget::IsShowingFailImage() const {
    return m_pD->m_enShowingDefault == LxWebImageWidgetPrivate::ShowingFail;
}

void LxWebImageWidget::Clear() {
    if (m_pD->m_pImageWidget)
        m_pD->m_pImageWidget->Clear();
    ClearDefaultImage();
}

void LxWebImageWidget::Copy() {
    CLxImageWidgetBase* m_pImageWidget = m_pD->m_pImageWidget;
    LXUIKIT_ASSERT_RETURN(m_pImageWidget);
    m_pImageWidget->Copy();
}

QSize LxWebImageWidget::GetImageSize() const {
    return m_pD->m_pImageWidget ? m_pD->m_pImageWidget->GetImageSize() : QSize();
}

QPixmap LxWebImageWidget::GetSourcePixmap() const {
    return m_pD->m_pImageWidget ? m_pD->m_pImageWidget->GetSourcePixmap() : QPixmap();
}

void LxWebImageWidget::SetDrawOptions(const LxImageDrawOptions& options) {
    m_pD->m_options = options;
    m_pD->m_preparedDefault.Invalidate();
    if (m_pD->m_pImageWidget)
        m_pD->m_pImageWidget->SetDrawOptions(options);
    update();
}

const LxImageDrawOptions& LxWebImageWidget::GetDrawOptions() const { return m_pD->m_options; }

void LxWebImageWidget::SetRoundedCorner(LxCornerRadiusType type, double dRadiusX, double dRadiusY) {
    SetDrawOptions(m_pD->m_options.WithCorners(type, dRadiusX, dRadiusY));
}

void LxWebImageWidget::EnableScaleToWidgetSize(bool bEnable) {
    SetDrawOptions(m_pD->m_options.WithScaleToWidget(bEnable));
}

void LxWebImageWidget::SetScaleFactor(double dScale) { SetDrawOptions(m_pD->m_options.WithScale(dScale)); }

double LxWebImageWidget::GetScaleFactor() const { return m_pD->m_options.dScale; }

void LxWebImageWidget::SetBorder(const std::string& strColorKey, double dWidth) {
    SetDrawOptions(m_pD->m_options.WithBorder(strColorKey, dWidth));
}

void LxWebImageWidget::SetImageCropper(std::shared_ptr<ILxWebImageCropper> pCropper) {
    SetDrawOptions(m_pD->m_options.WithCropper(std::move(pCropper)));
}

void LxWebImageWidget::SetDefaultImageSkin(const QString& initImagePath, const QString& failImagePath) {
    m_pD->m_strDefaultInitImagePath = initImagePath;
    m_pD->m_strDefaultFailImagePath = failImagePath;
    LXUIKIT_LOG_INFO("strDefaultInitImagePath: {}, strDefaultFailImagePath: {}", initImagePath, failImagePath);
    ShowDefaultInitImage();
}

void LxWebImageWidget::ShowDefaultInitImage() { m_pD->ShowDefaultImage(this, LxWebImageWidgetPrivate::ShowingInit); }

void LxWebImageWidget::ShowDefaultFailImage() { m_pD->ShowDefaultImage(this, LxWebImageWidgetPrivate::ShowingFail); }

void LxWebImageWidget::ClearDefaultImage() {
    m_pD->m_defaultPixmap = QPixmap();
    m_pD->m_enShowingDefault = LxWebImageWidgetPrivate::ShowingNone;
    update();
}

void LxWebImageWidget::OnThemeChanged() {
    if (m_pD->m_defaultPixmap.isNull()) {
        LXUIKIT_LOG_DEBUG("m_defaultPixmap is null, return.");
        return;
    }
    // Resolve the placeholder again: the new theme may have its own variant.
    if (m_pD->m_enShowingDefault == LxWebImageWidgetPrivate::ShowingFail)
        ShowDefaultFailImage();
    else
        ShowDefaultInitImage();
}

void LxWebImageWidget::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (m_pD->m_defaultPixmap.isNull())
        return;
    const LxImageDrawOptions& options = m_pD->m_options;
    const QPixmap pixmap = m_pD->m_preparedDefault.Prepare(m_pD->m_defaultPixmap, options, size(), devicePixelRatioF(),
                                                           lxuikit_image::Fit::Placeholder);
    if (pixmap.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRect target(0, 0, width(), height());
    painter.drawPixmap(target, pixmap);
    if (options.enCornerType == LxCornerRadiusType::None)
        lxuikit_image::PaintBorder(painter, target, options);
}
