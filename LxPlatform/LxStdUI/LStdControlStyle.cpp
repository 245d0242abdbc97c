#include <LxStdUI/LStdControlStyle_p.h>

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

namespace lx_std_ui_detail {

namespace {
constexpr int kIndicator = 16;

TextStyle Pick(const TextStyle* table, int count, int i32Style) {
    return (i32Style >= 1 && i32Style <= count) ? table[i32Style - 1] : table[0];
}
}  // namespace

TextStyle LTextStyle(int i32Style) {
    static const TextStyle s_table[] = {{"body1", "ct_text_h1"},   {"body2", "ct_text_h1"}, {"caption1", "ct_text_h1"},
                                        {"body1", "ct_text_h2"},   {"body2", "ct_text_h2"}, {"body2", "ct_text_h3"},
                                        {"caption1", "ct_text_h3"}};
    return Pick(s_table, 7, i32Style);
}

TextStyle LTitleStyle(int i32Style) {
    static const TextStyle s_table[] = {{"title1", "ct_text_h1"}, {"title2", "ct_text_h1"}, {"title3", "ct_text_h1"}};
    return Pick(s_table, 3, i32Style);
}

TextStyle LLinkStyle(int i32Style) {
    static const TextStyle s_table[] = {
        {"body1", "ct_text_link"}, {"body2", "ct_text_link"}, {"caption1", "ct_text_link"}};
    return Pick(s_table, 3, i32Style);
}

QColor Color(const char* pszKey) { return lx_ui_res::Provider::instance()->color(QString::fromLatin1(pszKey)); }

QColor TextColor(const QWidget* widget) {
    if (!widget->isEnabled())
        return Color("ct_text_h3");
    const QString key = widget->property(kColorKeyProperty).toString();
    return key.isEmpty() ? Color("ct_text_h1") : lx_ui_res::Provider::instance()->color(key);
}

void ApplyTextStyle(QWidget* widget, const TextStyle& style) {
    widget->setFont(LFontTokenLoader::font(QString::fromLatin1(style.pszFontToken)));
    QPalette pal = widget->palette();
    pal.setColor(QPalette::WindowText, Color(style.pszColorKey));
    pal.setColor(QPalette::Text, Color(style.pszColorKey));
    pal.setColor(QPalette::Disabled, QPalette::WindowText, Color("ct_text_h3"));
    pal.setColor(QPalette::Disabled, QPalette::Text, Color("ct_text_h3"));
    widget->setPalette(pal);
    widget->setProperty(kColorKeyProperty, QString::fromLatin1(style.pszColorKey));
    // The widget's own style sheet wins over a host's "QLabel { color: ... }" on an ancestor.
    if (widget->inherits("QLabel"))
        widget->setStyleSheet(
            QStringLiteral("QLabel { color:%1; } QLabel:disabled { color:%2; }")
                .arg(Color(style.pszColorKey).name(QColor::HexArgb), Color("ct_text_h3").name(QColor::HexArgb)));
    widget->updateGeometry();
    widget->update();
}

QSize IndicatorButtonSizeHint(const QAbstractButton* button, int spacing) {
    const QFontMetrics fm(button->font());
    const int text = button->text().isEmpty() ? 0 : spacing + fm.horizontalAdvance(button->text());
    return QSize(kIndicator + text + 1, qMax(kIndicator, fm.height()) + 2);
}

void PaintIndicatorButton(QAbstractButton* button, bool bRound, int spacing, bool bHover) {
    QPainter p(button);
    p.setRenderHint(QPainter::Antialiasing);
    const bool enabled = button->isEnabled();
    const bool on = button->isChecked();
    if (!enabled)
        p.setOpacity(0.4);
    const QRectF box(0.5, (button->height() - kIndicator) / 2.0 + 0.5, kIndicator - 1, kIndicator - 1);
    const QColor accent = Color("ct_button_primary");
    const QColor border = (bHover && enabled) ? accent : Color("ct_border");
    p.setPen(QPen(on ? accent : border, 1));
    p.setBrush(on ? accent : Color("ct_bg_primary"));
    if (bRound) {
        p.drawEllipse(box);
        if (on) {
            p.setPen(Qt::NoPen);
            p.setBrush(Color("ck_white"));
            p.drawEllipse(box.center(), 3.5, 3.5);
        }
    } else {
        p.drawRoundedRect(box, 3, 3);
        if (on) {
            QPainterPath tick;
            tick.moveTo(box.left() + 3.5, box.center().y());
            tick.lineTo(box.left() + 6.5, box.center().y() + 3);
            tick.lineTo(box.right() - 3, box.top() + 4.5);
            p.setPen(QPen(Color("ck_white"), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            p.setBrush(Qt::NoBrush);
            p.drawPath(tick);
        }
    }
    if (!button->text().isEmpty()) {
        p.setOpacity(1.0);
        p.setPen(TextColor(button));
        const QRect textRect(kIndicator + spacing, 0, button->width() - kIndicator - spacing, button->height());
        p.setFont(button->font());
        p.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                   button->fontMetrics().elidedText(button->text(), Qt::ElideRight, textRect.width()));
    }
}

}  // namespace lx_std_ui_detail
