#pragma once
// LLineChart: a themed line chart (drawn with Qt Charts) with a title, a legend row whose texts
// the owner may rewrite, up to two vertical scales (left and right) and a hover box.
//
// Scales are given as marks (value and text), so the owner decides what reads well: whole steps,
// units that change with the magnitude. Series colours are colour tokens of the theme resource
// provider and follow theme changes, as do the background, grid and texts.
//
// Interaction: resting the pointer on the plot shows a vertical line at the nearest sample, the
// callback's hover text in a box beside it and its scale text on the horizontal axis. The wheel
// zooms the horizontal axis (newest end kept in view), dragging pans it, a double click restores
// the full range; the callback hears of each.
//
// A series keeps at most kMaxPoints points (the newest).

#include <LxStdUI/LxStdUIExport.h>

#include <QPointF>
#include <QString>
#include <QVector>
#include <QWidget>

#include <memory>

class ILLineChartCallBack;
class LLineChartPrivate;

struct LXSTDUI_EXPORT LScaleMark {
    double dValue = 0;
    QString strText;
};

class LXSTDUI_EXPORT LLineChart : public QWidget {
    Q_OBJECT
public:
    enum Axis { LeftAxis = 0, RightAxis = 1 };
    static constexpr int kMaxPoints = 2000;

    explicit LLineChart(QWidget* parent = nullptr);
    ~LLineChart() override;

    void SetTitle(const QString& title);
    QString Title() const;

    // Returns the new series' index.
    int AddSeries(const QString& name, const QString& colorToken, Axis axis = LeftAxis);
    int SeriesCount() const;
    QString SeriesName(int i32Series) const;
    QString SeriesColorToken(int i32Series) const;
    void SetSeriesData(int i32Series, const QVector<QPointF>& points);
    QVector<QPointF> SeriesData(int i32Series) const;
    // The legend shows the series name until a text is set.
    void SetLegendText(int i32Series, const QString& text);
    QString LegendText(int i32Series) const;

    void SetVerticalScale(Axis axis, double dMin, double dMax, const QVector<LScaleMark>& marks);
    void SetHorizontalScale(double dMin, double dMax, const QVector<LScaleMark>& marks);
    QVector<LScaleMark> VerticalMarks(Axis axis) const;
    QVector<LScaleMark> HorizontalMarks() const;

    // Not owned by the chart; shared with whoever else needs it.
    void SetCallBack(std::shared_ptr<ILLineChartCallBack> callback);

    // Hover at sample `i32Index` as if the pointer rested there (-1 hides the box). Returns
    // whether a box is shown.
    bool ShowHoverAt(int i32Index);
    int HoverIndex() const;
    QString HoverText() const;
    QString HoverScaleText() const;

private:
    friend class LLineChartPrivate;
    std::unique_ptr<LLineChartPrivate> m_d;
};
