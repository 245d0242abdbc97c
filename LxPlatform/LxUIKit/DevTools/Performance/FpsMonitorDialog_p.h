#pragma once
// Bookkeeping of CFpsMonitorDialog (reachable by the tests).
#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>

class QCheckBox;
class QLabel;
class QPushButton;
class QTableWidget;
class QTimer;

class CFpsMonitorDialogPrivate {
public:
    static constexpr int kBlinkTicks = 14;
    static constexpr int kBlinkIntervalMs = 100;

    QPointer<QTableWidget> pTable;
    QPointer<QPushButton> pStartBtn;
    QPointer<QPushButton> pStopBtn;
    QPointer<QCheckBox> pTopCheck;
    QPointer<QPushButton> pSpyBtn;
    QPointer<QLabel> pTimeLabel;
    QPointer<QTimer> pDisplayTimer;  // 100 ms, shows the time since 开始
    QElapsedTimer displayClock;
    QPointer<QDialog> pHighlight;  // the red frame; parentless, deletes itself when closed
    QPointer<QTimer> pBlinkTimer;  // child of the frame
    int i32BlinkCount = kBlinkTicks;
};
