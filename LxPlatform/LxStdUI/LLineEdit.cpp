#include <LxStdUI/LLineEdit.h>
#include <LxStdUI/LStdControlStyle_p.h>

LLineEdit::LLineEdit(QWidget* parent) : QLineEdit(parent) {
    setMinimumHeight(32);
    setFont(LFontTokenLoader::font(QStringLiteral("body2")));
    lx_std_ui_detail::FollowTheme(this, [this] { ApplyTheme(); });
}

void LLineEdit::setErrorState(bool bError) {
    if (m_bError == bError)
        return;
    m_bError = bError;
    ApplyTheme();
    Q_EMIT errorStateChanged(bError);
}

QString LLineEdit::borderColorKey() const {
    if (m_bError)
        return QStringLiteral("ct_text_red");
    if (hasFocus() && isEnabled())
        return QStringLiteral("ct_button_primary");
    return QStringLiteral("ct_border");
}

void LLineEdit::focusInEvent(QFocusEvent* e) {
    QLineEdit::focusInEvent(e);
    ApplyTheme();
}

void LLineEdit::focusOutEvent(QFocusEvent* e) {
    QLineEdit::focusOutEvent(e);
    ApplyTheme();
}

void LLineEdit::ApplyTheme() {
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    setStyleSheet(QStringLiteral("QLineEdit { border:1px solid %1; border-radius:4px; padding:0 8px; color:%2;"
                                 " background:%3; }"
                                 "QLineEdit:disabled { color:%4; }")
                      .arg(res->colorString(borderColorKey()), res->colorString(QStringLiteral("ct_text_h1")),
                           res->colorString(QStringLiteral("ct_bg_primary")),
                           res->colorString(QStringLiteral("ct_text_h3"))));
    QPalette pal = palette();
    pal.setColor(QPalette::PlaceholderText, res->color(QStringLiteral("ct_text_h3")));
    setPalette(pal);
}
