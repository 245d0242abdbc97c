#include <LxStdUI/LStdControlStyle_p.h>
#include <LxStdUI/LSwitch.h>

#include <QPainter>
#include <QVariantAnimation>

LSwitch::LSwitch(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_pAnim = new QVariantAnimation(this);
    m_pAnim->setDuration(120);
    connect(m_pAnim, &QVariantAnimation::valueChanged, this, [this](const QVariant& v) {
        m_dKnob = v.toDouble();
        update();
    });
    lx_std_ui_detail::FollowTheme(this, [this] { update(); });
}

void LSwitch::checkStateSet() {
    // Programmatic setChecked: jump, no animation.
    m_pAnim->stop();
    m_dKnob = isChecked() ? 1.0 : 0.0;
    update();
}

void LSwitch::nextCheckState() {
    QAbstractButton::nextCheckState();
    Animate();
}

void LSwitch::Animate() {
    m_pAnim->stop();
    m_pAnim->setStartValue(m_dKnob);
    m_pAnim->setEndValue(isChecked() ? 1.0 : 0.0);
    m_pAnim->start();
}

void LSwitch::paintEvent(QPaintEvent*) {
    using lx_std_ui_detail::Color;
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        p.setOpacity(0.4);
    const QSize s = sizeHint();
    const QRectF track((width() - s.width()) / 2.0, (height() - s.height()) / 2.0, s.width(), s.height());
    QColor on = Color("ct_button_primary");
    QColor off = Color("ct_border");
    if (m_bHover && isEnabled()) {
        on = on.lighter(110);
        off = off.darker(110);
    }
    // Blend the two track colours with the knob so the colour moves with it.
    auto mix = [](int a, int b, double t) { return int(a + (b - a) * t); };
    const QColor trackColor(mix(off.red(), on.red(), m_dKnob), mix(off.green(), on.green(), m_dKnob),
                            mix(off.blue(), on.blue(), m_dKnob));
    p.setPen(Qt::NoPen);
    p.setBrush(trackColor);
    p.drawRoundedRect(track, track.height() / 2, track.height() / 2);
    const double d = track.height() - 4;
    const double x = track.left() + 2 + (track.width() - 4 - d) * m_dKnob;
    p.setBrush(Color("ck_white"));
    p.drawEllipse(QRectF(x, track.top() + 2, d, d));
}

void LSwitch::enterEvent(QEvent* e) {
    m_bHover = true;
    update();
    QAbstractButton::enterEvent(e);
}

void LSwitch::leaveEvent(QEvent* e) {
    m_bHover = false;
    update();
    QAbstractButton::leaveEvent(e);
}
