#pragma once
// ILLineChartCallBack: what a line chart asks its owner and tells it. Every function has an empty
// default, so an owner overrides only what it needs (usually the two hover texts).

#include <LxStdUI/LxStdUIExport.h>
#include <QString>

class LLineChart;
class QMouseEvent;

class LXSTDUI_EXPORT ILLineChartCallBack {
public:
    virtual ~ILLineChartCallBack();

    // Rich text of the hover box for sample `i32Index` (an index into the series' points, all
    // series sharing one abscissa) at abscissa `dX`. Empty: no box.
    virtual QString GetHoverText(LLineChart* pChart, int i32Index, double dX);
    // Text shown on the horizontal axis under the pointer (the abscissa `dX`). Empty: none.
    virtual QString GetHoverScaleText(LLineChart* pChart, double dX);

    virtual void OnDrag(LLineChart* pChart, double dDeltaX);
    virtual void OnZoom(LLineChart* pChart, double dFactor);
    virtual void OnVisibleRangeChanged(LLineChart* pChart, double dMinX, double dMaxX);
    virtual void OnMousePress(LLineChart* pChart, QMouseEvent* pEvent);
    virtual void OnMouseRelease(LLineChart* pChart, QMouseEvent* pEvent);
};
