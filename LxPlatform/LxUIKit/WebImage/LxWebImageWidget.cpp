#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <LxCore/FileSystem.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxImageWidgetBase.h>
#include <LxUIKit/WebImage/LxSvgDocumentGuard.h>
#include <LxUIKit/WebImage/LxWebAnimatedImageWidget.h>
#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>
#include <LxUIKit/WebImage/LxWebImageDecoder.h>
#include <LxUIKit/WebImage/LxWebStaticImageWidget.h>
#include <LxUIKit/WebImage/LxWebSvgImageWidget.h>

#include <QBuffer>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QMovie>
#include <QPainter>
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

}  // namespace

LxWebImageWidget::LxWebImageWidget(QWidget* parent)
    : QWidget(parent),
      m_strDefaultInitImagePath(QString::fromLatin1(kDefaultInitImagePath)),
      m_strDefaultFailImagePath(QString::fromLatin1(kDefaultFailImagePath)) {
    RegisterMetaTypes();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         &LxWebImageWidget::OnThemeChanged);
}

// The base LUIKitHttpDownloadDelegate unregisters this receiver from the downloader.
LxWebImageWidget::~LxWebImageWidget() = default;

bool LxWebImageWidget::HasSvgSuffix(const QString& path) {
    if (IsSvgSuffix(QFileInfo(path).suffix()))
        return true;
    const QString urlPath = QUrl(path, QUrl::TolerantMode).path(QUrl::FullyDecoded);
    return IsSvgSuffix(QFileInfo(urlPath).suffix());
}

void LxWebImageWidget::SetUrl(const QString& url, const QString& downloadDirPath) {
    m_strImageUrl = url;
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
        m_pImageWidget->EnableScaleToWidgetSize(m_bScaleToWidgetSize);
        if (m_pImageWidget->LoadCache(url)) {
            emit ImageLoadStatusSignal(url, LxImageLoadStatus::Loaded);
            return;
        }
    }
    SetDefaultImageSkin(m_strDefaultInitImagePath, m_strDefaultFailImagePath);
    if (!downloadDirPath.isEmpty())
        ILxUIKitHttpDownloadMgr::setDowndloadDirPath(url.toStdString(), downloadDirPath.toStdString());
    ILxUIKitHttpDownloadMgr::setCacheMode(url.toStdString(), lxuikit_http::LxHttpDownloadCacheMode::ReuseDownloaded);
    ILxUIKitHttpDownloadMgr::download(url.toStdString(), this, lxuikit_http::HttpWorkPool::Image);
}

void LxWebImageWidget::OnDownloadSuccess(const QString& url, const QString& filePath, const QByteArray&) {
    if (url != m_strImageUrl) {
        LXUIKIT_LOG_INFO("m_strImageUrl:{},strUrl:{}", m_strImageUrl, url);
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
        m_pImageWidget->EnableScaleToWidgetSize(m_bScaleToWidgetSize);
        if (m_pImageWidget->Load(url, filePath)) {
            emit ImageLoadStatusSignal(url, LxImageLoadStatus::Loaded);
            return;
        }
    }
    LXUIKIT_LOG_WARN("Load image failed, show default fail image. strUrl:{},strFilePath:{}", url, filePath);
    ShowDefaultFailImage();
    emit ImageLoadStatusSignal(url, LxImageLoadStatus::LoadFailed);
}

void LxWebImageWidget::OnDownloadFailed(const QString& url, int, int) {
    if (url != m_strImageUrl) {
        LXUIKIT_LOG_INFO("m_strImageUrl:{},strUrl:{}", m_strImageUrl, url);
        return;
    }
    ShowDefaultFailImage();
    emit ImageLoadStatusSignal(url, LxImageLoadStatus::DownloadFailed);
}

void LxWebImageWidget::LoadLocalImage(const QString& path) {
    // A local picture supersedes whatever was being downloaded.
    m_strImageUrl = path;
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
        m_pImageWidget->EnableScaleToWidgetSize(m_bScaleToWidgetSize);
        if (m_pImageWidget->Load(path, path)) {
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
    if (m_pImageWidget && m_enImageType == type) {
        m_pImageWidget->Clear();
        m_pImageWidget->show();
    } else {
        if (m_pImageWidget) {
            // Let go of the old picture now (a shared movie, a renderer); the widget goes later.
            m_pImageWidget->Clear();
            m_pImageWidget->hide();
            layout()->removeWidget(m_pImageWidget);
            m_pImageWidget->deleteLater();
        }
        m_enImageType = type;
        switch (type) {
        case ImageType_Animated: m_pImageWidget = new CLxWebAnimatedImageWidget(this); break;
        case ImageType_Svg: m_pImageWidget = new CLxWebSvgImageWidget(this); break;
        default: m_pImageWidget = new CLxWebStaticImageWidget(this); break;
        }
        layout()->addWidget(m_pImageWidget);
    }
    if (m_pImageWidget) {
        m_pImageWidget->SetRoundedCorner(m_enCornerType, m_dRadiusX, m_dRadiusY);
        m_pImageWidget->SetImageCropper(m_pCropper);
        m_pImageWidget->SetScaleFactor(m_dScaleFactor);
        m_pImageWidget->SetBorder(m_strBorderColorKey, m_dBorderWidth);
    }
    return m_pImageWidget != nullptr;
}

void LxWebImageWidget::Clear() {
    if (m_pImageWidget)
        m_pImageWidget->Clear();
    ClearDefaultImage();
}

void LxWebImageWidget::Copy() {
    LXUIKIT_ASSERT_RETURN(m_pImageWidget);
    m_pImageWidget->Copy();
}

QSize LxWebImageWidget::GetImageSize() const { return m_pImageWidget ? m_pImageWidget->GetImageSize() : QSize(); }

QPixmap LxWebImageWidget::GetSourcePixmap() const {
    return m_pImageWidget ? m_pImageWidget->GetSourcePixmap() : QPixmap();
}

void LxWebImageWidget::SetRoundedCorner(LxCornerRadiusType type, double dRadiusX, double dRadiusY) {
    m_enCornerType = type;
    m_dRadiusX = dRadiusX;
    m_dRadiusY = dRadiusY;
    if (m_pImageWidget)
        m_pImageWidget->SetRoundedCorner(type, dRadiusX, dRadiusY);
    update();
}

void LxWebImageWidget::EnableScaleToWidgetSize(bool bEnable) {
    m_bScaleToWidgetSize = bEnable;
    if (m_pImageWidget)
        m_pImageWidget->EnableScaleToWidgetSize(bEnable);
    update();
}

void LxWebImageWidget::SetScaleFactor(double dScale) {
    m_dScaleFactor = dScale;
    if (m_pImageWidget)
        m_pImageWidget->SetScaleFactor(dScale);
    update();
}

void LxWebImageWidget::SetBorder(const std::string& strColorKey, double dWidth) {
    m_strBorderColorKey = strColorKey;
    m_dBorderWidth = dWidth;
    if (m_pImageWidget)
        m_pImageWidget->SetBorder(strColorKey, dWidth);
    update();
}

void LxWebImageWidget::SetImageCropper(std::shared_ptr<ILxWebImageCropper> pCropper) {
    m_pCropper = std::move(pCropper);
    if (m_pImageWidget)
        m_pImageWidget->SetImageCropper(m_pCropper);
    update();
}

void LxWebImageWidget::SetDefaultImageSkin(const QString& initImagePath, const QString& failImagePath) {
    m_strDefaultInitImagePath = initImagePath;
    m_strDefaultFailImagePath = failImagePath;
    LXUIKIT_LOG_INFO("strDefaultInitImagePath: {}, strDefaultFailImagePath: {}", initImagePath, failImagePath);
    ShowDefaultInitImage();
}

void LxWebImageWidget::ShowDefaultInitImage() { ShowDefaultImage(ShowingInit); }

void LxWebImageWidget::ShowDefaultFailImage() { ShowDefaultImage(ShowingFail); }

void LxWebImageWidget::ShowDefaultImage(ShowingDefault which) {
    const QString& path = which == ShowingInit ? m_strDefaultInitImagePath : m_strDefaultFailImagePath;
    std::shared_ptr<const QPixmap> pixmap;
    if (!path.isEmpty())
        lx_ui_res::Provider::instance()->get(pixmap, path);
    m_defaultPixmap = pixmap ? *pixmap : QPixmap();
    m_enShowingDefault = which;
    if (m_pImageWidget)
        m_pImageWidget->Clear();
    update();
}

void LxWebImageWidget::ClearDefaultImage() {
    m_defaultPixmap = QPixmap();
    m_enShowingDefault = ShowingNone;
    update();
}

void LxWebImageWidget::OnThemeChanged() {
    if (m_defaultPixmap.isNull()) {
        LXUIKIT_LOG_DEBUG("m_defaultPixmap is null, return.");
        return;
    }
    // Resolve the placeholder again: the new theme may have its own variant.
    if (m_enShowingDefault == ShowingFail)
        ShowDefaultFailImage();
    else
        ShowDefaultInitImage();
}

void LxWebImageWidget::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (m_defaultPixmap.isNull())
        return;
    QPixmap pixmap = m_defaultPixmap;
    if (m_pCropper) {
        const QRect crop = m_pCropper->GetCropRect(pixmap.size());
        if (crop.isValid()) {
            const QRect inside = crop.intersected(pixmap.rect());
            if (!inside.isEmpty())
                pixmap = pixmap.copy(inside);
        }
    }
    const qreal dpr = devicePixelRatioF();
    pixmap.setDevicePixelRatio(dpr);
    if (m_bScaleToWidgetSize) {
        const QSize target(qRound(width() * dpr), qRound(height() * dpr));
        if (target.isEmpty())
            return;
        pixmap = pixmap.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        pixmap.setDevicePixelRatio(dpr);
    }
    if (m_enCornerType != LxCornerRadiusType::None)
        CLxImageWidgetBase::RoundPixmap(pixmap, m_enCornerType, m_dRadiusX, m_dRadiusY);
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRect target(0, 0, width(), height());
    painter.drawPixmap(target, pixmap);
    if (m_enCornerType == LxCornerRadiusType::None)
        CLxImageWidgetBase::PaintBorder(painter, target, m_strBorderColorKey, m_dBorderWidth, m_enCornerType,
                                        m_dRadiusX, m_dRadiusY);
}
