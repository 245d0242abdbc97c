#include <LxStdUI/LStdControlStyle_p.h>
#include <LxStdUI/LTitle.h>

LTitle::LTitle(QWidget* parent) : QLabel(parent) {
    lx_std_ui_detail::FollowTheme(this, [this] { setTitleStyle(m_i32Style); });
}

void LTitle::setTitleStyle(int i32Style) {
    m_i32Style = i32Style;
    lx_std_ui_detail::ApplyTextStyle(this, lx_std_ui_detail::LTitleStyle(i32Style));
}

int LTitle::spacePixels(int i32SpaceCode) { return (i32SpaceCode >= 0 && i32SpaceCode <= 4) ? i32SpaceCode * 4 : 0; }

void LTitle::setLeftMargin(int i32SpaceCode) {
    QMargins m = contentsMargins();
    m.setLeft(spacePixels(i32SpaceCode));
    setContentsMargins(m);
}
