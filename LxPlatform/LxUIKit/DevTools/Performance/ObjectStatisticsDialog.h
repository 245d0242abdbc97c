#pragma once
// CObjectStatisticsDialog ("对象池"): live and destroyed QObjects per class, from the application
// listener's object hooks, with their sum; most live first. Read on every show and on "刷新".

#include <LxUIKit/LxUIKitExport.h>

#include <QDialog>
#include <QPointer>

class QTableWidget;

class LXUIKIT_EXPORT CObjectStatisticsDialog : public QDialog {
    Q_OBJECT
public:
    explicit CObjectStatisticsDialog(QWidget* parent = nullptr);
    void Refresh();
    QTableWidget* Table() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QPointer<QTableWidget> m_pTable;
};
