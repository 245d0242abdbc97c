#pragma once
// LText: the standard text label. A text style (1..7, see below) picks the font token and the
// colour token; colours follow the theme. With setDottable(true) a text wider than the label is
// cut with an ellipsis (and the full text becomes the tool tip), so a label may be given a maximum
// width without ever wrapping or overflowing.
//
// Styles: 1 body primary, 2 small body primary, 3 caption primary, 4 body secondary, 5 small body
// secondary, 6 description (small, tertiary colour: settings rows, explanations), 7 caption hint.

#include <LxStdUI/LxStdUIExport.h>
#include <QLabel>

class LXSTDUI_EXPORT LText : public QLabel {
    Q_OBJECT
public:
    explicit LText(QWidget* parent = nullptr);
    explicit LText(const QString& text, QWidget* parent = nullptr);

    void setTextStyle(int i32Style);
    int textStyle() const { return m_i32Style; }

    void setDottable(bool bDottable);
    bool isDottable() const { return m_bDottable; }
    // True while the shown text is cut (dottable and too wide).
    bool isElided() const;

    // Width of the whole text in the label's font, margins included.
    int getTextWidth() const;

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    void UpdateToolTip();

    int m_i32Style = 1;
    bool m_bDottable = false;
};
