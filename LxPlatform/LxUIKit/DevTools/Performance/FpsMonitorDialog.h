#pragma once
// CFpsMonitorDialog ("FPS监控工具"): lists the widgets the frame counter watches with their
// current, average, effective average and peak frames per second, refreshed every second while
// counting runs. Clicking a row blinks a red frame over that widget (seven blinks, about 1.5 s);
// clicking again restarts the blinking. "UI Spy" opens the widget inspector, from which widgets
// are added to the counter.
//
// Layout: one row of controls (开始, 停止, 置顶, UI Spy, the elapsed time) above the table.

#include <LxUIKit/LxUIKitExport.h>

#include <QDialog>

#include <memory>

class QTableWidgetItem;
class CFpsMonitorDialogPrivate;

class LXUIKIT_EXPORT CFpsMonitorDialog : public QDialog {
    Q_OBJECT
public:
    explicit CFpsMonitorDialog(QWidget* parent = nullptr);
    ~CFpsMonitorDialog() override;

    // Shows (creating on first use) the process-wide dialog and brings it to the front.
    static CFpsMonitorDialog* ShowDialog();

    void OnUpdateFps();
    void OnItemClicked(QTableWidgetItem* item);
    // Blinks the red frame over `object` when it is a widget.
    void HighLightObject(QObject* object);

    CFpsMonitorDialogPrivate* d_func() const { return m_d.get(); }

private:
    void SetupUi();
    void OnStart();
    void OnStop();
    void OnBlinkTick();

    std::unique_ptr<CFpsMonitorDialogPrivate> m_d;
};
