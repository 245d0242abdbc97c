#include <LxUIKit/DevTools/Performance/IOStatisticsDialog.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <LxCore/FrameWork.h>

#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
// Numbers sort as numbers.
QTableWidgetItem* CountItem(quint64 v) {
    auto* item = new QTableWidgetItem;
    item->setData(Qt::DisplayRole, v);
    return item;
}
}  // namespace

CIOStatisticsDialog::CIOStatisticsDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(DevText("IO统计"));
    resize(720, 420);
    m_pTable = new QTableWidget(0, 4, this);
    m_pTable->setHorizontalHeaderLabels({DevText("路径"), DevText("读次数"), DevText("写次数"), DevText("总次数")});
    m_pTable->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_pTable->verticalHeader()->setVisible(false);
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* refresh = new QPushButton(DevText("刷新"), this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pTable, 1);
    layout->addWidget(refresh, 0, Qt::AlignRight);
    LXUIKIT_SAFE_CONNECT(refresh, &QPushButton::clicked, this, &CIOStatisticsDialog::Refresh);
}

void CIOStatisticsDialog::showEvent(QShowEvent* event) {
    Refresh();
    QDialog::showEvent(event);
}

void CIOStatisticsDialog::Refresh() {
    const std::map<QString, FrameWork::IOStatistic> stats = FrameWork::GetIOStaticstic();
    m_pTable->setSortingEnabled(false);
    m_pTable->setRowCount(int(stats.size()));
    int row = 0;
    for (const auto& kv : stats) {
        m_pTable->setItem(row, 0, new QTableWidgetItem(kv.first));
        m_pTable->setItem(row, 1, CountItem(kv.second.u64ReadCount));
        m_pTable->setItem(row, 2, CountItem(kv.second.u64WriteCount));
        m_pTable->setItem(row, 3, CountItem(kv.second.u64ReadCount + kv.second.u64WriteCount));
        ++row;
    }
    m_pTable->setSortingEnabled(true);
}

QTableWidget* CIOStatisticsDialog::Table() const { return m_pTable; }
