#include <LxStdUI/LLineChart.h>

#include <LxStdUI/ILLineChartCallBack.h>
#include <LxStdUI/LxStdUILog_p.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QGraphicsLayout>
#include <QGraphicsLineItem>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>

#include <algorithm>
#include <cmath>

QT_CHARTS_USE_NAMESPACE

ILLineChartCallBack::~ILLineChartCallBack() = default;
QString ILLineChartCallBack::GetHoverText(LLineChart*, int, double) { return QString(); }
QString ILLineChartCallBack::GetHoverScaleText(LLineChart*, double) { return QString(); }
void ILLineChartCallBack::OnDrag(LLineChart*, double) {}
void ILLineChartCallBack::OnZoom(LLineChart*, double) {}
void ILLineChartCallBack::OnVisibleRangeChanged(LLineChart*, double, double) {}
void ILLineChartCallBack::OnMousePress(LLineChart*, QMouseEvent*) {}
void ILLineChartCallBack::OnMouseRelease(LLineChart*, QMouseEvent*) {}

namespace {

// Mouse handling of the plot: everything is forwarded to the chart's private part.
class ChartView : public QChartView {
public:
    ChartView(QChart* chart, QWidget* parent, LLineChartPrivate* d) : QChartView(chart, parent), m_d(d) {
        setMouseTracking(true);
        setRenderHint(QPainter::Antialiasing);
        setFrameShape(QFrame::NoFrame);
    }

protected:
    void mouseMoveEvent(QMouseEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    LLineChartPrivate* m_d;
};

void ReplaceMarks(QCategoryAxis* axis, double dMin, double dMax, const QVector<LScaleMark>& marks) {
    const QStringList old = axis->categoriesLabels();
    for (const QString& label : old)
        axis->remove(label);
    axis->setStartValue(dMin);
    QStringList seen;
    double last = dMin - 1;
    for (const LScaleMark& m : marks) {
        // Labels are keys of the axis and end values must grow: skip what would break either.
        if (seen.contains(m.strText) || m.dValue <= last)
            continue;
        seen << m.strText;
        last = m.dValue;
        axis->append(m.strText, m.dValue);
    }
    axis->setRange(dMin, dMax > dMin ? dMax : dMin + 1);
    // Longer labels need a wider label column: the chart sizes it only when laid out again.
    if (QChart* chart = qobject_cast<QChart*>(axis->parent()))
        if (chart->layout())
            chart->layout()->invalidate();
}

}  // namespace

class LLineChartPrivate {
public:
    struct Series {
        QString strName;
        QString strColorToken;
        LLineChart::Axis enAxis;
        QLineSeries* pSeries;
        QString strLegend;
        QVector<QPointF> points;
    };

    LLineChart* q = nullptr;
    QChart* pChart = nullptr;
    ChartView* pView = nullptr;
    QPointer<QLabel> pTitle;
    QPointer<QLabel> pLegend;  // every series' marker and text, wrapping when narrow
    QCategoryAxis* pAxisX = nullptr;
    QCategoryAxis* pAxisY[2] = {nullptr, nullptr};
    bool bAxisAttached[2] = {false, false};
    QVector<LScaleMark> vecMarksX;
    QVector<LScaleMark> vecMarksY[2];
    double dMinX = 0, dMaxX = 1;
    double dZoom = 1.0;  // >= 1: the visible share of the full horizontal range is 1 / zoom
    double dPanX = 0;    // <= 0: how far the visible window sits left of the newest end
    double dVisibleMin = 0, dVisibleMax = 1;
    std::vector<Series> vecSeries;
    std::shared_ptr<ILLineChartCallBack> pCallBack;
    QGraphicsLineItem* pHoverLine = nullptr;
    QPointer<QLabel> pHoverBox;
    QPointer<QLabel> pHoverScale;
    int i32HoverIndex = -1;
    bool bDragging = false;
    QPoint dragLast;

    void ApplyTheme();
    void UpdateLegend();
    void ApplyHorizontalRange();
    int NearestIndex(double x) const;
    void HoverAtPosition(const QPoint& pos);
    bool HoverAt(int index);
    void HideHover();
    double ValueAt(const QPoint& pos) const {
        return pChart->mapToValue(pView->mapToScene(pos), vecSeries.empty() ? nullptr : vecSeries[0].pSeries).x();
    }
};

void ChartView::mouseMoveEvent(QMouseEvent* e) {
    if (m_d->bDragging) {
        // Both ends read on the current axis, before the range moves under the pointer.
        const double delta = m_d->ValueAt(m_d->dragLast) - m_d->ValueAt(e->pos());
        m_d->dragLast = e->pos();
        if (delta != 0) {
            m_d->dPanX = std::min(0.0, m_d->dPanX + delta);
            m_d->ApplyHorizontalRange();
            if (m_d->pCallBack)
                m_d->pCallBack->OnDrag(m_d->q, delta);
        }
    }
    m_d->HoverAtPosition(e->pos());
    QChartView::mouseMoveEvent(e);
}

void ChartView::leaveEvent(QEvent* e) {
    m_d->HideHover();
    QChartView::leaveEvent(e);
}

void ChartView::wheelEvent(QWheelEvent* e) {
    const double factor = e->angleDelta().y() > 0 ? 1.25 : 0.8;
    const double zoom = std::min(64.0, std::max(1.0, m_d->dZoom * factor));
    if (zoom != m_d->dZoom) {
        m_d->dZoom = zoom;
        m_d->ApplyHorizontalRange();
        if (m_d->pCallBack)
            m_d->pCallBack->OnZoom(m_d->q, factor);
    }
    e->accept();
}

void ChartView::mousePressEvent(QMouseEvent* e) {
    if (e->button() == Qt::LeftButton) {
        m_d->bDragging = true;
        m_d->dragLast = e->pos();
    }
    if (m_d->pCallBack)
        m_d->pCallBack->OnMousePress(m_d->q, e);
    QChartView::mousePressEvent(e);
}

void ChartView::mouseReleaseEvent(QMouseEvent* e) {
    m_d->bDragging = false;
    if (m_d->pCallBack)
        m_d->pCallBack->OnMouseRelease(m_d->q, e);
    QChartView::mouseReleaseEvent(e);
}

void ChartView::mouseDoubleClickEvent(QMouseEvent* e) {
    m_d->dZoom = 1.0;
    m_d->dPanX = 0;
    m_d->ApplyHorizontalRange();
    QChartView::mouseDoubleClickEvent(e);
}

void ChartView::resizeEvent(QResizeEvent* e) {
    QChartView::resizeEvent(e);
    if (m_d->i32HoverIndex >= 0)
        m_d->HoverAt(m_d->i32HoverIndex);
}

void LLineChartPrivate::ApplyTheme() {
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    const QColor bg = res->color(QStringLiteral("ct_bg_primary"));
    const QColor text = res->color(QStringLiteral("ct_text_h3"));
    const QColor grid = res->color(QStringLiteral("ct_line_separator"));
    pChart->setBackgroundBrush(bg);
    pView->setBackgroundBrush(bg);
    q->setStyleSheet(QStringLiteral("LLineChart{background:%1;}").arg(bg.name()));
    q->setAttribute(Qt::WA_StyledBackground);
    for (QCategoryAxis* axis : {pAxisX, pAxisY[0], pAxisY[1]}) {
        axis->setLabelsColor(text);
        axis->setGridLineColor(grid);
        axis->setLinePenColor(grid);
    }
    if (pTitle)
        pTitle->setStyleSheet(QStringLiteral("color:%1;font-weight:bold;").arg(res->colorString("ct_text_h1")));
    for (size_t i = 0; i < vecSeries.size(); ++i) {
        QPen pen(res->color(vecSeries[i].strColorToken));
        pen.setWidthF(1.5);
        vecSeries[i].pSeries->setPen(pen);
    }
    UpdateLegend();
    if (pHoverLine)
        pHoverLine->setPen(QPen(text, 1, Qt::DashLine));
    const QString box =
        QStringLiteral("QLabel{background:%1;color:%2;border:1px solid %3;border-radius:4px;padding:6px;}")
            .arg(res->colorString("ct_bg_secondary"), res->colorString("ct_text_h1"), res->colorString("ct_border"));
    if (pHoverBox)
        pHoverBox->setStyleSheet(box);
    if (pHoverScale)
        pHoverScale->setStyleSheet(box);
    if (i32HoverIndex >= 0)
        HoverAt(i32HoverIndex);  // the callback's text carries theme colours too
}

void LLineChartPrivate::UpdateLegend() {
    if (!pLegend)
        return;
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    QStringList items;
    for (const Series& s : vecSeries)
        items << QStringLiteral("<span style=\"color:%1\">&#9632;</span>&nbsp;<span style=\"color:%2\">%3</span>")
                     .arg(res->colorString(s.strColorToken), res->colorString("ct_text_h2"),
                          s.strLegend.toHtmlEscaped().replace(QLatin1Char(' '), QStringLiteral("&nbsp;")));
    pLegend->setText(items.join(QStringLiteral(" &nbsp; ")));
}

void LLineChartPrivate::ApplyHorizontalRange() {
    const double full = std::max(1e-9, dMaxX - dMinX);
    const double width = full / dZoom;
    dPanX = std::max(dPanX, -(full - width));
    const double vmax = dMaxX + dPanX;
    const double vmin = vmax - width;
    ReplaceMarks(pAxisX, dMinX, dMaxX, vecMarksX);
    pAxisX->setRange(vmin, vmax);
    if (vmin != dVisibleMin || vmax != dVisibleMax) {
        dVisibleMin = vmin;
        dVisibleMax = vmax;
        if (pCallBack)
            pCallBack->OnVisibleRangeChanged(q, vmin, vmax);
    }
}

int LLineChartPrivate::NearestIndex(double x) const {
    for (const Series& s : vecSeries) {
        if (s.points.isEmpty())
            continue;
        auto it =
            std::lower_bound(s.points.begin(), s.points.end(), x, [](const QPointF& p, double v) { return p.x() < v; });
        int i = int(it - s.points.begin());
        if (i >= s.points.size())
            i = s.points.size() - 1;
        if (i > 0 && std::abs(s.points[i - 1].x() - x) <= std::abs(s.points[i].x() - x))
            --i;
        return i;
    }
    return -1;
}

void LLineChartPrivate::HoverAtPosition(const QPoint& pos) {
    const QPointF scene = pView->mapToScene(pos);
    if (!pChart->plotArea().contains(pChart->mapFromScene(scene))) {
        HideHover();
        return;
    }
    HoverAt(NearestIndex(ValueAt(pos)));
}

bool LLineChartPrivate::HoverAt(int index) {
    const Series* base = nullptr;
    for (const Series& s : vecSeries)
        if (!s.points.isEmpty()) {
            base = &s;
            break;
        }
    if (!base || index < 0 || index >= base->points.size()) {
        HideHover();
        return false;
    }
    i32HoverIndex = index;
    const double x = base->points[index].x();
    const QString text = pCallBack ? pCallBack->GetHoverText(q, index, x) : QString();
    const QString scale = pCallBack ? pCallBack->GetHoverScaleText(q, x) : QString();
    const QRectF plot = pChart->plotArea();
    const QPointF at = pChart->mapToPosition(QPointF(x, 0), base->pSeries);
    const double px = std::min(plot.right(), std::max(plot.left(), at.x()));
    if (!pHoverLine) {
        pHoverLine = new QGraphicsLineItem(pChart);
        pHoverLine->setZValue(100);
    }
    pHoverLine->setPen(QPen(lx_ui_res::Provider::instance()->color("ct_text_h3"), 1, Qt::DashLine));
    pHoverLine->setLine(px, plot.top(), px, plot.bottom());
    pHoverLine->setVisible(true);
    const QPoint viewPos = pView->mapFromScene(pChart->mapToScene(QPointF(px, plot.top())));
    pHoverBox->setText(text);
    pHoverBox->setVisible(!text.isEmpty());
    if (!text.isEmpty()) {
        pHoverBox->adjustSize();
        int left = viewPos.x() + 12;
        if (left + pHoverBox->width() > pView->width())
            left = viewPos.x() - 12 - pHoverBox->width();
        pHoverBox->move(std::max(0, left), viewPos.y() + 4);
        pHoverBox->raise();
    }
    pHoverScale->setText(scale);
    pHoverScale->setVisible(!scale.isEmpty());
    if (!scale.isEmpty()) {
        pHoverScale->adjustSize();
        const QPoint bottom = pView->mapFromScene(pChart->mapToScene(QPointF(px, plot.bottom())));
        pHoverScale->move(std::max(0, bottom.x() - pHoverScale->width() / 2), bottom.y() + 2);
        pHoverScale->raise();
    }
    return !text.isEmpty();
}

void LLineChartPrivate::HideHover() {
    i32HoverIndex = -1;
    if (pHoverLine)
        pHoverLine->setVisible(false);
    if (pHoverBox)
        pHoverBox->hide();
    if (pHoverScale)
        pHoverScale->hide();
}

LLineChart::LLineChart(QWidget* parent) : QWidget(parent), m_d(new LLineChartPrivate) {
    LLineChartPrivate* d = m_d.get();
    d->q = this;
    d->pChart = new QChart();
    d->pChart->legend()->hide();
    d->pChart->setBackgroundRoundness(0);
    d->pChart->setMargins(QMargins(4, 4, 4, 4));
    d->pAxisX = new QCategoryAxis();
    d->pAxisY[0] = new QCategoryAxis();
    d->pAxisY[1] = new QCategoryAxis();
    QFont labelFont = font();
    labelFont.setPointSizeF(qMax(7.0, labelFont.pointSizeF() - 1));
    for (QCategoryAxis* axis : {d->pAxisX, d->pAxisY[0], d->pAxisY[1]}) {
        axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
        axis->setLabelsFont(labelFont);
    }
    d->pChart->addAxis(d->pAxisX, Qt::AlignBottom);
    d->pChart->addAxis(d->pAxisY[0], Qt::AlignLeft);
    d->pView = new ChartView(d->pChart, this, d);  // the view owns the chart
    d->pView->setMinimumHeight(160);

    d->pTitle = new QLabel(this);
    d->pTitle->hide();
    auto* head = new QHBoxLayout;
    head->setContentsMargins(8, 4, 8, 0);
    head->setSpacing(14);
    head->addWidget(d->pTitle);
    d->pLegend = new QLabel(this);
    d->pLegend->setTextFormat(Qt::RichText);
    d->pLegend->setWordWrap(true);
    d->pLegend->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    head->addWidget(d->pLegend, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(head);
    layout->addWidget(d->pView, 1);

    d->pHoverBox = new QLabel(d->pView);
    d->pHoverBox->setTextFormat(Qt::RichText);
    d->pHoverBox->setAttribute(Qt::WA_TransparentForMouseEvents);
    d->pHoverBox->hide();
    d->pHoverScale = new QLabel(d->pView);
    d->pHoverScale->setAttribute(Qt::WA_TransparentForMouseEvents);
    d->pHoverScale->hide();

    d->ApplyTheme();
    LXSTDUI_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { m_d->ApplyTheme(); });
}

LLineChart::~LLineChart() = default;

void LLineChart::SetTitle(const QString& title) {
    m_d->pTitle->setText(title);
    m_d->pTitle->setVisible(!title.isEmpty());
}

QString LLineChart::Title() const { return m_d->pTitle->text(); }

int LLineChart::AddSeries(const QString& name, const QString& colorToken, Axis axis) {
    LLineChartPrivate* d = m_d.get();
    auto* series = new QLineSeries();
    series->setName(name);
    d->pChart->addSeries(series);
    if (axis == RightAxis && !d->bAxisAttached[1]) {
        d->pChart->addAxis(d->pAxisY[1], Qt::AlignRight);
        d->bAxisAttached[1] = true;
    }
    series->attachAxis(d->pAxisX);
    series->attachAxis(d->pAxisY[axis]);
    d->vecSeries.push_back(LLineChartPrivate::Series{name, colorToken, axis, series, name, {}});
    d->ApplyTheme();
    return int(d->vecSeries.size()) - 1;
}

int LLineChart::SeriesCount() const { return int(m_d->vecSeries.size()); }

QString LLineChart::SeriesName(int i) const {
    LXSTDUI_ASSERT_RETURN(i >= 0 && i < SeriesCount(), QString());
    return m_d->vecSeries[size_t(i)].strName;
}

QString LLineChart::SeriesColorToken(int i) const {
    LXSTDUI_ASSERT_RETURN(i >= 0 && i < SeriesCount(), QString());
    return m_d->vecSeries[size_t(i)].strColorToken;
}

void LLineChart::SetSeriesData(int i, const QVector<QPointF>& points) {
    LXSTDUI_ASSERT_RETURN(i >= 0 && i < SeriesCount());
    LLineChartPrivate::Series& s = m_d->vecSeries[size_t(i)];
    s.points = points.size() > kMaxPoints ? points.mid(points.size() - kMaxPoints) : points;
    s.pSeries->replace(s.points);
    if (m_d->i32HoverIndex >= 0)
        m_d->HoverAt(m_d->i32HoverIndex);
}

QVector<QPointF> LLineChart::SeriesData(int i) const {
    LXSTDUI_ASSERT_RETURN(i >= 0 && i < SeriesCount(), {});
    return m_d->vecSeries[size_t(i)].points;
}

void LLineChart::SetLegendText(int i, const QString& text) {
    LXSTDUI_ASSERT_RETURN(i >= 0 && i < SeriesCount());
    m_d->vecSeries[size_t(i)].strLegend = text;
    m_d->UpdateLegend();
}

QString LLineChart::LegendText(int i) const {
    LXSTDUI_ASSERT_RETURN(i >= 0 && i < SeriesCount(), QString());
    return m_d->vecSeries[size_t(i)].strLegend;
}

void LLineChart::SetVerticalScale(Axis axis, double dMin, double dMax, const QVector<LScaleMark>& marks) {
    m_d->vecMarksY[axis] = marks;
    ReplaceMarks(m_d->pAxisY[axis], dMin, dMax, marks);
}

void LLineChart::SetHorizontalScale(double dMin, double dMax, const QVector<LScaleMark>& marks) {
    m_d->dMinX = dMin;
    m_d->dMaxX = dMax > dMin ? dMax : dMin + 1;
    m_d->vecMarksX = marks;
    m_d->ApplyHorizontalRange();
}

QVector<LScaleMark> LLineChart::VerticalMarks(Axis axis) const { return m_d->vecMarksY[axis]; }
QVector<LScaleMark> LLineChart::HorizontalMarks() const { return m_d->vecMarksX; }

void LLineChart::SetCallBack(std::shared_ptr<ILLineChartCallBack> callback) { m_d->pCallBack = std::move(callback); }

bool LLineChart::ShowHoverAt(int i32Index) {
    if (i32Index < 0) {
        m_d->HideHover();
        return false;
    }
    return m_d->HoverAt(i32Index);
}

int LLineChart::HoverIndex() const { return m_d->i32HoverIndex; }
QString LLineChart::HoverText() const {
    return m_d->pHoverBox && m_d->pHoverBox->isVisibleTo(this) ? m_d->pHoverBox->text() : QString();
}
QString LLineChart::HoverScaleText() const {
    return m_d->pHoverScale && m_d->pHoverScale->isVisibleTo(this) ? m_d->pHoverScale->text() : QString();
}
