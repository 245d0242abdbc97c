#pragma once
// CUnitTestWnd: the developer tools' unit-test tab. Lists the test sessions the host registered
// with the business runtime's CUnitTestManager, runs the selected ones or all of them (one session
// per turn of the event loop, so the client keeps painting), and shows each session's result,
// duration and message, with a summary line below ("共 N 项：通过 P，失败 F，耗时 T ms").
// Failed rows are drawn in the theme's red, passed rows in its green.

#include <LxUIKit/LxUIKitExport.h>

#include <QPointer>
#include <QWidget>

class QLabel;
class QPushButton;
class QTreeWidget;
struct CUnitTestSessionResult;

class LXUIKIT_EXPORT CUnitTestWnd : public QWidget {
    Q_OBJECT
public:
    enum Column { NameColumn = 0, ResultColumn, DurationColumn, MessageColumn };

    explicit CUnitTestWnd(QWidget* parent = nullptr);

    // Re-reads the registered sessions (done on every show).
    void Reload();
    // Both return false while a run is going on.
    bool RunAll();
    bool RunSelected();

    QTreeWidget* List() const;
    QString SummaryText() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void OnSessionFinished(const CUnitTestSessionResult& result);
    void OnRunFinished(int i32Passed, int i32Failed, double dTotalMs);
    void ShowResult(const CUnitTestSessionResult& result);
    void SetRunning(bool bRunning);

    QPointer<QTreeWidget> m_pList;
    QPointer<QPushButton> m_pRunAll;
    QPointer<QPushButton> m_pRunSelected;
    QPointer<QPushButton> m_pReload;
    QPointer<QLabel> m_pSummary;
};
