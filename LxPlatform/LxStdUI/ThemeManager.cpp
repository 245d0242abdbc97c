#include <LxStdUI/ThemeManager.h>

#include <LxStdUI/LxStdUILog_p.h>
#include <LxStdUI/ResProvider.h>

#include <QCoreApplication>
#include <QPalette>

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

QPalette ThemedPalette(const QPalette& base) {
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    const QColor bg = res->color(QStringLiteral("ct_bg_primary"));
    const QColor text = res->color(QStringLiteral("ct_text_h1"));
    if (!bg.isValid() || !text.isValid())
        return base;
    const QColor alt = res->color(QStringLiteral("ct_bg_secondary"));
    const QColor raised = res->color(QStringLiteral("ct_bg_tertiary"));
    const QColor hover = res->color(QStringLiteral("ct_bg_hover"));
    const QColor text2 = res->color(QStringLiteral("ct_text_h2"));
    const QColor border = res->color(QStringLiteral("ct_border"));
    const QColor link = res->color(QStringLiteral("ct_text_link"));
    QPalette pal = base;
    pal.setColor(QPalette::Window, alt.isValid() ? alt : bg);
    pal.setColor(QPalette::Base, bg);
    pal.setColor(QPalette::AlternateBase, hover.isValid() ? hover : bg);
    pal.setColor(QPalette::Button, raised.isValid() ? raised : bg);
    pal.setColor(QPalette::ToolTipBase, bg);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        pal.setColor(role, text);
    if (text2.isValid()) {
        pal.setColor(QPalette::PlaceholderText, text2);
        for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            pal.setColor(QPalette::Disabled, role, text2);
    }
    if (border.isValid()) {
        pal.setColor(QPalette::Mid, border);
        pal.setColor(QPalette::Dark, border.darker(130));
        pal.setColor(QPalette::Light, raised.isValid() ? raised : bg);
        pal.setColor(QPalette::Midlight, raised.isValid() ? raised : bg);
    }
    if (link.isValid()) {
        pal.setColor(QPalette::Highlight, link);
        pal.setColor(QPalette::Link, link);
        pal.setColor(QPalette::HighlightedText, QColor(Qt::white));
    }
    return pal;
}

}  // namespace lx_ui_theme
