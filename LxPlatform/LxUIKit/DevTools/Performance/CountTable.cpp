#include <LxUIKit/DevTools/Performance/CountTable_p.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QDialog>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace lx_devtools {
namespace {
QTableWidgetItem* CountItem(qint64 v) {
    auto* item = new QTableWidgetItem;
    item->setData(Qt::DisplayRole, v);
    return item;
}
}  // namespace

QTableWidget* BuildCountTable(QDialog* dialog, const QStringList& headers, bool bStretchAll,
                              const std::function<void()>& refresh) {
    auto* table = new QTableWidget(0, 4, dialog);
    table->setHorizontalHeaderLabels(headers);
    if (bStretchAll)
        table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    else
        table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table->verticalHeader()->setVisible(false);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* button = new QPushButton(DevText("刷新"), dialog);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(table, 1);
    layout->addWidget(button, 0, Qt::AlignRight);
    LXUIKIT_SAFE_CONNECT(button, &QPushButton::clicked, dialog, refresh);
    return table;
}

void FillCountTable(QTableWidget* table, const QVector<CountRow>& rows) {
    table->setSortingEnabled(false);
    table->setRowCount(rows.size());
    for (int row = 0; row < rows.size(); ++row) {
        const CountRow& r = rows[row];
        table->setItem(row, 0, new QTableWidgetItem(r.strName));
        table->setItem(row, 1, CountItem(r.i64First));
        table->setItem(row, 2, CountItem(r.i64Second));
        table->setItem(row, 3, CountItem(r.i64First + r.i64Second));
    }
    table->setSortingEnabled(true);
}

}  // namespace lx_devtools
