#include <LxCore/MessageDispatch.h>
#include <LxUIKit/LxFlyoutsWnd.h>
#include <LxUIKit/LxUIKitLog_p.h>

LxFlyoutsWnd::LxFlyoutsWnd(QWidget* parent) : LFlyouts(parent) {
    for (unsigned id : {kMsgMainWndHide, kMsgAppExit, kMsgMainWndRestore}) {
        const uint64_t binding = _CMessageDispatch::instance()->Bind(
            int(id), this, [this](int i32MsgId, const core::CProtoValue&) { OnMainWndMessage(unsigned(i32MsgId)); });
        LXUIKIT_ASSERT(binding != 0);
    }
}

void LxFlyoutsWnd::OnMainWndMessage(unsigned id) {
    switch (id) {
    case kMsgMainWndHide: OnAppHide(); break;
    case kMsgAppExit:
        LXUIKIT_LOG_INFO("LxFlyoutsWnd::OnMainWndMessage  OnAppExit  start. ");
        OnAppExit();
        LXUIKIT_LOG_INFO(" LxFlyoutsWnd::OnMainWndMessage  OnAppExit  end. ");
        break;
    case kMsgMainWndRestore: OnAppRestore(); break;
    default: LXUIKIT_ASSERT(0); break;
    }
}

void LxFlyoutsWnd::OnAppExit() { close(); }

void LxFlyoutsWnd::OnAppHide() {
    if (!m_bFollowMainWnd)
        return;
    if (!isHidden())
        m_bHiddenByApp = true;
    hide();
}

void LxFlyoutsWnd::OnAppRestore() {
    if (!m_bFollowMainWnd || !m_bHiddenByApp)
        return;
    show();
    m_bHiddenByApp = false;
}
