#pragma once
// What the everyday controls share: the style codes (font token + colour token), theme-following
// colours, elided text painting and the check/radio indicator drawing.

#include <LxStdUI/FontToken.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QAbstractButton>
#include <QColor>
#include <QFont>
#include <QObject>
#include <QString>

class QPainter;

namespace lx_std_ui_detail {

struct TextStyle {
    const char* pszFontToken;
    const char* pszColorKey;
};

// Text styles 1..7 (LText): 1-3 primary text large to small, 4-5 secondary, 6 description (the
// secondary small style of settings rows and captions), 7 hint. Unknown codes read as 1.
TextStyle LTextStyle(int i32Style);
// Title styles 1..3 (LTitle): page, section, group title.
TextStyle LTitleStyle(int i32Style);
// Link styles 1..3 (LLink): large, standard (2), small.
TextStyle LLinkStyle(int i32Style);

QColor Color(const char* pszKey);
// The colour a control's text is drawn in now: its style's colour, the hint colour when disabled.
QColor TextColor(const QWidget* widget);
constexpr const char* kColorKeyProperty = "lxTextColorKey";

// Calls `fn` on `receiver` now and after every theme change.
template <typename Fn>
void FollowTheme(QObject* receiver, Fn fn) {
    fn();
    QObject::connect(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, receiver,
                     [fn](lx_ui_theme::Manager::Theme) { fn(); });
}

// Applies the font and text colour of a style to a widget's font and palette.
void ApplyTextStyle(QWidget* widget, const TextStyle& style);

// Check box (square) and radio (round) buttons: a 16-pixel indicator, `spacing`, then the text.
QSize IndicatorButtonSizeHint(const QAbstractButton* button, int spacing);
void PaintIndicatorButton(QAbstractButton* button, bool bRound, int spacing, bool bHover);

}  // namespace lx_std_ui_detail
