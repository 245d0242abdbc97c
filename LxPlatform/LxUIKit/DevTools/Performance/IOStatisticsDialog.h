#pragma once
// CIOStatisticsDialog: the core runtime's per-path IO counts (reads, writes and their sum), one
// row per path, read again on every show and on "刷新".

#include <LxUIKit/LxUIKitExport.h>

#include <QDialog>
#include <QPointer>

class QTableWidget;

class LXUIKIT_EXPORT CIOStatisticsDialog : public QDialog {
    Q_OBJECT
public:
    explicit CIOStatisticsDialog(QWidget* parent = nullptr);
    void Refresh();
    QTableWidget* Table() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QPointer<QTableWidget> m_pTable;
};
