#pragma once
// The performance monitor's shared chart data and its four hover callbacks.
#include <LxBusiness/AppListenerManager.h>
#include <LxStdUI/ILLineChartCallBack.h>

#include <QPointF>
#include <QVector>

#include <memory>

// The newest information set and the series data derived from it, shared by the window and the
// chart callbacks (which read it when the pointer rests on a chart).
class CAppChartContext {
public:
    enum Series {
        Memory,
        Cpu,
        IoReadTimes,
        IoWriteTimes,
        IoReadBytes,
        IoWriteBytes,
        NetRecv,
        NetSent,
        Widgets,
        Objects,
        TotalObjects,
        SeriesCount
    };

    void SetAppInformationSet(const CAppInformationSet& set);
    std::shared_ptr<const CAppInformationSet> AppInformationSet() const { return m_pSet; }
    const QVector<QPointF>& Data(Series s) const { return m_vecData[s]; }
    // The sample behind point `i32Index` of the series (null when out of range).
    const CAppInformation* Sample(int i32Index) const;
    double Seconds(const CAppInformation& info) const;

private:
    std::shared_ptr<const CAppInformationSet> m_pSet = std::make_shared<CAppInformationSet>();
    QVector<QPointF> m_vecData[SeriesCount];
};

// Common part: the "时间:" line and the time text of the axis.
class CAppLineChartCallBackBase : public ILLineChartCallBack {
public:
    explicit CAppLineChartCallBackBase(std::shared_ptr<CAppChartContext> context) : m_pContext(std::move(context)) {}
    QString GetHoverScaleText(LLineChart* pChart, double dX) override;

protected:
    // "时间:hh:mm:ss:zzz" then the lines, each in its series' colour.
    QString Compose(LLineChart* pChart, const CAppInformation& info, const QStringList& lines) const;
    std::shared_ptr<CAppChartContext> m_pContext;
};

class CAppPerformancLineChartCallBack : public CAppLineChartCallBackBase {
public:
    using CAppLineChartCallBackBase::CAppLineChartCallBackBase;
    QString GetHoverText(LLineChart* pChart, int i32Index, double dX) override;
};

class CAppIOLineChartCallBack : public CAppLineChartCallBackBase {
public:
    using CAppLineChartCallBackBase::CAppLineChartCallBackBase;
    QString GetHoverText(LLineChart* pChart, int i32Index, double dX) override;
};

class CAppNetLineChartCallBack : public CAppLineChartCallBackBase {
public:
    using CAppLineChartCallBackBase::CAppLineChartCallBackBase;
    QString GetHoverText(LLineChart* pChart, int i32Index, double dX) override;
};

class CAppObjectLineChartCallBack : public CAppLineChartCallBackBase {
public:
    using CAppLineChartCallBackBase::CAppLineChartCallBackBase;
    QString GetHoverText(LLineChart* pChart, int i32Index, double dX) override;
};
