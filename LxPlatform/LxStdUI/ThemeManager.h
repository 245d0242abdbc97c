#pragma once
// lx_ui_theme::Manager: the application's Light / Dark theme. Changing it emits themeChanged and
// bumps themeGeneration(), which resource holders compare to know when to re-resolve.

#include <LxStdUI/LxStdUIExport.h>
#include <QObject>

class QPalette;

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

// The current theme's colour tokens laid over a palette, for windows built from plain Qt controls
// (tables, trees, tab bars, text views): surfaces, text, disabled and placeholder text, borders
// and selection. A role whose token the resources do not define keeps its colour from base; when
// the background or text token is missing, base comes back unchanged.
LXSTDUI_EXPORT QPalette ThemedPalette(const QPalette& base);

}  // namespace lx_ui_theme
