#pragma once
// LIconButton: a flat button that shows one SVG icon (lx_ui_res::SvgIconRenderer path), centred
// at its icon size, following the theme.
//
// - Rotation: setRotate(degrees) turns the icon about its centre (spinners turn it a step per
//   timer tick); the button's size never changes.
// - Hover background: when enabled, a rounded rectangle in the theme colour "ct_bg_hover" is drawn
//   behind the icon while the mouse is over the button (and a little darker while pressed).
// - Disabled buttons draw the icon's disabled look and never show the hover background.
// Without an icon path (or with a path that names no SVG) the button paints only its background.

#include <LxStdUI/LxStdUIExport.h>
#include <QAbstractButton>

class LXSTDUI_EXPORT LIconButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit LIconButton(QWidget* parent = nullptr);
    LIconButton(const QString& iconPath, QWidget* parent = nullptr);

    void setIconPath(const QString& path);
    QString iconPath() const { return m_strIconPath; }
    void setIconSize(const QSize& size);  // default 24 x 24
    QSize iconSize() const { return m_iconSize; }

    void setRotate(int i32Degrees);
    int rotate() const { return m_i32Rotate; }

    void setHoverBackgroundEnabled(bool bEnabled);
    bool isHoverBackgroundEnabled() const { return m_bHoverBackground; }
    void setHoverBackgroundRadius(int i32Radius);
    // True while the hover background is drawn (mouse over an enabled button with it enabled).
    bool isShowingHoverBackground() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QString m_strIconPath;
    QSize m_iconSize{24, 24};
    int m_i32Rotate = 0;
    bool m_bHoverBackground = false;
    int m_i32HoverRadius = 4;
    bool m_bHovered = false;
};
