#include <LxUIKit/DevTools/Performance/ObjectStatisticsDialog.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <LxBusiness/AppListenerManager.h>

#include <QHeaderView>
#include <QPushButton>
#include <QSet>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
QTableWidgetItem* CountItem(qint64 v) {
    auto* item = new QTableWidgetItem;
    item->setData(Qt::DisplayRole, v);
    return item;
}
}  // namespace

CObjectStatisticsDialog::CObjectStatisticsDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(DevText("对象池"));
    resize(640, 480);
    m_pTable = new QTableWidget(0, 4, this);
    m_pTable->setHorizontalHeaderLabels({DevText("类名"), DevText("活跃数"), DevText("已销毁数"), DevText("总数")});
    m_pTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_pTable->verticalHeader()->setVisible(false);
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* refresh = new QPushButton(DevText("刷新"), this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pTable, 1);
    layout->addWidget(refresh, 0, Qt::AlignRight);
    LXUIKIT_SAFE_CONNECT(refresh, &QPushButton::clicked, this, &CObjectStatisticsDialog::Refresh);
    Refresh();
}

void CObjectStatisticsDialog::showEvent(QShowEvent* event) {
    Refresh();
    QDialog::showEvent(event);
}

void CObjectStatisticsDialog::Refresh() {
    CAppListenerManager* mgr = CAppListenerManager::instance();
    const QMap<QString, qint64> active = mgr->GetActiveObjectMap();
    const QMap<QString, qint64> destroyed = mgr->GetDestroyedObjectMap();
    QSet<QString> names;
    for (auto it = active.begin(); it != active.end(); ++it)
        names.insert(it.key());
    for (auto it = destroyed.begin(); it != destroyed.end(); ++it)
        names.insert(it.key());
    m_pTable->setSortingEnabled(false);
    m_pTable->setRowCount(names.size());
    int row = 0;
    for (const QString& name : names) {
        const qint64 a = active.value(name);
        const qint64 d = destroyed.value(name);
        m_pTable->setItem(row, 0, new QTableWidgetItem(name));
        m_pTable->setItem(row, 1, CountItem(a));
        m_pTable->setItem(row, 2, CountItem(d));
        m_pTable->setItem(row, 3, CountItem(a + d));
        ++row;
    }
    m_pTable->setSortingEnabled(true);
    m_pTable->sortByColumn(1, Qt::DescendingOrder);
}

QTableWidget* CObjectStatisticsDialog::Table() const { return m_pTable; }
