#pragma once
// CLogViewerWnd: the developer tools window ("超级开发者工具（快捷键 Ctrl+F9）"), one per process.
// Its first tab, "标准输出", is a live console of every log record of every thread, coloured by
// type and filtered by type, by plain text (case-insensitive) or by a regular expression; further
// tabs are added with AddUserTab (devtools::AddCustomTab).
//
// Records are collected only while the window is visible. addMessage() may be called from any
// thread: a worker's record is queued under a mutex and moved in on the GUI thread by the 500 ms
// timer and before every GUI-thread record, so each thread's lines keep their order. The store
// keeps at most SaveInfoSize() lines (30000 once the window is built): the line past it drops the
// oldest 1000 in one step; a text longer than 10240 characters is cut and ends in "...".
//
// Choices made here:
// - When a queue drain brings more lines than the store can keep, the lines the store would drop
//   at once are never built (their sequence numbers are still used), and the queue itself keeps at
//   most about two store's worth of records: the memory stays bounded under any log flood.
// - Worker records are drained in turns of a few milliseconds: a flood is moved in over several
//   turns (the next one is posted at once), and a GUI-thread record written meanwhile waits behind
//   the rest instead of stalling the window; FlashPendingMessage() still moves everything at once.
// - The list is filled lazily in batches of 100 rows. With "自动滚动" on and the list far behind a
//   flood, the list jumps to the newest lines instead of loading every row in between.
// - A regular expression that does not compile matches nothing; the filter box turns red and the
//   status line says so.
// - The total text length counts the lines the store still holds.
// - Settings are saved when the window hides, closes or is destroyed, and 1 s after the filter
//   last changed: typing into the filter box rewrites the settings file once, not per keystroke.

#include <LxCore/FrameWork.h>
#include <LxCore/SafeFunction.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QDateTime>
#include <QString>
#include <QVector>
#include <QWidget>

#include <memory>

class QModelIndex;
class CItemInfoStandardItemModel;
class CLogViewerWndPrivate;

// Log types: one bit per record, a mask for the filter.
enum LxLogType : int {
    LxLogType_None = 0,
    LxLogType_Debug = 0x002,
    LxLogType_Info = 0x004,
    LxLogType_Warning = 0x008,
    LxLogType_Error = 0x010,
    LxLogType_Report = 0x040,
    LxLogType_Web = 0x080,
    LxLogType_Protocol = 0x100,
    LxLogType_Qt = 0x200,
    LxLogType_System = 0x400,
    LxLogType_All = 0x7DE,
};

class LXUIKIT_EXPORT CLogViewerWnd : public QWidget {
    Q_OBJECT
public:
    struct ItemData {
        QString strMessage;
        QString strDisplay;  // the message on one line, made when the row is loaded
        QString strLocation;
        QDateTime time;
        int i32Seq = 0;
        LxLogType eType = LxLogType_None;
        bool bShown = false;
    };

    // The window, created on first use (GUI thread only).
    static CLogViewerWnd* Singleton();
    // The window if it exists.
    static CLogViewerWnd* Instance();
    // Entry of the log hook, from any thread.
    static void addMessage(const FrameWork::LogContext& context);
    // The "dev_auto_open_std_out" application setting.
    static bool isAutoOpen();
    // How many lines the store keeps.
    static int SaveInfoSize();
    // Whether records are being collected (the window is visible).
    static bool IsCollecting();

    explicit CLogViewerWnd(QWidget* parent = nullptr);
    ~CLogViewerWnd() override;

    void addMessageInMain(const QString& message, const QString& location, LxLogType type);
    // Moves every queued record into the window now, however long that takes.
    void FlashPendingMessage();
    // One drain turn, what the 500 ms timer runs: adds queued records for a few milliseconds at
    // most and, when some are left, posts the next turn, so a flood never freezes the window.
    void DrainTurn();
    // Whether records wait for a drain (queued by workers or left by a turn).
    bool HasPendingMessages() const;
    void AddUserTab(const QString& title, core::CSafeFunction<QWidget*()> factory);

    // Shows the window where the tools may be used; otherwise tells the user why not and closes.
    void show();
    void setToolAvailable(bool bAvailable);
    bool isToolAvailable() const;

    void showUiDemo();
    void onCommonFilterButtonClicked();
    // Opens the per-call-site statistics ("日志统计信息"), from the list's context menu.
    void showStatistics();
    void UpdateAllFilterFlags();
    void UpdateSelectAllCheckBoxState();
    void OnFilterEditTextChanged(const QString& text);
    void onClearButtonClicked();
    void onListViewItemClicked(const QModelIndex& index);
    bool ReadConfigFromCache();
    void SaveConfigToCache();
    bool IsTextMatchFilter(const ItemData& item);

    // Read access for the tools' own tests and benchmarks.
    const QVector<ItemData>& Lines() const;
    int FilterMask() const;
    QString FilterText() const;
    QString StatusText() const;
    QString DetailText() const;

protected:
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private:
    friend class CLogViewerWndPrivate;
    friend class CItemInfoStandardItemModel;
    void InitDialog();
    void SetupUi();
    // Adds queued records in order; stops after i64BudgetNs (never when negative).
    void Drain(qint64 i64BudgetNs);
    void AddLine(ItemData&& item, const QDateTime& now, bool bBulk);
    void DropOldest(int i32Count);
    void RefreshStatus();
    void OnTabOpened(int index);
    void ApplyTheme();
    void ScheduleAutoScroll();

    std::unique_ptr<CLogViewerWndPrivate> d;
};

// Lines are moved in blocks when the store drops its oldest ones: plain memory moves suffice.
Q_DECLARE_TYPEINFO(CLogViewerWnd::ItemData, Q_MOVABLE_TYPE);
