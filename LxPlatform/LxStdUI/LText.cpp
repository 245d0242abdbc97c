#include <LxStdUI/LStdControlStyle_p.h>
#include <LxStdUI/LText.h>

#include <QPainter>
#include <QStyle>

LText::LText(QWidget* parent) : LText(QString(), parent) {}

LText::LText(const QString& text, QWidget* parent) : QLabel(text, parent) {
    lx_std_ui_detail::FollowTheme(this, [this] { setTextStyle(m_i32Style); });
}

void LText::setTextStyle(int i32Style) {
    m_i32Style = i32Style;
    lx_std_ui_detail::ApplyTextStyle(this, lx_std_ui_detail::LTextStyle(i32Style));
}

void LText::setDottable(bool bDottable) {
    m_bDottable = bDottable;
    updateGeometry();
    UpdateToolTip();
    update();
}

bool LText::isElided() const { return m_bDottable && !wordWrap() && getTextWidth() > width(); }

int LText::getTextWidth() const {
    const QMargins m = contentsMargins();
    return fontMetrics().horizontalAdvance(text()) + m.left() + m.right() + 2 * margin();
}

QSize LText::minimumSizeHint() const {
    QSize s = QLabel::minimumSizeHint();
    if (m_bDottable && !wordWrap())
        s.setWidth(qMin(s.width(), fontMetrics().horizontalAdvance(QStringLiteral("…")) + 2));
    return s;
}

void LText::paintEvent(QPaintEvent* e) {
    if (!isElided()) {
        QLabel::paintEvent(e);
        return;
    }
    QPainter p(this);
    const QRect r = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    p.setPen(lx_std_ui_detail::TextColor(this));
    p.drawText(r, int(alignment()), fontMetrics().elidedText(text(), Qt::ElideRight, r.width()));
}

void LText::resizeEvent(QResizeEvent* e) {
    QLabel::resizeEvent(e);
    UpdateToolTip();
}

void LText::UpdateToolTip() {
    if (m_bDottable)
        setToolTip(isElided() ? text() : QString());
}
