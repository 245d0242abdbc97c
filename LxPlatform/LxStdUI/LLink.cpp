#include <LxStdUI/LLink.h>
#include <LxStdUI/LStdControlStyle_p.h>

#include <QMouseEvent>
#include <QPainter>

LLink::LLink(QWidget* parent) : LLink(QString(), parent) {}

LLink::LLink(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setCursor(Qt::PointingHandCursor);
    lx_std_ui_detail::FollowTheme(this, [this] { setLinkStyle(m_i32Style); });
}

void LLink::setLinkStyle(int i32Style) {
    m_i32Style = i32Style;
    lx_std_ui_detail::ApplyTextStyle(this, lx_std_ui_detail::LLinkStyle(i32Style));
}

QSize LLink::minimumSizeHint() const {
    QSize s = QLabel::minimumSizeHint();
    s.setWidth(qMin(s.width(), fontMetrics().horizontalAdvance(QStringLiteral("…")) + 2));
    return s;
}

void LLink::paintEvent(QPaintEvent*) {
    QPainter p(this);
    QFont f = font();
    f.setUnderline(m_bHover && isEnabled());
    p.setFont(f);
    p.setPen(lx_std_ui_detail::TextColor(this));
    const QRect r = contentsRect();
    const QString shown = QFontMetrics(f).elidedText(text(), Qt::ElideRight, r.width());
    p.drawText(r, int(alignment()), shown);
    setToolTip(shown == text() ? QString() : text());
}

void LLink::enterEvent(QEvent* e) {
    m_bHover = true;
    update();
    QLabel::enterEvent(e);
}

void LLink::leaveEvent(QEvent* e) {
    m_bHover = false;
    update();
    QLabel::leaveEvent(e);
}

void LLink::mousePressEvent(QMouseEvent* e) {
    m_bPressed = e->button() == Qt::LeftButton;
    e->accept();
}

void LLink::mouseReleaseEvent(QMouseEvent* e) {
    const bool click = m_bPressed && e->button() == Qt::LeftButton && rect().contains(e->pos());
    m_bPressed = false;
    e->accept();
    if (click)
        Q_EMIT clicked();
}
