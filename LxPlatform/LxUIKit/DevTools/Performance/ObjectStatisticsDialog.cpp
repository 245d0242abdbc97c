#include <LxUIKit/DevTools/Performance/ObjectStatisticsDialog.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>
#include <LxUIKit/DevTools/Performance/CountTable_p.h>

#include <LxBusiness/AppListenerManager.h>

#include <QSet>
#include <QTableWidget>

CObjectStatisticsDialog::CObjectStatisticsDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(DevText("对象池"));
    resize(640, 480);
    m_pTable = lx_devtools::BuildCountTable(
        this, {DevText("类名"), DevText("活跃数"), DevText("已销毁数"), DevText("总数")}, true, [this] { Refresh(); });
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
    QVector<lx_devtools::CountRow> rows;
    rows.reserve(names.size());
    for (const QString& name : names)
        rows.push_back({name, active.value(name), destroyed.value(name)});
    lx_devtools::FillCountTable(m_pTable, rows);
    m_pTable->sortByColumn(1, Qt::DescendingOrder);
}

QTableWidget* CObjectStatisticsDialog::Table() const { return m_pTable; }
