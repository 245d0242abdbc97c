#include <LxStdUI/LComboBox.h>
#include <LxStdUI/LStdControlStyle_p.h>

#include <QAbstractItemView>
#include <QPainter>

LComboBox::LComboBox(QWidget* parent) : QComboBox(parent) {
    setMinimumHeight(32);
    setFont(LFontTokenLoader::font(QStringLiteral("body2")));
    lx_std_ui_detail::FollowTheme(this, [this] { ApplyTheme(); });
}

void LComboBox::ApplyTheme() {
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    // The selector names the class and its subclasses alike (settings pickers derive from it).
    setStyleSheet(
        QStringLiteral("QComboBox { border:1px solid %1; border-radius:4px; padding:0 8px; color:%2;"
                       " background:%3; }"
                       "QComboBox:hover, QComboBox:on { border-color:%4; }"
                       "QComboBox:disabled { color:%5; border-color:%1; }"
                       "QComboBox::drop-down { border:none; width:20px; }"
                       "QComboBox QAbstractItemView { border:1px solid %1; color:%2; background:%3;"
                       " selection-background-color:%6; selection-color:%2; outline:none; }")
            .arg(res->colorString(QStringLiteral("ct_border")), res->colorString(QStringLiteral("ct_text_h1")),
                 res->colorString(QStringLiteral("ct_bg_primary")),
                 res->colorString(QStringLiteral("ct_button_primary")), res->colorString(QStringLiteral("ct_text_h3")),
                 res->colorString(QStringLiteral("ct_bg_hover"))));
}

void LComboBox::paintEvent(QPaintEvent* e) {
    QComboBox::paintEvent(e);
    // The style sheet leaves the drop-down area empty: draw the chevron ourselves.
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(isEnabled() ? lx_std_ui_detail::Color("ct_text_h2") : lx_std_ui_detail::Color("ct_text_h3"), 1.5,
                  Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF c(width() - 12.5, height() / 2.0);
    const QPointF pts[] = {c + QPointF(-4, -2), c + QPointF(0, 2), c + QPointF(4, -2)};
    p.drawPolyline(pts, 3);
}
