#include <LxStdUI/LIconButton.h>

#include <LxStdUI/LxStdUILog_p.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/SvgIconRenderer.h>
#include <LxStdUI/ThemeManager.h>

#include <QPainter>

LIconButton::LIconButton(QWidget* parent) : QAbstractButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    LXSTDUI_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { update(); });
}

LIconButton::LIconButton(const QString& iconPath, QWidget* parent) : LIconButton(parent) { setIconPath(iconPath); }

void LIconButton::setIconPath(const QString& path) {
    if (m_strIconPath == path)
        return;
    m_strIconPath = path;
    if (!path.isEmpty() && !lx_ui_res::SvgIconRenderer::get(path))
        LXSTDUI_LOG_WARN("LIconButton: no SVG icon at {}", path);
    update();
}

void LIconButton::setIconSize(const QSize& size) {
    m_iconSize = size;
    updateGeometry();
    update();
}

void LIconButton::setRotate(int i32Degrees) {
    i32Degrees %= 360;
    if (i32Degrees < 0)
        i32Degrees += 360;
    if (m_i32Rotate == i32Degrees)
        return;
    m_i32Rotate = i32Degrees;
    update();
}

void LIconButton::setHoverBackgroundEnabled(bool bEnabled) {
    m_bHoverBackground = bEnabled;
    update();
}

void LIconButton::setHoverBackgroundRadius(int i32Radius) {
    m_i32HoverRadius = qMax(0, i32Radius);
    update();
}

bool LIconButton::isShowingHoverBackground() const { return m_bHoverBackground && m_bHovered && isEnabled(); }

QSize LIconButton::sizeHint() const { return m_iconSize + QSize(8, 8); }

void LIconButton::enterEvent(QEvent* event) {
    m_bHovered = true;
    update();
    QAbstractButton::enterEvent(event);
}

void LIconButton::leaveEvent(QEvent* event) {
    m_bHovered = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void LIconButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (isShowingHoverBackground()) {
        QColor bg = lx_ui_res::Provider::instance()->color(QStringLiteral("ct_bg_hover"));
        if (!bg.isValid())
            bg = QColor(0, 0, 0, 20);
        if (isDown())
            bg = bg.darker(115);
        painter.setPen(Qt::NoPen);
        painter.setBrush(bg);
        painter.drawRoundedRect(QRectF(rect()), m_i32HoverRadius, m_i32HoverRadius);
    }
    const auto renderer = lx_ui_res::SvgIconRenderer::get(m_strIconPath);
    if (!renderer)
        return;
    lx_ui_res::SvgIconRenderer::State state = lx_ui_res::SvgIconRenderer::Normal;
    if (!isEnabled())
        state = lx_ui_res::SvgIconRenderer::Disabled;
    else if (isDown())
        state = lx_ui_res::SvgIconRenderer::Pressed;
    else if (m_bHovered)
        state = lx_ui_res::SvgIconRenderer::Hover;
    const QSizeF icon = QSizeF(m_iconSize.boundedTo(size()));
    const QPointF centre = QRectF(rect()).center();
    painter.translate(centre);
    if (m_i32Rotate != 0)
        painter.rotate(m_i32Rotate);
    renderer->render(&painter, QRectF(QPointF(-icon.width() / 2, -icon.height() / 2), icon), state);
}
