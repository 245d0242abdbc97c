#pragma once
// LCheck: a check box: a 16-pixel rounded square, filled with the accent colour and ticked when checked. The border
// takes the accent colour while hovered; disabled, the whole control is faded. Text in the primary text colour,
// `spacing` pixels after the indicator (8 by default). Colours follow the theme.

#include <LxStdUI/LxStdUIExport.h>
#include <QCheckBox>

class LXSTDUI_EXPORT LCheck : public QCheckBox {
    Q_OBJECT
public:
    explicit LCheck(QWidget* parent = nullptr);
    explicit LCheck(const QString& text, QWidget* parent = nullptr);

    void setSpacing(int i32Spacing);
    int spacing() const { return m_i32Spacing; }
    bool isHovered() const { return m_bHover; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* e) override;
    bool hitButton(const QPoint& pos) const override { return rect().contains(pos); }
    void enterEvent(QEvent* e) override;
    void leaveEvent(QEvent* e) override;

private:
    int m_i32Spacing = 8;
    bool m_bHover = false;
};
