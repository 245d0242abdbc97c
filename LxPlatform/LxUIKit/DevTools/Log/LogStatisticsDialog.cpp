#include <LxUIKit/DevTools/Log/LogStatisticsDialog.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLegend>
#include <QtCharts/QLegendMarker>
#include <QtCharts/QPieSeries>
#include <QtCharts/QPieSlice>

#include <algorithm>
#include <random>

using namespace QtCharts;

namespace {

// Level slices in their fixed order; the trade level has no bit of its own in this core and so
// stays empty unless a host's statistics carry it.
const QPair<int, const char*> kLevelSlices[] = {
    {0x010, "Error"}, {0x040, "Report"}, {0x002, "Debug"}, {0x004, "Info"}, {0x008, "Waning"},
    {0x200, "Qt"},    {0x080, "Web"},    {0x100, "Proto"}, {0x400, "OS"},   {0x800, "Trade"},
};

// Item whose sort key is its number, shown as text.
QTableWidgetItem* NumberItem(qulonglong value) {
    auto* item = new QTableWidgetItem;
    item->setData(Qt::DisplayRole, value);
    return item;
}

void FillPie(QPieSeries* series, QVector<QPair<QString, qulonglong>> rows, const QVector<QColor>& colors) {
    series->clear();
    std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    qulonglong total = 0;
    for (const auto& r : rows)
        total += r.second;
    int i = 0;
    for (const auto& r : rows) {
        const double share = total ? 100.0 * double(r.second) / double(total) : 0.0;
        QPieSlice* slice = series->append(r.first, double(r.second));
        slice->setProperty("lx_name", r.first);
        slice->setLabel(QStringLiteral("%1 次数:%2 %3%").arg(r.first).arg(r.second).arg(share, 0, 'f', 1));
        if (i < colors.size())
            slice->setColor(colors[i]);
        ++i;
    }
}

QChartView* MakeChartView(QPieSeries* series, const QString& title, QWidget* parent) {
    auto* chart = new QChart;
    chart->addSeries(series);
    chart->setTitle(title);
    chart->legend()->setAlignment(Qt::AlignRight);
    auto* view = new QChartView(chart, parent);
    view->setRenderHint(QPainter::Antialiasing);
    view->setMinimumSize(360, 260);
    return view;
}

}  // namespace

CLogStatisticsDialog::CLogStatisticsDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("日志统计信息"));
    m_pLevelSeries = new QPieSeries(this);
    m_pModuleSeries = new QPieSeries(this);
    m_pLevelView = MakeChartView(m_pLevelSeries, QStringLiteral("级别统计"), this);
    m_pModuleView = MakeChartView(m_pModuleSeries, QStringLiteral("模块统计"), this);

    m_pTable = new QTableWidget(0, 4, this);
    m_pTable->setStyleSheet(QStringLiteral("background-color: #FFFFFF"));
    m_pTable->setHorizontalHeaderLabels(
        {QStringLiteral("模块"), QStringLiteral("函数"), QStringLiteral("行号"), QStringLiteral("调用次数")});
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->verticalHeader()->hide();
    m_pTable->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);

    auto* charts = new QHBoxLayout;
    charts->addWidget(m_pLevelView);
    charts->addWidget(m_pModuleView);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(charts, 2);
    layout->addWidget(m_pTable, 3);
    resize(900, 700);
}

QString CLogStatisticsDialog::LevelSliceName(int level) {
    for (const auto& l : kLevelSlices)
        if (l.first == level)
            return QString::fromLatin1(l.second);
    return QString();
}

QVector<QColor> CLogStatisticsDialog::GetRandColorList(int n) {
    QVector<QColor> out;
    if (n <= 0)
        return out;
    out.reserve(n);
    // Hues spread over the circle, alternating two saturations so neighbours stay apart.
    for (int i = 0; i < n; ++i)
        out << QColor::fromHsv((i * 360 / n) % 360, i % 2 ? 160 : 220, i % 3 ? 210 : 180);
    std::mt19937 rng(std::random_device{}());
    std::shuffle(out.begin(), out.end(), rng);
    return out;
}

void CLogStatisticsDialog::SetData(const FrameWork::LogStatisticsContext& context) {
    QVector<QPair<QString, qulonglong>> levels;
    for (const auto& l : kLevelSlices) {
        const auto it = context.mapCountPerLevel.find(l.first);
        levels.append({QString::fromLatin1(l.second), it == context.mapCountPerLevel.end() ? 0 : it->second});
    }
    FillPie(m_pLevelSeries, levels, GetRandColorList(levels.size()));

    QVector<QPair<QString, qulonglong>> modules;
    for (const auto& kv : context.mapCountPerModule)
        modules.append({QString::fromStdString(kv.first), kv.second});
    FillPie(m_pModuleSeries, modules, GetRandColorList(modules.size()));

    m_pTable->setSortingEnabled(false);
    m_pTable->setRowCount(int(context.vecCallSites.size()));
    int row = 0;
    for (const FrameWork::LogCallSite& site : context.vecCallSites) {
        m_pTable->setItem(row, 0, new QTableWidgetItem(QString::fromStdString(site.strModule)));
        m_pTable->setItem(row, 1, new QTableWidgetItem(QString::fromStdString(site.strFunction)));
        m_pTable->setItem(row, 2, NumberItem(qulonglong(qMax(0, site.i32Line))));
        m_pTable->setItem(row, 3, NumberItem(site.u64Count));
        ++row;
    }
    m_pTable->setSortingEnabled(true);
    m_pTable->sortByColumn(3, Qt::DescendingOrder);
}

QTableWidget* CLogStatisticsDialog::table() const { return m_pTable; }
