#include <LxUIKit/DevTools/Performance/IOStatisticsDialog.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>
#include <LxUIKit/DevTools/Performance/CountTable_p.h>

#include <LxCore/FrameWork.h>

#include <QTableWidget>

CIOStatisticsDialog::CIOStatisticsDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(DevText("IO统计"));
    resize(720, 420);
    m_pTable = lx_devtools::BuildCountTable(
        this, {DevText("路径"), DevText("读次数"), DevText("写次数"), DevText("总次数")}, false, [this] { Refresh(); });
}

void CIOStatisticsDialog::showEvent(QShowEvent* event) {
    Refresh();
    QDialog::showEvent(event);
}

void CIOStatisticsDialog::Refresh() {
    const std::map<QString, FrameWork::IOStatistic> stats = FrameWork::GetIOStaticstic();
    QVector<lx_devtools::CountRow> rows;
    rows.reserve(int(stats.size()));
    for (const auto& kv : stats)
        rows.push_back({kv.first, qint64(kv.second.u64ReadCount), qint64(kv.second.u64WriteCount)});
    lx_devtools::FillCountTable(m_pTable, rows);
}

QTableWidget* CIOStatisticsDialog::Table() const { return m_pTable; }
