#pragma once
// The statistics dialogs' shared shape: a read-only table of a name and three counts (two counts
// and their sum), sortable by any column with numbers sorting as numbers, and a "刷新" button
// under it.

#include <QString>
#include <QVector>
#include <functional>

class QDialog;
class QTableWidget;

namespace lx_devtools {

struct CountRow {
    QString strName;
    qint64 i64First = 0;
    qint64 i64Second = 0;
};

// Lays out dialog with the table (columns: headers, four of them) and the refresh button, which
// calls refresh. The first column stretches; with bStretchAll every column does.
QTableWidget* BuildCountTable(QDialog* dialog, const QStringList& headers, bool bStretchAll,
                              const std::function<void()>& refresh);
// Replaces the table's rows, the fourth column being the sum of the two counts.
void FillCountTable(QTableWidget* table, const QVector<CountRow>& rows);

}  // namespace lx_devtools
