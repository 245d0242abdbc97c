#pragma once
// The standard tab bar: a QTabBar whose tabs carry an identifier, an object name (shown by the
// widget inspector as the tab's class), a fixed flag, a tip, and a menu and a close button that can
// be shown per tab.
//
// A fixed tab cannot be closed: its close button stays hidden and a close request for it is dropped.
// The menu button is a small "▾" button on the tab's left side; clicking it emits menuRequested.
// Per-tab data follows the tabs when they are inserted, removed or moved.

#include <LxStdUI/LxStdUIExport.h>

#include <QTabBar>
#include <QVector>

class LXSTDUI_EXPORT LTabBarBase : public QTabBar {
    Q_OBJECT
public:
    explicit LTabBarBase(QWidget* parent = nullptr);

    int addTab(const QString& text, const QString& tabID);
    int indexOfTabID(const QString& tabID) const;

    QString tabID(int index) const;
    void setTabID(int index, const QString& tabID);
    QString tabObjectName(int index) const;
    void setTabObjectName(int index, const QString& name);
    bool isTabFixed(int index) const;
    void setTabFixed(int index, bool fixed);
    QString tabTip(int index) const;
    void setTabTip(int index, const QString& tip);  // also the tab's tool tip
    bool isMenuButtonVisible(int index) const;
    void setMenuButtonVisible(int index, bool visible);
    bool isCloseButtonVisible(int index) const;
    void setCloseButtonVisible(int index, bool visible);

Q_SIGNALS:
    void menuRequested(int index);
    void closeRequested(int index);  // a close request for a tab that is not fixed

protected:
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    struct TabInfo {
        QString strID;
        QString strObjectName;
        QString strTip;
        bool bFixed = false;
        bool bMenuButton = false;
        bool bCloseButton = true;
    };
    bool IsIndexValid(int index) const { return index >= 0 && index < m_tabs.size(); }
    void SyncButtons(int index);
    void OnTabMoved(int from, int to);
    QWidget* FindButtonIndex(QWidget* button, int* index) const;

    QVector<TabInfo> m_tabs;
};
