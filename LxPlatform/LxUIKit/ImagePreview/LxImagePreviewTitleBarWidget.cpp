#include <LxUIKit/ImagePreview/LxImagePreviewTitleBarWidget.h>

#include <LxStdUI/LIconButton.h>
#include <LxStdUI/LIconResource.h>
#include <LxStdUI/MultiLang.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>

namespace {
LIconButton* MakeButton(QWidget* parent, const char* icon, const char* name) {
    auto* b = new LIconButton(QString::fromLatin1(icon), parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setFixedSize(32, 32);
    b->setIconSize(QSize(20, 20));
    b->setHoverBackgroundEnabled(true);
    return b;
}
}  // namespace

CLxImagePreviewTitleBarWidget::CLxImagePreviewTitleBarWidget(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("CLxImagePreviewTitleBarWidget"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 4, 0);
    layout->setSpacing(4);
    m_pZoomOut = MakeButton(this, LResource::icon_zoom_out_normal, "ImagePreviewZoomOut");
    m_pZoomIn = MakeButton(this, LResource::icon_zoom_in_normal, "ImagePreviewZoomIn");
    m_pPrevious = MakeButton(this, LResource::icon_arrow_left_normal, "ImagePreviewPrevious");
    m_pNext = MakeButton(this, LResource::icon_arrow_right_normal, "ImagePreviewNext");
    m_pDivider = new QFrame(this);
    m_pDivider->setObjectName(QStringLiteral("ImagePreviewTranslateDivider"));
    m_pDivider->setFixedSize(1, 16);
    m_pTranslate = MakeButton(this, LResource::icon_translate_normal, "ImagePreviewTranslate");
    m_pRefresh = MakeButton(this, LResource::icon_pic_refresh_24_normal, "ImagePreviewRefresh");
    layout->addWidget(m_pZoomOut);
    layout->addWidget(m_pZoomIn);
    layout->addStretch(1);
    layout->addWidget(m_pPrevious);
    layout->addWidget(m_pNext);
    layout->addSpacing(4);
    layout->addWidget(m_pDivider);
    layout->addSpacing(4);
    layout->addWidget(m_pTranslate);
    layout->addWidget(m_pRefresh);
    LXUIKIT_SAFE_CONNECT(m_pPrevious.data(), &QAbstractButton::clicked, this,
                         &CLxImagePreviewTitleBarWidget::previousClicked);
    LXUIKIT_SAFE_CONNECT(m_pNext.data(), &QAbstractButton::clicked, this, &CLxImagePreviewTitleBarWidget::nextClicked);
    LXUIKIT_SAFE_CONNECT(m_pTranslate.data(), &QAbstractButton::clicked, this,
                         &CLxImagePreviewTitleBarWidget::translateClicked);
    LXUIKIT_SAFE_CONNECT(m_pRefresh.data(), &QAbstractButton::clicked, this,
                         &CLxImagePreviewTitleBarWidget::refreshClicked);
    LXUIKIT_SAFE_CONNECT(m_pZoomIn.data(), &QAbstractButton::clicked, this,
                         &CLxImagePreviewTitleBarWidget::zoomInClicked);
    LXUIKIT_SAFE_CONNECT(m_pZoomOut.data(), &QAbstractButton::clicked, this,
                         &CLxImagePreviewTitleBarWidget::zoomOutClicked);
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { ApplyTheme(); });
    ApplyTheme();
    RetranslateUi();
}

void CLxImagePreviewTitleBarWidget::ApplyTheme() {
    const QString color = lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_line_separator"));
    m_pDivider->setStyleSheet(
        QStringLiteral("background-color:%1; border:none;").arg(color.isEmpty() ? QStringLiteral("#d0d4da") : color));
}

void CLxImagePreviewTitleBarWidget::RetranslateUi() {
    namespace words = lxstdui_multi_lang::image_preview;
    m_pZoomOut->setToolTip(words::textZoomOut());
    m_pZoomIn->setToolTip(words::textZoomIn());
    m_pPrevious->setToolTip(words::textPrevious());
    m_pNext->setToolTip(words::textNext());
    m_pTranslate->setToolTip(m_bTranslationShown ? words::textShowOriginal() : words::textTranslate());
    m_pRefresh->setToolTip(words::textRefresh());
}

void CLxImagePreviewTitleBarWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        RetranslateUi();
    QWidget::changeEvent(event);
}

void CLxImagePreviewTitleBarWidget::SetPreviousImageBtnEnabled(bool bEnabled) { m_pPrevious->setEnabled(bEnabled); }
void CLxImagePreviewTitleBarWidget::SetPreviousImageBtnVisible(bool bVisible) { m_pPrevious->setVisible(bVisible); }
void CLxImagePreviewTitleBarWidget::SetNextImageBtnEnabled(bool bEnabled) { m_pNext->setEnabled(bEnabled); }
void CLxImagePreviewTitleBarWidget::SetNextImageBtnVisible(bool bVisible) { m_pNext->setVisible(bVisible); }
void CLxImagePreviewTitleBarWidget::SetTranslateButtonVisible(bool bVisible) { m_pTranslate->setVisible(bVisible); }
void CLxImagePreviewTitleBarWidget::SetTranslateDividerVisible(bool bVisible) { m_pDivider->setVisible(bVisible); }

void CLxImagePreviewTitleBarWidget::ApplyTranslateStateFromImageInfo(const std::shared_ptr<ImageInfo>& spInfo) {
    const int state = spInfo ? spInfo->i32TranslateState : ImageInfo::TranslateNone;
    m_bTranslationShown = state == ImageInfo::Translated && spInfo->bShowTranslated;
    m_pTranslate->setIconPath(
        QString::fromLatin1(m_bTranslationShown ? LResource::icon_translate_active : LResource::icon_translate_normal));
    m_pTranslate->setEnabled(spInfo && state != ImageInfo::Translating);
    RetranslateUi();
}

LIconButton* CLxImagePreviewTitleBarWidget::GetPreviousButton() const { return m_pPrevious; }
LIconButton* CLxImagePreviewTitleBarWidget::GetNextButton() const { return m_pNext; }
LIconButton* CLxImagePreviewTitleBarWidget::GetTranslateButton() const { return m_pTranslate; }
LIconButton* CLxImagePreviewTitleBarWidget::GetRefreshButton() const { return m_pRefresh; }
LIconButton* CLxImagePreviewTitleBarWidget::GetZoomInButton() const { return m_pZoomIn; }
LIconButton* CLxImagePreviewTitleBarWidget::GetZoomOutButton() const { return m_pZoomOut; }
QFrame* CLxImagePreviewTitleBarWidget::GetTranslateDivider() const { return m_pDivider; }
