#pragma once
// lx_ui_theme::Manager: the application's Light / Dark theme. Changing it emits themeChanged and
// bumps themeGeneration(), which resource holders compare to know when to re-resolve.

#include <LxStdUI/LxStdUIExport.h>
#include <QObject>

namespace lx_ui_theme {

class LXSTDUI_EXPORT Manager : public QObject {
    Q_OBJECT
public:
    enum Theme { Light = 0, Dark = 1 };
    Q_ENUM(Theme)

    static Manager* instance();
    static Manager* instancePtr() { return instance(); }

    Theme currentTheme() const { return m_enTheme; }
    bool isDark() const { return m_enTheme == Dark; }
    void setTheme(Theme theme);
    quint64 themeGeneration() const { return m_u64Generation; }

Q_SIGNALS:
    void themeChanged(lx_ui_theme::Manager::Theme theme);

private:
    Manager();
    Theme m_enTheme = Light;
    quint64 m_u64Generation = 1;
};

}  // namespace lx_ui_theme
