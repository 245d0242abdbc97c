#pragma once
// CPerformanceMonitorWnd: the developer tools' live resource monitor. Four line charts fed by the
// business runtime's application listener (one sample a second by default): memory and CPU, IO,
// network, Qt objects; running totals below them; buttons for the IO table ("显示记录"), the
// object table ("对象池") and the card-creation timings ("查看业务看片创建性能数据").
//
// Units charted: memory in MB (MiB) on the left scale with CPU in % on the right; IO calls per
// sample on the left ("次") with IO bytes per sample on the right ("字节", shown as B/KB/MB/GB as
// they grow); network in kb/s (KiB/s; mb/s, gb/s as they grow); object counts (K, M as they grow).
// The horizontal axis is seconds since the listener's first sample; all samples the listener
// keeps are charted (ten minutes at the default rate).
//
// Scale rules (GetScaleData): the range from 0 (or the smallest value when negative) to the
// largest is cut into about four steps of 1, 2 or 5 times a power of ten, in the unit the largest
// value calls for; the axis runs from a whole step below to a whole step above, every mark is a
// whole step and carries as many decimals as the step needs. An empty or flat range gets one step
// of 1 unit. The time axis uses steps of 1, 2, 5, 10, 15, 30 s, 1, 2, 5, 10 min (at most six marks).

#include <LxUIKit/LxUIKitExport.h>

#include <LxStdUI/LLineChart.h>

#include <QPointer>
#include <QWidget>

#include <memory>

class QLabel;
class QPushButton;
class CAppChartContext;

struct LXUIKIT_EXPORT CScaleData {
    double dMin = 0;
    double dMax = 1;
    QVector<LScaleMark> marks;  // values in the data's own unit, texts in the unit chosen
};

class LXUIKIT_EXPORT CPerformanceMonitorWnd : public QWidget {
    Q_OBJECT
public:
    explicit CPerformanceMonitorWnd(QWidget* parent = nullptr);
    ~CPerformanceMonitorWnd() override;

    // Refreshes every chart, legend and label from the chart context's latest set.
    void UpdateData();
    // Vertical scale for values in [dMin, dMax] of `unit`: "MB", "%", "次", "字节" (bytes), "kb/s",
    // or "" for plain counts.
    static CScaleData GetScaleData(double dMin, double dMax, const QString& unit);
    // Time scale for [0, dSeconds].
    static CScaleData GetTimeScaleData(double dSeconds);

    std::shared_ptr<CAppChartContext> ChartContext() const { return m_pContext; }
    LLineChart* Chart(int i32Index) const;  // 0 memory/CPU, 1 IO, 2 network, 3 objects
    QLabel* TotalsLabel(int i32Index) const;

private:
    void InitUi();
    void InitLoopEvent();
    void UpdateCoordinateScale();
    void UpdateAbscissaScale();

    std::shared_ptr<CAppChartContext> m_pContext;
    QPointer<LLineChart> m_pCharts[4];
    QPointer<QLabel> m_pNetTotals[2];
    QPointer<QLabel> m_pTotals[6];
    int m_i32Subscription = 0;
};
