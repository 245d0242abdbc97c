#pragma once
// lx_std_ui::LPainter: drawing helpers over a QPainter that Qt lacks. drawRoundedRect draws a
// rectangle whose four corners have their own radii and whose four sides have their own colour,
// width and style, so one call draws an open frame, an underline with a rounded end, or a tree
// elbow.
//
// Orders: corners top-left, top-right, bottom-left, bottom-right; sides left, top, right, bottom.
// Going round clockwise, each side is drawn together with the rounded corner it runs into (top ->
// top-right, right -> bottom-right, bottom -> bottom-left, left -> top-left). Styles: 0 none,
// 1 dashed, 2 solid. A side of width 0 or style 0 is not drawn. The rectangle is not filled.

#include <LxStdUI/LxStdUIExport.h>

#include <QColor>
#include <QRectF>
#include <QSizeF>

#include <array>

class QPainter;

namespace lx_std_ui {

class LXSTDUI_EXPORT LPainter {
public:
    explicit LPainter(QPainter* painter) : m_pPainter(painter) {}

    void drawRoundedRect(const QRectF& rect, const std::array<QSizeF, 4>& radii, const std::array<QColor, 4>& colors,
                         const std::array<double, 4>& widths, const std::array<int, 4>& styles);
    void drawLine(const QPointF& from, const QPointF& to, const QColor& color, double width = 1.0);

    QPainter* painter() const { return m_pPainter; }

private:
    QPainter* m_pPainter;
};

}  // namespace lx_std_ui
