#pragma once
// LLink: a clickable text in the link colour ("ct_text_link", following the theme). Underlined
// while hovered, pointing-hand cursor, grey and inert while disabled. clicked() fires on a left
// release inside the link that began with a press inside it. Too narrow for its text (for example
// under a maximum width), it cuts the text with an ellipsis and shows the whole text as tool tip.
// Link styles 1..3: large, standard, small.

#include <LxStdUI/LxStdUIExport.h>
#include <QLabel>

class LXSTDUI_EXPORT LLink : public QLabel {
    Q_OBJECT
public:
    explicit LLink(QWidget* parent = nullptr);
    explicit LLink(const QString& text, QWidget* parent = nullptr);

    void setLinkStyle(int i32Style);
    int linkStyle() const { return m_i32Style; }
    bool isHovered() const { return m_bHover; }
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void clicked();

protected:
    void paintEvent(QPaintEvent* e) override;
    void enterEvent(QEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    int m_i32Style = 2;
    bool m_bHover = false;
    bool m_bPressed = false;
};
