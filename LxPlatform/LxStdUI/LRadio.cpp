#include <LxStdUI/LRadio.h>
#include <LxStdUI/LStdControlStyle_p.h>

LRadio::LRadio(QWidget* parent) : LRadio(QString(), parent) {}

LRadio::LRadio(const QString& text, QWidget* parent) : QRadioButton(text, parent) {
    setCursor(Qt::PointingHandCursor);
    lx_std_ui_detail::FollowTheme(this,
                                  [this] { lx_std_ui_detail::ApplyTextStyle(this, lx_std_ui_detail::LTextStyle(2)); });
}

void LRadio::setSpacing(int i32Spacing) {
    m_i32Spacing = i32Spacing;
    updateGeometry();
    update();
}

QSize LRadio::sizeHint() const { return lx_std_ui_detail::IndicatorButtonSizeHint(this, m_i32Spacing); }

void LRadio::paintEvent(QPaintEvent*) { lx_std_ui_detail::PaintIndicatorButton(this, true, m_i32Spacing, m_bHover); }

void LRadio::enterEvent(QEvent* e) {
    m_bHover = true;
    update();
    QRadioButton::enterEvent(e);
}

void LRadio::leaveEvent(QEvent* e) {
    m_bHover = false;
    update();
    QRadioButton::leaveEvent(e);
}
