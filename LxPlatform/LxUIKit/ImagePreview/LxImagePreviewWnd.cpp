#include <LxUIKit/ImagePreview/LxImagePreviewWnd.h>

#include <LxStdUI/LIconButton.h>
#include <LxStdUI/MultiLang.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewHelper.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTitleBarWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewTranslateTask.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScreen>

#include <json/json.h>

namespace {
constexpr int kToastMs = 2000;
}  // namespace

CLxImagePreviewWnd& CLxImagePreviewWnd::instance() { return *instancePtr(); }

CLxImagePreviewWnd* CLxImagePreviewWnd::instancePtr() {
    static QPointer<CLxImagePreviewWnd> s_pWnd;
    if (!s_pWnd)
        s_pWnd = new CLxImagePreviewWnd(nullptr);
    return s_pWnd;
}

CLxImagePreviewWnd::CLxImagePreviewWnd(QWidget* parent) : LFrameLessWnd(parent) {
    setObjectName(QStringLiteral("CLxImagePreviewWnd"));
    setTitle(lxstdui_multi_lang::image_preview::textTitle());
    setMinimumSize(200, 160);
    m_pTitleBar = new CLxImagePreviewTitleBarWidget;
    setTitleBarWidget(m_pTitleBar);
    m_pContent = new CLxImagePreviewContentWidget;
    setContentWidget(m_pContent);
    m_pImgWidget = new LxWebImageWidget;
    m_pContent->SetContentImgWidget(m_pImgWidget);
    m_pTranslateTask = new CLxImagePreviewTranslateTask(this);

    LXUIKIT_SAFE_CONNECT(m_pTitleBar.data(), &CLxImagePreviewTitleBarWidget::previousClicked, this,
                         &CLxImagePreviewWnd::OnPreviousImage);
    LXUIKIT_SAFE_CONNECT(m_pTitleBar.data(), &CLxImagePreviewTitleBarWidget::nextClicked, this,
                         &CLxImagePreviewWnd::OnNextImage);
    LXUIKIT_SAFE_CONNECT(m_pTitleBar.data(), &CLxImagePreviewTitleBarWidget::translateClicked, this,
                         &CLxImagePreviewWnd::OnTranslateBtnClicked);
    LXUIKIT_SAFE_CONNECT(m_pTitleBar.data(), &CLxImagePreviewTitleBarWidget::refreshClicked, this,
                         &CLxImagePreviewWnd::OnRefreshBtnClicked);
    LXUIKIT_SAFE_CONNECT(m_pTitleBar.data(), &CLxImagePreviewTitleBarWidget::zoomInClicked, m_pContent.data(),
                         &CLxImagePreviewContentWidget::OnZoomIn);
    LXUIKIT_SAFE_CONNECT(m_pTitleBar.data(), &CLxImagePreviewTitleBarWidget::zoomOutClicked, m_pContent.data(),
                         &CLxImagePreviewContentWidget::OnZoomOut);
    LXUIKIT_SAFE_CONNECT(m_pContent.data(), &CLxImagePreviewContentWidget::refreshRequested, this,
                         &CLxImagePreviewWnd::OnRefreshBtnClicked);
    LXUIKIT_SAFE_CONNECT(m_pContent.data(), &QWidget::customContextMenuRequested, this,
                         &CLxImagePreviewWnd::OnShowCopyContextMenu);
    LXUIKIT_SAFE_CONNECT(m_pImgWidget.data(), &LxWebImageWidget::ImageLoadStatusSignal, this,
                         &CLxImagePreviewWnd::OnImageLoadStatus);
}

CLxImagePreviewWnd::~CLxImagePreviewWnd() = default;

bool CLxImagePreviewWnd::GetParamsData(const Json::Value& json, QVector<std::shared_ptr<ImageInfo>>& images,
                                       int& index) {
    images.clear();
    index = 0;
    if (!json.isObject() || !json.isMember("params") || !json["params"].isObject()) {
        LXUIKIT_LOG_WARN("CLxImagePreviewWnd::GetParamsData no params");
        return false;
    }
    const Json::Value& params = json["params"];
    if (!params.isMember("data") || !params["data"].isArray()) {
        LXUIKIT_LOG_WARN("CLxImagePreviewWnd::GetParamsData no data");
        return false;
    }
    const Json::Value& data = params["data"];
    for (Json::ArrayIndex i = 0; i < data.size(); ++i) {
        const Json::Value& item = data[i];
        if (!item.isObject() || !item["url"].isString() || item["url"].asString().empty()) {
            LXUIKIT_LOG_WARN("CLxImagePreviewWnd::GetParamsData skips picture {}: no url", i);
            continue;
        }
        const auto side = [&item](const char* name) { return item[name].isInt() ? qMax(0, item[name].asInt()) : 0; };
        images.push_back(
            std::make_shared<ImageInfo>(QString::fromStdString(item["url"].asString()), side("width"), side("height")));
    }
    const Json::Value& idx = params.isMember("index") ? params["index"] : json["index"];
    if (idx.isInt())
        index = idx.asInt();
    if (images.isEmpty()) {
        LXUIKIT_LOG_WARN("CLxImagePreviewWnd::GetParamsData no data");
        return false;
    }
    index = qBound(0, index, images.size() - 1);
    return true;
}

bool CLxImagePreviewWnd::OpenImagePreviewWnd(const Json::Value& json) {
    QVector<std::shared_ptr<ImageInfo>> images;
    int index = 0;
    if (!GetParamsData(json, images, index))
        return false;
    OpenImagePreviewWnd(images, index);
    return true;
}

QSize CLxImagePreviewWnd::GetWindowRealSize(const QSize& imageArea) const { return imageArea + chromeSize(); }

void CLxImagePreviewWnd::OpenImagePreviewWnd(const QVector<std::shared_ptr<ImageInfo>>& images, int index) {
    AbandonInFlightTranslateTask();
    m_vecImages.clear();
    for (const auto& sp : images)
        if (sp)
            m_vecImages.push_back(sp);
    if (m_vecImages.isEmpty()) {
        LXUIKIT_LOG_WARN("CLxImagePreviewWnd::OpenImagePreviewWnd no pictures");
        return;
    }
    index = qBound(0, index, m_vecImages.size() - 1);
    const std::shared_ptr<ImageInfo>& sp = m_vecImages[index];
    const CLxImagePreviewHelper::ScaleResult sizing =
        CLxImagePreviewHelper::CalculateScaleResult(QSize(sp->i32Width, sp->i32Height));
    if (!isMaximized())
        resize(GetWindowRealSize(sizing.imageArea));
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (screen && !isVisible()) {
        QRect g(QPoint(), size());
        g.moveCenter(screen->availableGeometry().center());
        move(g.topLeft());
    }
    show();
    raise();
    activateWindow();
    SetImage(index, true);
}

void CLxImagePreviewWnd::SetImage(int index) { SetImage(index, false); }

void CLxImagePreviewWnd::SetImage(int index, bool bFirstShow) {
    LXUIKIT_LOG_INFO("CLxImagePreviewWnd::SetImage , i32CurIndex = {}", index);
    const std::shared_ptr<ImageInfo> sp = index >= 0 && index < m_vecImages.size() ? m_vecImages[index] : nullptr;
    if (!sp) {
        LXUIKIT_LOG_WARN("CLxImagePreviewWnd::SetImage spCurImg is nullptr");
        return;
    }
    m_i32CurIndex = index;
    if (!sp->bUserChangedScale) {
        const QSize size(sp->i32Width, sp->i32Height);
        sp->dScale = bFirstShow ? CLxImagePreviewHelper::CalculateScaleResult(size).dScale
                                : CLxImagePreviewHelper::GetImageScaleFactor(size, m_pContent->size());
    }
    m_pContent->SetFirstShowed(bFirstShow);
    m_pContent->SetImageStatus(CLxImagePreviewContentWidget::Status_Loading);
    m_pContent->SetImageInfo(sp);
    ApplyImageState();
    m_pImgWidget->SetUrl(sp->strUrl);
}

void CLxImagePreviewWnd::ApplyImageState() {
    const int count = m_vecImages.size();
    m_pTitleBar->SetPreviousImageBtnVisible(count > 1);
    m_pTitleBar->SetNextImageBtnVisible(count > 1);
    m_pTitleBar->SetPreviousImageBtnEnabled(m_i32CurIndex >= 1);
    m_pTitleBar->SetNextImageBtnEnabled(m_i32CurIndex < count - 1);
    m_pTitleBar->SetTranslateDividerVisible(count > 1);
    m_pTitleBar->ApplyTranslateStateFromImageInfo(GetCurrentImageInfo());
    m_pContent->UpdateTranslateView();
}

void CLxImagePreviewWnd::OnImageLoadStatus(const QString& url, LxImageLoadStatus status) {
    const std::shared_ptr<ImageInfo> sp = GetCurrentImageInfo();
    if (!sp || status != LxImageLoadStatus::Loaded || url != sp->strUrl)
        return;
    // The host may not know the size: take it from the picture and fit it to the window.
    const QSize size = m_pImgWidget->GetImageSize();
    if ((sp->i32Width <= 0 || sp->i32Height <= 0) && !size.isEmpty()) {
        sp->i32Width = size.width();
        sp->i32Height = size.height();
        if (!sp->bUserChangedScale) {
            sp->dScale = CLxImagePreviewHelper::GetImageScaleFactor(size, m_pContent->size());
            m_pContent->SetImageInfo(sp);
        }
    }
}

std::shared_ptr<ImageInfo> CLxImagePreviewWnd::GetCurrentImageInfo() const {
    return m_i32CurIndex >= 0 && m_i32CurIndex < m_vecImages.size() ? m_vecImages[m_i32CurIndex] : nullptr;
}

void CLxImagePreviewWnd::OnPreviousImage() {
    AbandonInFlightTranslateTask();
    SetImage(m_i32CurIndex > 0 ? m_i32CurIndex - 1 : m_i32CurIndex);
}

void CLxImagePreviewWnd::OnNextImage() {
    AbandonInFlightTranslateTask();
    SetImage(m_i32CurIndex < m_vecImages.size() - 1 ? m_i32CurIndex + 1 : m_i32CurIndex);
}

void CLxImagePreviewWnd::OnRefreshBtnClicked() {
    AbandonInFlightTranslateTask();
    if (const std::shared_ptr<ImageInfo> sp = GetCurrentImageInfo()) {
        m_pImgWidget->Clear();
        m_pContent->SetImageStatus(CLxImagePreviewContentWidget::Status_Loading);
        m_pImgWidget->SetUrl(sp->strUrl);
    }
}

bool CLxImagePreviewWnd::IsCurrentImageTranslatable() const {
    return GetCurrentImageInfo() &&
           m_pContent->GetCurrentImageStatus() == CLxImagePreviewContentWidget::Status_Loaded && !m_pContent->IsGif() &&
           !m_pContent->GetSourcePixmap().isNull();
}

void CLxImagePreviewWnd::OnTranslateBtnClicked() {
    const std::shared_ptr<ImageInfo> sp = GetCurrentImageInfo();
    if (!sp || sp->i32TranslateState == ImageInfo::Translating)
        return;
    if (sp->i32TranslateState == ImageInfo::Translated && !sp->translatedPixmap.isNull()) {
        // Switches between the translation and the original.
        sp->bShowTranslated = !sp->bShowTranslated;
        ApplyImageState();
        return;
    }
    if (!IsCurrentImageTranslatable()) {
        gui::ShowToast(lxstdui_multi_lang::image_preview::textUnsupportedFormat(), gui::LxToastType::Error, kToastMs);
        return;
    }
    m_u64CurTranslateRequestId = GenerateTranslateRequestId();
    sp->i32TranslateState = ImageInfo::Translating;
    ApplyImageState();
    m_pTranslateTask->RequestTranslate(
        sp->strUrl, m_pContent->GetSourcePixmap(), m_u64CurTranslateRequestId, unsigned(m_i32CurIndex),
        CLxImagePreviewTranslateTask::Callback(
            this, [this](unsigned long requestId, unsigned int index, const ImageTranslateResult& result) {
                OnTranslateResult(requestId, index, result);
            }));
}

void CLxImagePreviewWnd::OnTranslateResult(unsigned long requestId, unsigned int index,
                                           const ImageTranslateResult& result) {
    const std::shared_ptr<ImageInfo> sp = GetCurrentImageInfo();
    if (!sp || requestId != m_u64CurTranslateRequestId || int(index) != m_i32CurIndex) {
        LXUIKIT_LOG_INFO("translation answer {} for picture {} is stale, dropped", requestId, index);
        return;
    }
    m_u64CurTranslateRequestId = 0;
    switch (result.i32Status) {
    case ImageTranslateResult::Success:
        sp->i32TranslateState = ImageInfo::Translated;
        sp->translatedPixmap = result.pixmap;
        sp->bShowTranslated = true;
        break;
    case ImageTranslateResult::NoResult:
        sp->i32TranslateState = ImageInfo::TranslateNone;
        gui::ShowToast(lxstdui_multi_lang::image_preview::textNoTranslateResult(), gui::LxToastType::Info, kToastMs);
        break;
    case ImageTranslateResult::Cancelled: sp->i32TranslateState = ImageInfo::TranslateNone; break;
    default:
        sp->i32TranslateState = ImageInfo::TranslateNone;
        gui::ShowToast(lxstdui_multi_lang::image_preview::textTranslateFailed(), gui::LxToastType::Error, kToastMs);
        break;
    }
    ApplyImageState();
}

void CLxImagePreviewWnd::CancelInFlightTranslateTask() {
    if (m_pTranslateTask)
        m_pTranslateTask->CancelInFlightRequest();
}

void CLxImagePreviewWnd::AbandonInFlightTranslateTask() {
    if (m_pTranslateTask)
        m_pTranslateTask->AbandonInFlightRequest();
    m_u64CurTranslateRequestId = 0;
    bool bChanged = false;
    for (const auto& sp : qAsConst(m_vecImages)) {
        if (sp->i32TranslateState == ImageInfo::Translating) {
            sp->i32TranslateState = ImageInfo::TranslateNone;
            bChanged = true;
        }
    }
    if (bChanged)
        ApplyImageState();
}

bool CLxImagePreviewWnd::CanCopyCurrentImage() const {
    return GetCurrentImageInfo() && m_pImgWidget &&
           m_pContent->GetCurrentImageStatus() == CLxImagePreviewContentWidget::Status_Loaded &&
           !m_pImgWidget->GetSourcePixmap().isNull();
}

bool CLxImagePreviewWnd::CopyCurrentImage() {
    namespace words = lxstdui_multi_lang::image_preview;
    if (!CanCopyCurrentImage()) {
        gui::ShowToast(words::textCopyFailed(), gui::LxToastType::Error, kToastMs);
        return false;
    }
    m_pImgWidget->Copy();
    gui::ShowToast(words::textCopySucceeded(), gui::LxToastType::Success, kToastMs);
    return true;
}

void CLxImagePreviewWnd::OnCopyAction() { CopyCurrentImage(); }

void CLxImagePreviewWnd::OnShowCopyContextMenu(const QPoint& pos) {
    if (m_pContextMenu)
        m_pContextMenu->close();
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* copy = menu->addAction(lxstdui_multi_lang::image_preview::textCopy());
    copy->setEnabled(CanCopyCurrentImage());
    LXUIKIT_SAFE_CONNECT(copy, &QAction::triggered, this, &CLxImagePreviewWnd::OnCopyAction);
    m_pContextMenu = menu;
    menu->popup(m_pContent->mapToGlobal(pos));
}

QMenu* CLxImagePreviewWnd::GetContextMenu() const { return m_pContextMenu; }

void CLxImagePreviewWnd::DeleteImageInfoByUniqueID(unsigned long u64UniqueId) {
    int removed = -1;
    for (int i = 0; i < m_vecImages.size(); ++i) {
        if (m_vecImages[i]->u64UniqueId == u64UniqueId) {
            removed = i;
            break;
        }
    }
    if (removed < 0)
        return;
    if (removed == m_i32CurIndex)
        AbandonInFlightTranslateTask();
    m_vecImages.removeAt(removed);
    if (m_vecImages.isEmpty()) {
        m_i32CurIndex = -1;
        close();
        return;
    }
    if (removed < m_i32CurIndex) {
        --m_i32CurIndex;
        ApplyImageState();
    } else if (removed == m_i32CurIndex) {
        SetImage(qMin(m_i32CurIndex, m_vecImages.size() - 1));
    } else {
        ApplyImageState();
    }
}

CLxImagePreviewTitleBarWidget* CLxImagePreviewWnd::GetTitleBar() const { return m_pTitleBar; }
CLxImagePreviewContentWidget* CLxImagePreviewWnd::GetContentWidget() const { return m_pContent; }
CLxImagePreviewTranslateTask* CLxImagePreviewWnd::GetTranslateTask() const { return m_pTranslateTask; }

void CLxImagePreviewWnd::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Left) {
        OnPreviousImage();
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Right) {
        OnNextImage();
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        close();
        event->accept();
        return;
    }
    LFrameLessWnd::keyReleaseEvent(event);
}

void CLxImagePreviewWnd::OnClose() {
    CancelInFlightTranslateTask();
    AbandonInFlightTranslateTask();
}

void CLxImagePreviewWnd::closeEvent(QCloseEvent* event) {
    OnClose();
    LFrameLessWnd::closeEvent(event);
}
