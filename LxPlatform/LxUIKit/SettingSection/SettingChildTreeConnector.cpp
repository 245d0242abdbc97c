#include <LxStdUI/LPainter.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/SettingSection/SettingChildTreeConnector.h>

#include <QPainter>

CSettingChildTreeConnector::CSettingChildTreeConnector(SettingChildTreeLineRole role, QWidget* parent)
    : QWidget(parent), m_enRole(role) {
    setFixedSize(28, 36);
    setAttribute(Qt::WA_TransparentForMouseEvents, true);
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { update(); });
}

void CSettingChildTreeConnector::SetLineRole(SettingChildTreeLineRole role) {
    if (role == m_enRole)
        return;
    m_enRole = role;
    update();
}

QSize CSettingChildTreeConnector::sizeHint() const { return QSize(28, height() > 0 ? height() : 36); }

void CSettingChildTreeConnector::paintEvent(QPaintEvent* e) {
    QWidget::paintEvent(e);
    if (m_enRole == LineNone)
        return;
    const int h = height();
    const int m = h / 2;
    std::shared_ptr<const QColor> pColor;
    lx_ui_res::Provider::instance()->get(pColor, QStringLiteral("ct_line_separator"));
    const QColor color = pColor ? *pColor : QColor();
    QPainter qp(this);
    qp.setClipRect(rect());
    lx_std_ui::LPainter painter(&qp);
    switch (m_enRole) {
    case LineBranch:
        painter.drawLine(QPointF(8, 0), QPointF(8, h), color, 1);
        painter.drawLine(QPointF(8, m), QPointF(20, m), color, 1);
        break;
    case LineLast:
        painter.drawLine(QPointF(8, 0), QPointF(8, m - 1), color, 1);
        painter.drawRoundedRect(QRectF(QPointF(8, 0), QPointF(20, m)),
                                {QSizeF(0, 0), QSizeF(0, 0), QSizeF(2, 2), QSizeF(0, 0)}, {color, color, color, color},
                                {0, 0, 0, 1}, {2, 2, 2, 2});
        break;
    default: LXUIKIT_ASSERT_TEXT(false, "CSettingChildTreeConnector unexpected role"); break;
    }
}
