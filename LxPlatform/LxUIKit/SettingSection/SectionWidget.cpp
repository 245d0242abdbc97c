#include <LxStdUI/LCheck.h>
#include <LxStdUI/LLink.h>
#include <LxStdUI/LRadio.h>
#include <LxStdUI/LSwitch.h>
#include <LxStdUI/LTitle.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/SettingSection/SectionWidget.h>

#include <climits>

// ---- CSectionBaseWidget -----------------------------------------------------------------------

CSectionBaseWidget::CSectionBaseWidget(QMargins margins, QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_pMainLayout = new QHBoxLayout(this);
    m_pMainLayout->setSpacing(0);
    m_pMainLayout->setContentsMargins(0, 0, 0, 0);
    m_pMainLayout->setContentsMargins(margins);
    m_pMainLayout->setAlignment(Qt::AlignTop);
}

std::optional<QHBoxLayout*> CSectionBaseWidget::GetMainHBoxLayout() const {
    if (!m_pMainLayout)
        return std::nullopt;
    return m_pMainLayout;
}

// ---- CSectionTitleWidget ----------------------------------------------------------------------

CSectionTitleWidget::CSectionTitleWidget(const QString& title, QMargins margins, QWidget* parent)
    : CSectionBaseWidget(margins, parent) {
    auto layout = GetMainHBoxLayout();
    if (!layout) {
        LXUIKIT_ASSERT(false);
        return;
    }
    auto* pTitle = new LTitle(this);
    pTitle->setTitleStyle(3);
    pTitle->setText(title);
    pTitle->setLeftMargin(0);
    (*layout)->addWidget(pTitle, 0);
}

CSectionTitleWidget::CSectionTitleWidget(const QString& title, QWidget* parent)
    : CSectionTitleWidget(title, QMargins(0, 0, 0, 0), parent) {}

void CSectionTitleWidget::SetRightCtrlLinkButton(const QString& text, std::function<void()>&& onClick) {
    auto layout = GetMainHBoxLayout();
    if (!layout) {
        LXUIKIT_ASSERT(false);
        return;
    }
    (*layout)->addStretch(0);
    auto* pLink = new LLink(text, this);
    pLink->setLinkStyle(2);
    (*layout)->addWidget(pLink);
    LXUIKIT_SAFE_CONNECT(pLink, &LLink::clicked, this, std::move(onClick));
}

// ---- CSectionCheckWidget ----------------------------------------------------------------------

CSectionCheckWidget::CSectionCheckWidget(ButtonType type, const QString& text, QMargins margins, QWidget* parent)
    : CSectionBaseWidget(margins, parent) {
    if (type == RadioButton) {
        auto* pRadio = new LRadio(text, this);
        pRadio->setSpacing(8);
        pRadio->setObjectName(QStringLiteral("CSectionRadioWidget"));
        m_pButton = pRadio;
    } else if (type == CheckBox) {
        auto* pCheck = new LCheck(text, this);
        pCheck->setSpacing(8);
        pCheck->setObjectName(QStringLiteral("CSectionCheckWidget"));
        m_pButton = pCheck;
    } else {
        LXUIKIT_ASSERT_TEXT(false, "Invalid check style");
        return;
    }
    auto layout = GetMainHBoxLayout();
    if (!layout) {
        LXUIKIT_ASSERT(false);
        return;
    }
    (*layout)->addWidget(m_pButton, 0, Qt::AlignLeft);
}

// ---- CSectionDescText -------------------------------------------------------------------------

QSize CSectionDescText::sizeHint() const {
    const int w = width() > 0 ? width() : 128;
    const QRect bound = fontMetrics().boundingRect(QRect(0, 0, w, INT_MAX / 2), Qt::TextWordWrap, text());
    return QSize(w, bound.height() + 1);
}

void CSectionDescText::resizeEvent(QResizeEvent* e) {
    LText::resizeEvent(e);
    updateGeometry();
}

// ---- CSectionMultiTextWidget ------------------------------------------------------------------

CSectionMultiTextWidget* CSectionMultiTextWidget::SetDescText(const QString& text) {
    auto* pDesc = new CSectionDescText(text, this);
    pDesc->setTextStyle(6);
    pDesc->setWordWrap(true);
    pDesc->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_apSegments[DescSegment] = pDesc;
    return this;
}

CSectionMultiTextWidget* CSectionMultiTextWidget::SetDataText(const QString& text) {
    auto* pData = new LText(text, this);
    pData->setMaximumWidth(160);
    pData->setDottable(true);
    pData->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    pData->setTextStyle(6);
    pData->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_apSegments[DataSegment] = pData;
    return this;
}

CSectionMultiTextWidget* CSectionMultiTextWidget::SetCtrlLink(const QString& text, std::function<void()>&& onClick) {
    auto* pLink = new LLink(text, this);
    pLink->setMaximumWidth(128);
    pLink->setLinkStyle(2);
    pLink->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    LXUIKIT_SAFE_CONNECT(pLink, &LLink::clicked, this, std::move(onClick));
    m_apSegments[CtrlSegment] = pLink;
    return this;
}

QWidget* CSectionMultiTextWidget::GetSegment(SegmentType type) const {
    return (type >= DescSegment && type <= CtrlSegment) ? m_apSegments[type] : nullptr;
}

void CSectionMultiTextWidget::Completed() {
    auto opt = GetMainHBoxLayout();
    if (!opt) {
        LXUIKIT_ASSERT(false);
        return;
    }
    QHBoxLayout* layout = *opt;
    layout->setSpacing(16);
    QWidget* desc = m_apSegments[DescSegment];
    QWidget* data = m_apSegments[DataSegment];
    QWidget* link = m_apSegments[CtrlSegment];
    if (desc) {
        layout->addWidget(desc, 0);
        layout->setStretch(0, 1);
    }
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
    bool bAdded = true;
    if (data && link) {
        auto* pBox = new QWidget(this);
        pBox->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        auto* pInner = new QHBoxLayout(pBox);
        pInner->setContentsMargins(0, 0, 0, 0);
        pInner->setSpacing(0);
        pInner->addWidget(data, 0, right);
        pInner->addWidget(link, 0, right);
        pInner->setSpacing(16);
        layout->addWidget(pBox, 0, right);
    } else if (data) {
        layout->addWidget(data, 0);
    } else if (link) {
        layout->addWidget(link, 0, layout->count() > 0 ? right : (Qt::AlignLeft | Qt::AlignVCenter));
    } else {
        bAdded = false;
    }
    if (bAdded)
        layout->setStretch(1, 0);
}

void CSectionMultiTextWidget::resizeEvent(QResizeEvent* e) {
    if (m_apSegments[DescSegment])
        m_apSegments[DescSegment]->updateGeometry();
    if (m_apSegments[DataSegment])
        m_apSegments[DataSegment]->updateGeometry();
    CSectionBaseWidget::resizeEvent(e);
}

// ---- CSectionInputWidget ----------------------------------------------------------------------

void CSectionInputWidget::CreateImpl(QWidget* desc, QWidget* ctrl) {
    auto opt = GetMainHBoxLayout();
    if (!opt) {
        LXUIKIT_ASSERT(false);
        return;
    }
    QHBoxLayout* layout = *opt;
    if (desc) {
        layout->addWidget(desc, 0);
        layout->addSpacing(16);
    }
    if (ctrl)
        layout->addWidget(ctrl, 0);
    layout->addStretch(1);
    m_bHasDesc = desc != nullptr;
}

int CSectionInputWidget::GetDescTextWidth() const {
    const LText* pText = findChild<LText*>();
    if (!pText)
        return 0;
    return qMin(pText->getTextWidth(), pText->maximumWidth());
}

void CSectionInputWidget::RefreshLayout(int width) {
    const auto texts = findChildren<LText*>();
    for (LText* pText : texts) {
        pText->setMinimumWidth(width);
        pText->setMaximumWidth(width);
        pText->updateGeometry();
    }
    auto opt = GetMainHBoxLayout();
    if (!opt) {
        LXUIKIT_ASSERT(false);
        return;
    }
    (*opt)->activate();
    repaint();
}

// ---- CSectionSwitchWidget ---------------------------------------------------------------------

CSectionSwitchWidget::CSectionSwitchWidget(const SectionSwitchWidgetConfig& config, QWidget* parent)
    : CSectionBaseWidget(config.margins, parent) {
    setFixedHeight(config.height);
    m_pSwitch = new LSwitch(this);
    auto* pLabel = new LText(this);
    pLabel->setTextStyle(6);
    pLabel->setText(config.text);
    m_pSwitch->setChecked(config.checked);
    m_pSwitch->setObjectName(QStringLiteral("CSectionSwitchWidget"));
    if (config.onToggled) {
        std::function<void(bool)> onToggled = config.onToggled;
        LXUIKIT_SAFE_CONNECT(m_pSwitch.data(), &LSwitch::toggled, this, onToggled);
    }
    auto opt = GetMainHBoxLayout();
    if (!opt) {
        LXUIKIT_ASSERT(false);
        return;
    }
    (*opt)->addWidget(pLabel, 0);
    (*opt)->addStretch(0);
    (*opt)->addWidget(m_pSwitch, 0);
}

void CSectionSwitchWidget::SetChecked(bool bChecked) {
    LXUIKIT_ASSERT_RETURN(m_pSwitch);
    m_pSwitch->setChecked(bChecked);
}

bool CSectionSwitchWidget::IsChecked() const { return m_pSwitch ? m_pSwitch->isChecked() : false; }
