#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/SettingSection/SectionWidgetMgrView.h>

#include <QVBoxLayout>

CSectionWidgetMgrView::CSectionWidgetMgrView(QWidget* parent) : QWidget(parent) {
    m_pLayout = new QVBoxLayout(this);
    m_pLayout->setSpacing(0);
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setAlignment(Qt::AlignLeft);
}

void CSectionWidgetMgrView::AddSectionWidget(QWidget* pSection, int spacingAfter) {
    LXUIKIT_ASSERT_RETURN(pSection);
    m_pLayout->addWidget(pSection, 0);
    m_pLayout->addSpacing(spacingAfter);
    m_vecWidgets.append(pSection);
}

void CSectionWidgetMgrView::AddSectionLayout(QLayout* pSection, int spacingAfter) {
    LXUIKIT_ASSERT_RETURN(pSection);
    m_pLayout->addLayout(pSection, 0);
    m_pLayout->addSpacing(spacingAfter);
    m_vecLayouts.append(pSection);
}

void CSectionWidgetMgrView::SetHeaderSection(QWidget* pSection, int spacingAfter) {
    if (m_pHeader) {
        LXUIKIT_ASSERT(false);
        return;
    }
    AddSectionWidget(pSection, spacingAfter);
    m_pHeader = pSection;
}

void CSectionWidgetMgrView::SetHeaderSection(QLayout* pSection, int spacingAfter) {
    if (m_pHeader) {
        LXUIKIT_ASSERT(false);
        return;
    }
    AddSectionLayout(pSection, spacingAfter);
    m_pHeader = pSection;
}
