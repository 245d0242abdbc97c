#include <LxStdUI/LCheck.h>
#include <LxStdUI/LStdControlStyle_p.h>

LCheck::LCheck(QWidget* parent) : LCheck(QString(), parent) {}

LCheck::LCheck(const QString& text, QWidget* parent) : QCheckBox(text, parent) {
    setCursor(Qt::PointingHandCursor);
    lx_std_ui_detail::FollowTheme(this,
                                  [this] { lx_std_ui_detail::ApplyTextStyle(this, lx_std_ui_detail::LTextStyle(2)); });
}

void LCheck::setSpacing(int i32Spacing) {
    m_i32Spacing = i32Spacing;
    updateGeometry();
    update();
}

QSize LCheck::sizeHint() const { return lx_std_ui_detail::IndicatorButtonSizeHint(this, m_i32Spacing); }

void LCheck::paintEvent(QPaintEvent*) { lx_std_ui_detail::PaintIndicatorButton(this, false, m_i32Spacing, m_bHover); }

void LCheck::enterEvent(QEvent* e) {
    m_bHover = true;
    update();
    QCheckBox::enterEvent(e);
}

void LCheck::leaveEvent(QEvent* e) {
    m_bHover = false;
    update();
    QCheckBox::leaveEvent(e);
}
