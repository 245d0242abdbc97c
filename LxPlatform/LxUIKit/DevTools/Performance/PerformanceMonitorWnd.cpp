#include <LxUIKit/DevTools/Performance/PerformanceMonitorWnd.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>

#include <LxUIKit/DevTools/Performance/IOStatisticsDialog.h>
#include <LxUIKit/DevTools/Performance/LxCardCreatePerformanceHelper.h>
#include <LxUIKit/DevTools/Performance/ObjectStatisticsDialog.h>
#include <LxUIKit/DevTools/Performance/PerformanceMonitorWnd_p.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QDateTime>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kKb = 1024.0;

QString Number(double v, int decimals) { return QString::number(v, 'f', decimals); }

// One unit family: the names from the smallest unit up and the factor between neighbours.
struct UnitFamily {
    QStringList names;
    double factor;
};

UnitFamily FamilyOf(const QString& unit) {
    if (unit == QStringLiteral("字节"))
        return {{QStringLiteral("B"), QStringLiteral("KB"), QStringLiteral("MB"), QStringLiteral("GB")}, 1024.0};
    if (unit == QStringLiteral("kb/s"))
        return {{QStringLiteral("kb/s"), QStringLiteral("mb/s"), QStringLiteral("gb/s")}, 1024.0};
    if (unit.isEmpty() || unit == QStringLiteral("次"))
        return {{unit, QStringLiteral("K") + unit, QStringLiteral("M") + unit}, 1000.0};
    return {{unit}, 1.0};
}

}  // namespace

// ---- chart context and callbacks ----

void CAppChartContext::SetAppInformationSet(const CAppInformationSet& set) {
    m_pSet = std::make_shared<const CAppInformationSet>(set);
    for (auto& v : m_vecData) {
        v.clear();
        v.reserve(set.vecSamples.size());
    }
    for (const CAppInformation& s : set.vecSamples) {
        const double x = Seconds(s);
        m_vecData[Memory].append({x, s.dMemoryMB});
        m_vecData[Cpu].append({x, s.dCpuPercent});
        m_vecData[IoReadTimes].append({x, double(s.i64IOReadTimes)});
        m_vecData[IoWriteTimes].append({x, double(s.i64IOWriteTimes)});
        m_vecData[IoReadBytes].append({x, double(s.i64IOReadBytes)});
        m_vecData[IoWriteBytes].append({x, double(s.i64IOWriteBytes)});
        m_vecData[NetRecv].append({x, s.dTcpRecvKBps});
        m_vecData[NetSent].append({x, s.dTcpSentKBps});
        m_vecData[Widgets].append({x, double(s.i32WidgetCount)});
        m_vecData[Objects].append({x, double(s.i32ObjectCount)});
        m_vecData[TotalObjects].append({x, double(s.i64TotalObjectCount)});
    }
}

const CAppInformation* CAppChartContext::Sample(int i32Index) const {
    if (i32Index < 0 || i32Index >= m_pSet->vecSamples.size())
        return nullptr;
    return &m_pSet->vecSamples[i32Index];
}

double CAppChartContext::Seconds(const CAppInformation& info) const {
    return double(info.i64TimeMs - m_pSet->i64StartMs) / 1000.0;
}

QString CAppLineChartCallBackBase::GetHoverScaleText(LLineChart*, double dX) {
    // Whole seconds, as the axis marks read.
    return DevText("%1s").arg(Number(std::round(dX), 0));
}

QString CAppLineChartCallBackBase::Compose(LLineChart* pChart, const CAppInformation& info,
                                           const QStringList& lines) const {
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    QString html = QStringLiteral("<div style=\"color:%1\">%2%3</div>")
                       .arg(res->colorString("ct_text_highlight"), DevText("时间:"),
                            QDateTime::fromMSecsSinceEpoch(info.i64TimeMs).toString(QStringLiteral("hh:mm:ss:zzz")));
    for (int i = 0; i < lines.size() && i < pChart->SeriesCount(); ++i)
        html += QStringLiteral("<div style=\"color:%1\">%2</div>")
                    .arg(res->colorString(pChart->SeriesColorToken(i)), lines[i].toHtmlEscaped());
    return html;
}

QString CAppPerformancLineChartCallBack::GetHoverText(LLineChart* pChart, int i32Index, double) {
    const CAppInformation* s = m_pContext->Sample(i32Index);
    if (!s)
        return QString();
    return Compose(
        pChart, *s,
        {DevText("内存: %1MB").arg(Number(s->dMemoryMB, 2)), DevText("Cpu使用率: %1%").arg(Number(s->dCpuPercent, 2))});
}

QString CAppIOLineChartCallBack::GetHoverText(LLineChart* pChart, int i32Index, double) {
    const CAppInformation* s = m_pContext->Sample(i32Index);
    if (!s)
        return QString();
    return Compose(
        pChart, *s,
        {DevText("IO Read times: %1次").arg(s->i64IOReadTimes), DevText("IO Write times: %1次").arg(s->i64IOWriteTimes),
         DevText("Total size of IO reads : %1字节").arg(s->i64IOReadBytes),
         DevText("Total size of IO writes : %1字节").arg(s->i64IOWriteBytes)});
}

QString CAppNetLineChartCallBack::GetHoverText(LLineChart* pChart, int i32Index, double) {
    const CAppInformation* s = m_pContext->Sample(i32Index);
    if (!s)
        return QString();
    // The amount moved during the sample's interval.
    const double seconds = m_pContext->AppInformationSet()->i32IntervalMs / 1000.0;
    return Compose(pChart, *s,
                   {DevText("tcp 接收: %1kb").arg(Number(s->dTcpRecvKBps * seconds, 2)),
                    DevText("tcp 发送: %1kb").arg(Number(s->dTcpSentKBps * seconds, 2))});
}

QString CAppObjectLineChartCallBack::GetHoverText(LLineChart* pChart, int i32Index, double) {
    const CAppInformation* s = m_pContext->Sample(i32Index);
    if (!s)
        return QString();
    return Compose(
        pChart, *s,
        {DevText("当前QWidget数: %1").arg(s->i32WidgetCount), DevText("当前QObject数: %1").arg(s->i32ObjectCount),
         DevText("QObject总数: %1").arg(s->i64TotalObjectCount)});
}

// ---- scales ----

CScaleData CPerformanceMonitorWnd::GetScaleData(double dMin, double dMax, const QString& unit) {
    CScaleData out;
    if (!std::isfinite(dMin) || !std::isfinite(dMax) || dMax < dMin)
        dMin = dMax = 0;
    dMin = std::min(0.0, dMin);
    const UnitFamily family = FamilyOf(unit);
    // The unit the largest magnitude calls for.
    const double largest = std::max(std::abs(dMin), std::abs(dMax));
    int level = 0;
    double divisor = 1.0;
    while (level + 1 < family.names.size() && largest >= family.factor * divisor) {
        divisor *= family.factor;
        ++level;
    }
    const double lo = dMin / divisor;
    const double hi = dMax / divisor;
    double step = 1.0;
    if (hi - lo > 0) {
        const double raw = (hi - lo) / 4.0;
        const double mag = std::pow(10.0, std::floor(std::log10(raw)));
        step = mag * 10;
        for (double f : {1.0, 2.0, 5.0})
            if (f * mag >= raw) {
                step = f * mag;
                break;
            }
    }
    const double axisLo = std::floor(lo / step + 1e-9) * step;
    double axisHi = std::ceil(hi / step - 1e-9) * step;
    if (axisHi <= axisLo)
        axisHi = axisLo + step;
    const int decimals = step >= 1 ? 0 : int(std::ceil(-std::log10(step) - 1e-9));
    for (double v = axisLo; v <= axisHi + step * 1e-6; v += step) {
        const double shown = std::abs(v) < step * 1e-6 ? 0.0 : v;
        out.marks.append({shown * divisor, Number(shown, decimals) + family.names[level]});
    }
    out.dMin = axisLo * divisor;
    out.dMax = axisHi * divisor;
    return out;
}

CScaleData CPerformanceMonitorWnd::GetTimeScaleData(double dSeconds) {
    CScaleData out;
    const double span = std::max(1.0, std::isfinite(dSeconds) ? dSeconds : 1.0);
    const double steps[] = {1, 2, 5, 10, 15, 30, 60, 120, 300, 600};
    double step = 600;
    for (double s : steps)
        if (span / s <= 5.0) {
            step = s;
            break;
        }
    const double hi = std::ceil(span / step - 1e-9) * step;
    for (double v = 0; v <= hi + 1e-6; v += step)
        out.marks.append({v, QStringLiteral("%1s").arg(v, 0, 'f', 0)});
    out.dMin = 0;
    out.dMax = hi;
    return out;
}

// ---- window ----

CPerformanceMonitorWnd::CPerformanceMonitorWnd(QWidget* parent)
    : QWidget(parent), m_pContext(std::make_shared<CAppChartContext>()) {
    InitUi();
    // Parentless as a tab or on its own: not an unexpected popup.
    setProperty("popup_widget", true);
    setAttribute(Qt::WA_StyledBackground);
    InitLoopEvent();
}

CPerformanceMonitorWnd::~CPerformanceMonitorWnd() {
    if (m_i32Subscription)
        CAppListenerManager::instance()->UnregisterUpdateEvent(m_i32Subscription);
}

LLineChart* CPerformanceMonitorWnd::Chart(int i) const { return i >= 0 && i < 4 ? m_pCharts[i].data() : nullptr; }

QLabel* CPerformanceMonitorWnd::TotalsLabel(int i) const {
    if (i >= 0 && i < 6)
        return m_pTotals[i];
    if (i >= 6 && i < 8)
        return m_pNetTotals[i - 6];
    return nullptr;
}

void CPerformanceMonitorWnd::InitUi() {
    setWindowTitle(DevText("性能监控"));
    resize(900, 760);
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("pScrollArea"));
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* container = new QWidget(scroll);
    container->setObjectName(QStringLiteral("pContainerWidget"));
    auto* col = new QVBoxLayout(container);
    col->setSpacing(10);

    auto makeChart = [&](const QString& title) {
        auto* chart = new LLineChart(container);
        chart->SetTitle(title);
        chart->setMinimumHeight(250);
        col->addWidget(chart);
        return chart;
    };
    m_pCharts[0] = makeChart(DevText("内存/Cpu使用率"));
    m_pCharts[0]->AddSeries(DevText("内存"), QStringLiteral("ct_text_link"));
    m_pCharts[0]->AddSeries(DevText("Cpu使用率"), QStringLiteral("ct_text_red"), LLineChart::RightAxis);
    m_pCharts[0]->SetCallBack(std::make_shared<CAppPerformancLineChartCallBack>(m_pContext));

    m_pCharts[1] = makeChart(DevText("IO使用情况"));
    m_pCharts[1]->AddSeries(DevText("IO Read times"), QStringLiteral("ct_text_green"));
    m_pCharts[1]->AddSeries(DevText("IO Write times"), QStringLiteral("ct_text_red"));
    m_pCharts[1]->AddSeries(DevText("Total size of IO reads "), QStringLiteral("ct_bg_blue"), LLineChart::RightAxis);
    m_pCharts[1]->AddSeries(DevText("Total size of IO writes "), QStringLiteral("ct_lime"), LLineChart::RightAxis);
    m_pCharts[1]->SetCallBack(std::make_shared<CAppIOLineChartCallBack>(m_pContext));

    m_pCharts[2] = makeChart(DevText("网络监控"));
    m_pCharts[2]->AddSeries(DevText("Recv "), QStringLiteral("ct_text_green"));
    m_pCharts[2]->AddSeries(DevText("Sent "), QStringLiteral("ct_text_link"));
    m_pCharts[2]->SetLegendText(0, DevText("tcp 接收: %1kb/s").arg(Number(0, 2)));
    m_pCharts[2]->SetLegendText(1, DevText("tcp 发送: %1kb/s").arg(Number(0, 2)));
    m_pCharts[2]->SetCallBack(std::make_shared<CAppNetLineChartCallBack>(m_pContext));
    auto* netRow = new QHBoxLayout;
    m_pNetTotals[0] = new QLabel(DevText("已接收 %1kb").arg(Number(0, 2)), container);
    m_pNetTotals[1] = new QLabel(DevText("已发送 %1kb").arg(Number(0, 2)), container);
    netRow->addWidget(m_pNetTotals[0]);
    netRow->addWidget(m_pNetTotals[1]);
    netRow->addStretch(1);
    col->addLayout(netRow);

    m_pCharts[3] = makeChart(DevText("Qt对象池(QWidgets/QObjects)"));
    m_pCharts[3]->AddSeries(DevText("当前QWidget数"), QStringLiteral("ct_text_link"));
    m_pCharts[3]->AddSeries(DevText("当前QObject数"), QStringLiteral("ct_text_green"));
    m_pCharts[3]->AddSeries(DevText("QObject总数"), QStringLiteral("ct_text_highlight"));
    m_pCharts[3]->SetCallBack(std::make_shared<CAppObjectLineChartCallBack>(m_pContext));

    auto* grid = new QGridLayout;
    const QString names[6] = {DevText("总请求数"), DevText("总Push数"), DevText("上行"),
                              DevText("下行"),     DevText("总发送"),   DevText("总接收")};
    for (int i = 0; i < 6; ++i) {
        m_pTotals[i] = new QLabel(names[i] + QStringLiteral(": 0"), container);
        grid->addWidget(m_pTotals[i], i / 3, i % 3);
    }
    col->addLayout(grid);

    auto* buttons = new QHBoxLayout;
    auto* record = new QPushButton(DevText("显示记录"), container);
    auto* objects = new QPushButton(DevText("对象池"), container);
    auto* cards = new QPushButton(DevText("查看业务看片创建性能数据"), container);
    buttons->addWidget(record);
    buttons->addWidget(objects);
    buttons->addWidget(cards);
    buttons->addStretch(1);
    col->addLayout(buttons);
    col->addStretch(1);
    LXUIKIT_SAFE_CONNECT(record, &QPushButton::clicked, this, [this] {
        auto* dialog = new CIOStatisticsDialog(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->show();
    });
    LXUIKIT_SAFE_CONNECT(objects, &QPushButton::clicked, this, [this] {
        auto* dialog = new CObjectStatisticsDialog(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->show();
    });
    LXUIKIT_SAFE_CONNECT(cards, &QPushButton::clicked, this,
                         [] { LxCardCreatePerformanceHelper::instance()->ShowCreatePerformanceInfoWindow(); });

    scroll->setWidget(container);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);

    auto applyTheme = [this, container] {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        container->setStyleSheet(QStringLiteral("#pContainerWidget{background:%1;} QLabel{color:%2;}")
                                     .arg(res->colorString("ct_bg_primary"), res->colorString("ct_text_h2")));
        for (auto& label : m_pNetTotals)
            label->setStyleSheet(QStringLiteral("color:%1;").arg(res->colorString("ct_text_highlight")));
    };
    applyTheme();
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this, applyTheme);
}

void CPerformanceMonitorWnd::InitLoopEvent() {
    QPointer<CPerformanceMonitorWnd> self(this);
    m_i32Subscription = CAppListenerManager::instance()->RegisterUpdateEvent([self](const CAppInformationSet& set) {
        if (!self)
            return;
        self->m_pContext->SetAppInformationSet(set);
        self->UpdateData();
    });
}

void CPerformanceMonitorWnd::UpdateData() {
    using S = CAppChartContext;
    const S::Series map[4][4] = {{S::Memory, S::Cpu, S::SeriesCount, S::SeriesCount},
                                 {S::IoReadTimes, S::IoWriteTimes, S::IoReadBytes, S::IoWriteBytes},
                                 {S::NetRecv, S::NetSent, S::SeriesCount, S::SeriesCount},
                                 {S::Widgets, S::Objects, S::TotalObjects, S::SeriesCount}};
    for (int c = 0; c < 4; ++c)
        for (int i = 0; i < 4 && map[c][i] != S::SeriesCount; ++i)
            if (m_pCharts[c])
                m_pCharts[c]->SetSeriesData(i, m_pContext->Data(map[c][i]));

    const CAppInformationSet& set = *m_pContext->AppInformationSet();
    const CAppInformation last = set.Latest();
    if (m_pCharts[2]) {
        m_pCharts[2]->SetLegendText(0, DevText("tcp recv: %1kb/s").arg(Number(last.dTcpRecvKBps, 2)));
        m_pCharts[2]->SetLegendText(1, DevText("tcp send: %1kb/s").arg(Number(last.dTcpSentKBps, 2)));
    }
    if (m_pNetTotals[0])
        m_pNetTotals[0]->setText(DevText("已接收 %1kb").arg(Number(double(last.i64TcpRecvBytes) / kKb, 2)));
    if (m_pNetTotals[1])
        m_pNetTotals[1]->setText(DevText("已发送 %1kb").arg(Number(double(last.i64TcpSentBytes) / kKb, 2)));
    const QString texts[6] = {
        DevText("总请求数: %1").arg(last.i64TotalRequests),
        DevText("总Push数: %1").arg(last.i64TotalPushes),
        DevText("上行: %1kb").arg(Number(double(last.i64UpstreamBytes) / kKb, 2)),
        DevText("下行: %1kb").arg(Number(double(last.i64DownstreamBytes) / kKb, 2)),
        DevText("总发送: %1kb").arg(Number(double(last.i64TcpSentBytes) / kKb, 2)),
        DevText("总接收: %1kb").arg(Number(double(last.i64TcpRecvBytes) / kKb, 2)),
    };
    for (int i = 0; i < 6; ++i)
        if (m_pTotals[i])
            m_pTotals[i]->setText(texts[i]);
    UpdateCoordinateScale();
    UpdateAbscissaScale();
}

void CPerformanceMonitorWnd::UpdateCoordinateScale() {
    using S = CAppChartContext;
    auto range = [this](std::initializer_list<S::Series> series, double& lo, double& hi) {
        lo = 0;
        hi = 0;
        for (S::Series s : series)
            for (const QPointF& p : m_pContext->Data(s)) {
                lo = std::min(lo, p.y());
                hi = std::max(hi, p.y());
            }
    };
    auto apply = [this, &range](int chart, LLineChart::Axis axis, std::initializer_list<S::Series> series,
                                const QString& unit) {
        if (!m_pCharts[chart])
            return;
        double lo = 0;
        double hi = 0;
        range(series, lo, hi);
        const CScaleData scale = GetScaleData(lo, hi, unit);
        m_pCharts[chart]->SetVerticalScale(axis, scale.dMin, scale.dMax, scale.marks);
    };
    apply(0, LLineChart::LeftAxis, {S::Memory}, QStringLiteral("MB"));
    apply(0, LLineChart::RightAxis, {S::Cpu}, QStringLiteral("%"));
    apply(1, LLineChart::LeftAxis, {S::IoReadTimes, S::IoWriteTimes}, QStringLiteral("次"));
    apply(1, LLineChart::RightAxis, {S::IoReadBytes, S::IoWriteBytes}, QStringLiteral("字节"));
    apply(2, LLineChart::LeftAxis, {S::NetRecv, S::NetSent}, QStringLiteral("kb/s"));
    apply(3, LLineChart::LeftAxis, {S::Widgets, S::Objects, S::TotalObjects}, QString());
}

void CPerformanceMonitorWnd::UpdateAbscissaScale() {
    const QVector<QPointF>& any = m_pContext->Data(CAppChartContext::Memory);
    const CScaleData scale = GetTimeScaleData(any.isEmpty() ? 0.0 : any.last().x());
    for (auto& chart : m_pCharts)
        if (chart)
            chart->SetHorizontalScale(scale.dMin, scale.dMax, scale.marks);
}
