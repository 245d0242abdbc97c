#include <LxStdUI/LTabBarBase.h>

#include <LxStdUI/LxStdUILog_p.h>

#include <QToolButton>

LTabBarBase::LTabBarBase(QWidget* parent) : QTabBar(parent) {
    LXSTDUI_SAFE_CONNECT(this, &QTabBar::tabMoved, this, &LTabBarBase::OnTabMoved);
    LXSTDUI_SAFE_CONNECT(this, &QTabBar::tabCloseRequested, this, [this](int index) {
        if (IsIndexValid(index) && !m_tabs[index].bFixed)
            Q_EMIT closeRequested(index);
    });
}

int LTabBarBase::addTab(const QString& text, const QString& tabID) {
    const int index = QTabBar::addTab(text);
    setTabID(index, tabID);
    return index;
}

int LTabBarBase::indexOfTabID(const QString& tabID) const {
    for (int i = 0; i < m_tabs.size(); ++i) {
        if (m_tabs[i].strID == tabID)
            return i;
    }
    return -1;
}

QString LTabBarBase::tabID(int index) const { return IsIndexValid(index) ? m_tabs[index].strID : QString(); }

void LTabBarBase::setTabID(int index, const QString& tabID) {
    LXSTDUI_ASSERT_RETURN(IsIndexValid(index));
    m_tabs[index].strID = tabID;
}

QString LTabBarBase::tabObjectName(int index) const {
    return IsIndexValid(index) ? m_tabs[index].strObjectName : QString();
}

void LTabBarBase::setTabObjectName(int index, const QString& name) {
    LXSTDUI_ASSERT_RETURN(IsIndexValid(index));
    m_tabs[index].strObjectName = name;
}

bool LTabBarBase::isTabFixed(int index) const { return IsIndexValid(index) && m_tabs[index].bFixed; }

void LTabBarBase::setTabFixed(int index, bool fixed) {
    LXSTDUI_ASSERT_RETURN(IsIndexValid(index));
    m_tabs[index].bFixed = fixed;
    SyncButtons(index);
}

QString LTabBarBase::tabTip(int index) const { return IsIndexValid(index) ? m_tabs[index].strTip : QString(); }

void LTabBarBase::setTabTip(int index, const QString& tip) {
    LXSTDUI_ASSERT_RETURN(IsIndexValid(index));
    m_tabs[index].strTip = tip;
    setTabToolTip(index, tip);
}

bool LTabBarBase::isMenuButtonVisible(int index) const { return IsIndexValid(index) && m_tabs[index].bMenuButton; }

void LTabBarBase::setMenuButtonVisible(int index, bool visible) {
    LXSTDUI_ASSERT_RETURN(IsIndexValid(index));
    m_tabs[index].bMenuButton = visible;
    SyncButtons(index);
}

bool LTabBarBase::isCloseButtonVisible(int index) const {
    return IsIndexValid(index) && tabsClosable() && m_tabs[index].bCloseButton && !m_tabs[index].bFixed;
}

void LTabBarBase::setCloseButtonVisible(int index, bool visible) {
    LXSTDUI_ASSERT_RETURN(IsIndexValid(index));
    m_tabs[index].bCloseButton = visible;
    SyncButtons(index);
}

void LTabBarBase::tabInserted(int index) {
    if (index >= 0 && index <= m_tabs.size())
        m_tabs.insert(index, TabInfo());
    QTabBar::tabInserted(index);
    SyncButtons(index);
}

void LTabBarBase::tabRemoved(int index) {
    if (IsIndexValid(index))
        m_tabs.remove(index);
    QTabBar::tabRemoved(index);
}

void LTabBarBase::OnTabMoved(int from, int to) {
    if (!IsIndexValid(from) || !IsIndexValid(to))
        return;
    const TabInfo info = m_tabs[from];
    m_tabs.remove(from);
    m_tabs.insert(to, info);
}

QWidget* LTabBarBase::FindButtonIndex(QWidget* button, int* index) const {
    for (int i = 0; i < count(); ++i) {
        if (tabButton(i, QTabBar::LeftSide) == button) {
            *index = i;
            return button;
        }
    }
    return nullptr;
}

void LTabBarBase::SyncButtons(int index) {
    if (!IsIndexValid(index))
        return;
    const TabInfo& info = m_tabs[index];
    QWidget* menu = tabButton(index, QTabBar::LeftSide);
    if (info.bMenuButton && !menu) {
        auto* button = new QToolButton(this);
        button->setText(QStringLiteral("▾"));
        button->setAutoRaise(true);
        button->setObjectName(QStringLiteral("LTabBarBase_MenuButton"));
        LXSTDUI_SAFE_CONNECT(button, &QToolButton::clicked, this, [this, button] {
            int i = -1;
            if (FindButtonIndex(button, &i))
                Q_EMIT menuRequested(i);
        });
        setTabButton(index, QTabBar::LeftSide, button);
    } else if (!info.bMenuButton && menu) {
        setTabButton(index, QTabBar::LeftSide, nullptr);
        menu->deleteLater();
    }
    if (QWidget* close = tabButton(index, QTabBar::RightSide))
        close->setVisible(info.bCloseButton && !info.bFixed);
}
