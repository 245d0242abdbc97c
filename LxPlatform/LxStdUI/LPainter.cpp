#include <LxStdUI/LPainter.h>

#include <QPainter>
#include <QPainterPath>

namespace lx_std_ui {

void LPainter::drawLine(const QPointF& from, const QPointF& to, const QColor& color, double width) {
    if (!m_pPainter)
        return;
    m_pPainter->save();
    m_pPainter->setPen(QPen(color, width));
    m_pPainter->drawLine(from, to);
    m_pPainter->restore();
}

void LPainter::drawRoundedRect(const QRectF& r, const std::array<QSizeF, 4>& radii, const std::array<QColor, 4>& colors,
                               const std::array<double, 4>& widths, const std::array<int, 4>& styles) {
    if (!m_pPainter)
        return;
    enum { TL, TR, BL, BR };
    enum { SideLeft, SideTop, SideRight, SideBottom };
    auto rad = [&](int c) {
        return QSizeF(qBound(0.0, radii[size_t(c)].width(), r.width() / 2),
                      qBound(0.0, radii[size_t(c)].height(), r.height() / 2));
    };
    // Each side: its straight part, then the arc of the corner it runs into (clockwise).
    QPainterPath paths[4];
    {
        QPainterPath& p = paths[SideTop];
        p.moveTo(r.left() + rad(TL).width(), r.top());
        p.lineTo(r.right() - rad(TR).width(), r.top());
        const QSizeF c = rad(TR);
        p.arcTo(QRectF(r.right() - 2 * c.width(), r.top(), 2 * c.width(), 2 * c.height()), 90, -90);
    }
    {
        QPainterPath& p = paths[SideRight];
        p.moveTo(r.right(), r.top() + rad(TR).height());
        p.lineTo(r.right(), r.bottom() - rad(BR).height());
        const QSizeF c = rad(BR);
        p.arcTo(QRectF(r.right() - 2 * c.width(), r.bottom() - 2 * c.height(), 2 * c.width(), 2 * c.height()), 0, -90);
    }
    {
        QPainterPath& p = paths[SideBottom];
        p.moveTo(r.right() - rad(BR).width(), r.bottom());
        p.lineTo(r.left() + rad(BL).width(), r.bottom());
        const QSizeF c = rad(BL);
        p.arcTo(QRectF(r.left(), r.bottom() - 2 * c.height(), 2 * c.width(), 2 * c.height()), 270, -90);
    }
    {
        QPainterPath& p = paths[SideLeft];
        p.moveTo(r.left(), r.bottom() - rad(BL).height());
        p.lineTo(r.left(), r.top() + rad(TL).height());
        const QSizeF c = rad(TL);
        p.arcTo(QRectF(r.left(), r.top(), 2 * c.width(), 2 * c.height()), 180, -90);
    }
    m_pPainter->save();
    m_pPainter->setBrush(Qt::NoBrush);
    for (int side = 0; side < 4; ++side) {
        if (widths[size_t(side)] <= 0 || styles[size_t(side)] == 0)
            continue;
        QPen pen(colors[size_t(side)], widths[size_t(side)]);
        pen.setStyle(styles[size_t(side)] == 1 ? Qt::DashLine : Qt::SolidLine);
        pen.setCapStyle(Qt::FlatCap);
        m_pPainter->setPen(pen);
        m_pPainter->drawPath(paths[side]);
    }
    m_pPainter->restore();
}

}  // namespace lx_std_ui
