#pragma once
// Internals of the log viewer: the lazily filled list model, the one-line delegate and the
// window's bookkeeping.
#include <LxUIKit/DevTools/Log/LogViewerWnd.h>

#include <QHash>
#include <QPointer>
#include <QRegExp>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

#include <deque>

class QCheckBox;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTableView;
class QTimer;

// Rows are made from the store's shown lines in store order, at most one batch per fetchMore, so
// a filter change or a flood never builds thousands of rows at once. A row is only a store index:
// its texts are formatted when the view asks for them (data()), so a row the user never scrolls
// to costs nothing, and a batch reaches the view as one insertion, a dropped block as one removal.
// It stays a QStandardItemModel for code that expects one, but holds no items.
class CItemInfoStandardItemModel : public QStandardItemModel {
public:
    CItemInfoStandardItemModel(CLogViewerWnd* pWnd, QVector<CLogViewerWnd::ItemData>* pStore, int i32Batch);

    using QObject::parent;
    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    QModelIndex sibling(int row, int column, const QModelIndex& idx) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QMap<int, QVariant> itemData(const QModelIndex& index) const override;

    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    // Fetches one batch when more than i32Lag shown lines are not yet rows.
    void Update(int i32Lag);

    // Bookkeeping kept by the window.
    void OnLineShown() { ++m_i32Unloaded; }
    // The oldest i32Lines lines of the store go: Begin before they leave the store, End after.
    void BeginDropOldest(int i32Lines);
    void EndDropOldest(int i32Lines);
    // Clears the rows and starts again from the first line (after a filter change).
    void Restart();
    // Drops the rows and moves on so that at most one batch of shown lines is left to load.
    void JumpToNewest();
    int LoadedLines() const { return m_i32Loaded; }
    int Unloaded() const { return m_i32Unloaded; }
    // Store index of the line shown in a row.
    int LineOfRow(int row) const;

private:
    QVector<CLogViewerWnd::ItemData>* m_pStore;
    int m_i32Batch;
    int m_i32Loaded = 0;         // store lines walked so far
    int m_i32Unloaded = 0;       // shown lines at or after m_i32Loaded
    int m_i32DroppingRows = 0;   // rows leaving between BeginDropOldest and EndDropOldest
    QVector<int> m_vecRowLines;  // store index per row, shifted when lines are dropped
};

// Paints the detail column on one line, cut with an ellipsis.
class NoWrapDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

class CLogViewerWndPrivate {
public:
    QVector<CLogViewerWnd::ItemData> vecStore;
    int i32FilterMask = LxLogType_All;
    int i32NextSeq = 1;
    qint64 i64TextLength = 0;
    QRegExp regExp;
    QString strRegExpPattern;
    QString strFilterText;  // the filter box's text, kept so each line need not ask the box
    bool bToolAvailable = false;
    bool bStatusDirty = false;

    QPointer<QTabWidget> pTabs;
    QPointer<QCheckBox> pSelectAll;
    QVector<QPair<int, QPointer<QCheckBox>>> vecTypeChecks;
    QPointer<QComboBox> m_filterComboBox;
    QPointer<QPushButton> pClearBtn;
    QPointer<QPushButton> pCommonFilterBtn;
    QPointer<QCheckBox> pAutoScroll;
    QPointer<QCheckBox> pRegExp;
    QPointer<QPushButton> pAutoOpenBtn;
    QPointer<QPushButton> pSpyBtn;
    QPointer<QPushButton> pUiDemoBtn;
    QPointer<QTableView> pList;
    QPointer<QPlainTextEdit> pDetail;
    QPointer<QLabel> pStatus;
    QPointer<QTimer> pFlushTimer;
    QPointer<QTimer> pSaveTimer;      // a settings save waiting for the filter to settle
    bool bFilterShownBroken = false;  // the filter box wears the red frame
    CItemInfoStandardItemModel* pModel = nullptr;
    // Worker records taken from the queue and not yet added: a drain turn that runs out of time
    // leaves the rest here, in order, for the next turn.
    std::deque<QVector<CLogViewerWnd::ItemData>> dequeBacklog;
    int i32BacklogFront = 0;      // records of the first backlog chunk already added
    qint64 i64Backlog = 0;        // records in the backlog, not counting those already added
    bool bTurnPosted = false;     // a follow-up drain turn is in the event queue
    bool bScrollPending = false;  // an auto-scroll task is in the event queue
    QHash<QWidget*, core::CSafeFunction<QWidget*()>> hashPendingTabs;  // tab page -> its factory
};

namespace devtools {
namespace log {
namespace detail {
// Label and colour of a type, by the precedence of its bits; empty for none.
QString TypeLabel(int type);
QString TypeColor(int type);
// Size of a store of i32Lines lines after i64Appends more lines went in one by one.
int StoreSizeAfter(int i32Lines, qint64 i64Appends, int i32Cap);
// Where showUiDemo() looks for the plug-in, in order. Tests may put a folder first.
QStringList UiDemoCandidates();
void SetUiDemoFolderForTest(const QString& folder);
// Time one drain turn may spend adding lines; negative restores the default. A turn checks the
// clock every 64 lines, so 0 makes every turn add exactly 64.
void SetDrainTurnBudgetNs(qint64 i64Ns);
}  // namespace detail
}  // namespace log
}  // namespace devtools
