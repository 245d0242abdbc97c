#pragma once
// CLogStatisticsDialog ("日志统计信息"): how much each log level, each module and each call site
// has logged, from the core's per-call-site statistics: a level pie chart, a module pie chart and a
// sortable table of call sites (numeric sorting on the line and count columns).
//
// Choices made here: the module chart has one slice per module that logged (the core knows them;
// no fixed list is configured), and levels or modules without records get no visible slice.

#include <LxCore/FrameWork.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QColor>
#include <QDialog>
#include <QPointer>
#include <QVector>

class QTableWidget;
namespace QtCharts {
class QChartView;
class QPieSeries;
}  // namespace QtCharts

class LXUIKIT_EXPORT CLogStatisticsDialog : public QDialog {
    Q_OBJECT
public:
    explicit CLogStatisticsDialog(QWidget* parent = nullptr);

    void SetData(const FrameWork::LogStatisticsContext& context);

    // n distinct, well separated colours in a shuffled order.
    static QVector<QColor> GetRandColorList(int n);
    // Slice name of a level code ("Error", "Waning", ...); empty for an unknown code.
    static QString LevelSliceName(int level);

    QTableWidget* table() const;
    QtCharts::QPieSeries* levelSeries() const { return m_pLevelSeries; }
    QtCharts::QPieSeries* moduleSeries() const { return m_pModuleSeries; }

private:
    QPointer<QTableWidget> m_pTable;
    QtCharts::QChartView* m_pLevelView = nullptr;
    QtCharts::QChartView* m_pModuleView = nullptr;
    QtCharts::QPieSeries* m_pLevelSeries = nullptr;
    QtCharts::QPieSeries* m_pModuleSeries = nullptr;
};
