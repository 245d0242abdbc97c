#include <LxStdUI/ThemeManager.h>

#include <LxStdUI/LxStdUILog_p.h>

#include <QCoreApplication>

namespace lx_ui_theme {

Manager* Manager::instance() {
    static Manager* s = new Manager;  // process lifetime: widgets disconnect from it while tearing down
    return s;
}

Manager::Manager() { qRegisterMetaType<lx_ui_theme::Manager::Theme>("lx_ui_theme::Manager::Theme"); }

void Manager::setTheme(Theme theme) {
    if (theme == m_enTheme)
        return;
    m_enTheme = theme;
    ++m_u64Generation;
    LXSTDUI_LOG_INFO("theme changed to {}", theme == Dark ? "Dark" : "Light");
    Q_EMIT themeChanged(theme);
}

}  // namespace lx_ui_theme
