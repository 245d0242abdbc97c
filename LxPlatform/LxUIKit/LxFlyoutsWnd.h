#pragma once
// LxFlyoutsWnd: a flyout panel that follows the application's main window through the core's
// message dispatch: message 20154 (main window hidden) hides it, 20156 (main window restored)
// shows it again, 20155 (application exiting) closes it. A panel the user had already closed or
// hidden when the main window hid stays hidden on restore; SetHideOrRestoreFollowMainWnd(false)
// makes hide and restore leave the panel alone. Subclasses override OnAppHide / OnAppRestore /
// OnAppExit to do more (the defaults do the above). The bindings end with the panel.

#include <LxStdUI/LDialogBase.h>
#include <LxUIKit/LxUIKitExport.h>

class LXUIKIT_EXPORT LxFlyoutsWnd : public LFlyouts {
    Q_OBJECT
public:
    static constexpr unsigned kMsgMainWndHide = 20154;
    static constexpr unsigned kMsgAppExit = 20155;
    static constexpr unsigned kMsgMainWndRestore = 20156;

    explicit LxFlyoutsWnd(QWidget* parent = nullptr);

    void OnMainWndMessage(unsigned id);
    void SetHideOrRestoreFollowMainWnd(bool bFollow) { m_bFollowMainWnd = bFollow; }
    bool IsHideOrRestoreFollowMainWnd() const { return m_bFollowMainWnd; }
    bool IsHiddenByApp() const { return m_bHiddenByApp; }

protected:
    virtual void OnAppExit();
    virtual void OnAppHide();
    virtual void OnAppRestore();

private:
    bool m_bHiddenByApp = false;
    bool m_bFollowMainWnd = true;
};
