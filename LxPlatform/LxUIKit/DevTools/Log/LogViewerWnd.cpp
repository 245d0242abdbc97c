#include <LxUIKit/DevTools/Log/LogViewerWnd.h>

#include <LxCore/IniWrapper.h>
#include <LxCore/Post.h>
#include <LxCore/ProductPath.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/DevTools/LModalBypassHelper.h>
#include <LxUIKit/DevTools/Log/LogFilterDialog.h>
#include <LxUIKit/DevTools/Log/LogStatisticsDialog.h>
#include <LxUIKit/DevTools/Log/LogViewerWnd_p.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/DevTools/Spy/SpyToolWnd.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLibrary>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTabWidget>
#include <QTableView>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

#include <dlfcn.h>

#include <array>
#include <atomic>
#include <deque>
#include <mutex>
#include <vector>

namespace {

constexpr int kInitialSaveInfoSize = 3000;
constexpr int kDropBlock = 1000;
constexpr int kMaxMessageLength = 10240;
constexpr int kFetchBatch = 100;
constexpr int kFlushIntervalMs = 500;
constexpr int kSaveDelayMs = 1000;
constexpr int kScrollDelayMs = 100;
constexpr int kColumns = 5;
// Worker records wait in chunks: a writer holds the lock only to append one record (or, once per
// chunk, to start a new one), and trimming an overflowing queue unlinks a whole chunk that is freed
// after the lock is let go.
constexpr int kChunkSize = 1024;
// Chunks the GUI thread has gone through are handed back for the writers to fill again, so a flood
// does not allocate and free a chunk per thousand records (and the heap does not grow and shrink
// with it). The writer that takes one empties it, outside the lock: freeing what a chunk still holds
// (moved-out records, or records skipped because newer ones would push them out anyway) is then
// spread over the writers instead of landing on the GUI thread's turn.
constexpr size_t kSpareChunks = 64;
// Time one drain turn may spend adding lines before it leaves the rest for the next turn, so the GUI
// thread keeps answering. One frame at 60 Hz is 16 ms; the rest of the turn needs some of it, and
// under a flood the writers compete with the GUI thread for the cores, so a turn's wall time can be
// a multiple of its own work.
constexpr qint64 kDrainTurnBudgetNs = qint64(4) * 1000 * 1000;
// The clock is read every this many lines (a line costs about a microsecond).
constexpr int kClockEveryLines = 64;
qint64 s_i64DrainTurnBudgetNs = kDrainTurnBudgetNs;

const QString kSection = QStringLiteral("StdOutDialog");
const QString kAutoOpenKey = QStringLiteral("dev_auto_open_std_out");

int SAVE_INFO_SIZE = kInitialSaveInfoSize;
CLogViewerWnd* s_pCLogViewerWnd = nullptr;
// Whether records are collected at all: true while the window is visible.
std::atomic<bool> g_stdOutUIIsVisible{false};

using Chunk = QVector<CLogViewerWnd::ItemData>;

// Records written by worker threads, waiting for the GUI thread. Never destroyed: a thread may log
// during the process's static teardown.
struct PendingQueue {
    std::mutex mutex;               // a pthread mutex, which ThreadSanitizer understands
    std::deque<Chunk> dequeChunks;  // guarded by mutex, oldest first
    std::vector<Chunk> vecSpare;    // chunks to reuse, not yet emptied (guarded)
    int i32Count = 0;               // records in dequeChunks (guarded)
    qint64 i64Skipped = 0;          // records dropped from the queue's front (guarded)
};
PendingQueue& Queue() {
    static auto* s_pQueue = new PendingQueue;
    return *s_pQueue;
}
std::atomic<int> g_i32PendingCount{0};

// GUI-thread static: a line being added (re-entrancy guard).
bool s_bAdding = false;

QString& UiDemoFolderForTest() {
    static QString s_str;
    return s_str;
}

struct TypeInfo {
    int bit;
    const char* label;
    const char* color;
};
// In the order of precedence of the label and colour.
const TypeInfo kTypePrecedence[] = {
    {LxLogType_Error, "错误", "#CF0000"},    {LxLogType_Warning, "警告", "#794300"},
    {LxLogType_Protocol, "协议", "#407000"}, {LxLogType_Qt, "QT", "#038F8F"},
    {LxLogType_Info, "信息", "#207BA3"},     {LxLogType_Report, "上报", "#9B00AC"},
    {LxLogType_System, "系统", "#6C0178"},   {LxLogType_Debug, "日志", "#777777"},
    {LxLogType_Web, "Web", "#4B4291"},
};

// The colours as colours, made once (the view asks for one per painted cell).
const QColor* TypeQColor(int type) {
    static const auto s_colors = [] {
        std::array<QColor, sizeof(kTypePrecedence) / sizeof(kTypePrecedence[0])> out;
        for (size_t i = 0; i < out.size(); ++i)
            out[i] = QColor(QLatin1String(kTypePrecedence[i].color));
        return out;
    }();
    for (size_t i = 0; i < s_colors.size(); ++i)
        if (type & kTypePrecedence[i].bit)
            return &s_colors[i];
    return nullptr;
}

const TypeInfo* TypeOf(int type) {
    for (const TypeInfo& t : kTypePrecedence)
        if (type & t.bit)
            return &t;
    return nullptr;
}

// Hands chunks the GUI thread has gone through to the writers; what does not fit is freed here, after
// the lock is let go.
void RecycleChunks(std::vector<Chunk>* pChunks) {
    if (pChunks->empty())
        return;
    PendingQueue& q = Queue();
    std::lock_guard<std::mutex> lock(q.mutex);
    while (!pChunks->empty() && q.vecSpare.size() < kSpareChunks) {
        q.vecSpare.push_back(std::move(pChunks->back()));
        pChunks->pop_back();
    }
}

bool OnMainThread() {
    QCoreApplication* app = QCoreApplication::instance();
    return app && QThread::currentThread() == app->thread();
}

QString FileNameOf(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return QString::fromStdString(slash == std::string::npos ? path : path.substr(slash + 1));
}

QString BuildLocation(const FrameWork::LogContext& ctx) {
    QString location;
    location.reserve(int(ctx.strModule.size() + ctx.strFile.size() + ctx.strFunction.size()) + 16);
    location += QString::fromStdString(ctx.strModule);
    location += QLatin1String(", ");
    location += FileNameOf(ctx.strFile);
    location += QLatin1String(", ");
    location += QString::fromStdString(ctx.strFunction);
    location += QLatin1String(", ");
    if (ctx.i32Line != -1)
        location += QString::number(ctx.i32Line);
    return location;
}

// A flood comes from a few call sites: each thread keeps the locations it made last, so a repeated
// call site costs a few string comparisons instead of four conversions and a concatenation.
QString LocationOf(const FrameWork::LogContext& ctx) {
    struct Entry {
        std::string strModule, strFile, strFunction;
        int i32Line = 0;
        QString strLocation;
    };
    constexpr int kEntries = 8;
    thread_local Entry t_cache[kEntries];
    thread_local int t_i32Next = 0;
    for (const Entry& e : t_cache)
        if (e.i32Line == ctx.i32Line && !e.strLocation.isEmpty() && e.strFile == ctx.strFile &&
            e.strModule == ctx.strModule && e.strFunction == ctx.strFunction)
            return e.strLocation;
    Entry& e = t_cache[t_i32Next];
    t_i32Next = (t_i32Next + 1) % kEntries;
    e.strModule = ctx.strModule;
    e.strFile = ctx.strFile;
    e.strFunction = ctx.strFunction;
    e.i32Line = ctx.i32Line;
    e.strLocation = BuildLocation(ctx);
    return e.strLocation;
}

core::CIniWrapper CommonSettings() { return core::CIniWrapper(core::product_path::GetSettingsFile()); }

QString KitLibraryFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&KitLibraryFolder), &info) && info.dli_fname)
        return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath();
    return QString();
}

}  // namespace

namespace devtools {
namespace log {
namespace detail {

QString TypeLabel(int type) {
    const TypeInfo* t = TypeOf(type);
    return t ? QString::fromUtf8(t->label) : QString();
}

QString TypeColor(int type) {
    const TypeInfo* t = TypeOf(type);
    return t ? QString::fromLatin1(t->color) : QString();
}

int StoreSizeAfter(int i32Lines, qint64 i64Appends, int i32Cap) {
    qint64 size = i32Lines;
    while (i64Appends > 0) {
        const qint64 room = qint64(i32Cap) - size;  // appends before the next drop
        if (room > 0) {
            const qint64 step = qMin(room, i64Appends);
            size += step;
            i64Appends -= step;
            continue;
        }
        size = qMax<qint64>(0, size + 1 - kDropBlock);
        --i64Appends;
    }
    return int(size);
}

QStringList UiDemoCandidates() {
    QStringList out;
    const QString name = QStringLiteral("libLxStdUiDemo.so");
    if (!UiDemoFolderForTest().isEmpty())
        out << QDir(UiDemoFolderForTest()).filePath(name);
    const QString kit = KitLibraryFolder();
    if (!kit.isEmpty())
        out << QDir(kit).filePath(name);
    out << QDir(QCoreApplication::applicationDirPath()).filePath(name);
    out << QStringLiteral("LxStdUiDemo");  // the loader's own search path last
    out.removeDuplicates();
    return out;
}

void SetUiDemoFolderForTest(const QString& folder) { UiDemoFolderForTest() = folder; }

void SetDrainTurnBudgetNs(qint64 i64Ns) { s_i64DrainTurnBudgetNs = i64Ns < 0 ? kDrainTurnBudgetNs : i64Ns; }

}  // namespace detail
}  // namespace log
}  // namespace devtools

using devtools::log::detail::TypeLabel;

// ---------------------------------------------------------------------------------------------
// Model

CItemInfoStandardItemModel::CItemInfoStandardItemModel(CLogViewerWnd* pWnd, QVector<CLogViewerWnd::ItemData>* pStore,
                                                       int i32Batch)
    : QStandardItemModel(pWnd), m_pStore(pStore), m_i32Batch(i32Batch) {}

QModelIndex CItemInfoStandardItemModel::index(int row, int column, const QModelIndex& parent) const {
    if (parent.isValid() || row < 0 || row >= m_vecRowLines.size() || column < 0 || column >= kColumns)
        return {};
    return createIndex(row, column);
}

QModelIndex CItemInfoStandardItemModel::parent(const QModelIndex&) const { return {}; }

QModelIndex CItemInfoStandardItemModel::sibling(int row, int column, const QModelIndex&) const {
    return index(row, column);
}

int CItemInfoStandardItemModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_vecRowLines.size();
}

int CItemInfoStandardItemModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

bool CItemInfoStandardItemModel::hasChildren(const QModelIndex& parent) const {
    return !parent.isValid() && !m_vecRowLines.isEmpty();
}

QVariant CItemInfoStandardItemModel::data(const QModelIndex& index, int role) const {
    const int line = index.isValid() ? LineOfRow(index.row()) : -1;
    if (line < 0 || line >= m_pStore->size())
        return {};
    const CLogViewerWnd::ItemData& item = m_pStore->at(line);
    if (role == Qt::ForegroundRole) {
        const QColor* color = TypeQColor(item.eType);
        return color ? QVariant(QBrush(*color)) : QVariant();
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case 0: return QString::number(item.i32Seq);
    case 1: return item.time.toString(QStringLiteral("hh:mm:ss.zzz"));
    case 2: return TypeLabel(item.eType);
    case 3: return item.strDisplay.isEmpty() ? item.strMessage : item.strDisplay;
    case 4: return item.strLocation;
    default: return {};
    }
}

QVariant CItemInfoStandardItemModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || section < 0)
        return {};
    if (orientation == Qt::Vertical)
        return section < m_vecRowLines.size() ? QVariant(section + 1) : QVariant();
    static const char* const s_headers[kColumns] = {"ID", "时间", "类型", "详情", "位置"};
    return section < kColumns ? QVariant(QString::fromUtf8(s_headers[section])) : QVariant();
}

Qt::ItemFlags CItemInfoStandardItemModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

QMap<int, QVariant> CItemInfoStandardItemModel::itemData(const QModelIndex& index) const {
    QMap<int, QVariant> out;
    for (int role : {int(Qt::DisplayRole), int(Qt::ForegroundRole)}) {
        const QVariant v = data(index, role);
        if (v.isValid())
            out.insert(role, v);
    }
    return out;
}

bool CItemInfoStandardItemModel::canFetchMore(const QModelIndex& parent) const {
    return !parent.isValid() && m_i32Unloaded > 0;
}

void CItemInfoStandardItemModel::fetchMore(const QModelIndex& parent) {
    if (parent.isValid())
        return;
    QVector<int> rows;
    rows.reserve(m_i32Batch);
    while (rows.size() < m_i32Batch && m_i32Loaded < m_pStore->size()) {
        CLogViewerWnd::ItemData& item = (*m_pStore)[m_i32Loaded];
        if (item.bShown) {
            // The one-line copy shares the message unless it holds a line break.
            if (item.strDisplay.isEmpty() && !item.strMessage.isEmpty()) {
                item.strDisplay = item.strMessage;
                item.strDisplay.replace(QLatin1Char('\n'), QLatin1Char(' '))
                    .replace(QLatin1Char('\r'), QLatin1Char(' '));
            }
            rows.append(m_i32Loaded);
            --m_i32Unloaded;
        }
        ++m_i32Loaded;
    }
    if (rows.isEmpty())
        return;
    const int first = m_vecRowLines.size();
    beginInsertRows(QModelIndex(), first, first + rows.size() - 1);
    m_vecRowLines += rows;
    endInsertRows();
}

void CItemInfoStandardItemModel::Update(int i32Lag) {
    if (m_i32Unloaded > i32Lag)
        fetchMore(QModelIndex());
}

void CItemInfoStandardItemModel::BeginDropOldest(int i32Lines) {
    int rowsGone = 0;
    while (rowsGone < m_vecRowLines.size() && m_vecRowLines[rowsGone] < i32Lines)
        ++rowsGone;
    for (int i = m_i32Loaded; i < qMin(i32Lines, m_pStore->size()); ++i)
        if ((*m_pStore)[i].bShown)
            --m_i32Unloaded;
    m_i32DroppingRows = rowsGone;
    if (rowsGone > 0) {
        beginRemoveRows(QModelIndex(), 0, rowsGone - 1);
        m_vecRowLines.remove(0, rowsGone);
    }
}

void CItemInfoStandardItemModel::EndDropOldest(int i32Lines) {
    for (int& line : m_vecRowLines)
        line -= i32Lines;
    m_i32Loaded = qMax(0, m_i32Loaded - i32Lines);
    if (m_i32DroppingRows > 0)
        endRemoveRows();
    m_i32DroppingRows = 0;
}

void CItemInfoStandardItemModel::Restart() {
    beginResetModel();
    m_vecRowLines.clear();
    m_i32Loaded = 0;
    m_i32Unloaded = 0;
    for (const auto& item : qAsConst(*m_pStore))
        if (item.bShown)
            ++m_i32Unloaded;
    endResetModel();
}

void CItemInfoStandardItemModel::JumpToNewest() {
    if (m_i32Unloaded <= 2 * m_i32Batch)
        return;
    beginResetModel();
    m_vecRowLines.clear();
    int keep = m_i32Batch;
    int i = m_pStore->size();
    while (i > m_i32Loaded && keep > 0) {
        --i;
        if ((*m_pStore)[i].bShown)
            --keep;
    }
    m_i32Loaded = i;
    m_i32Unloaded = m_i32Batch - keep;
    endResetModel();
}

int CItemInfoStandardItemModel::LineOfRow(int row) const {
    return row >= 0 && row < m_vecRowLines.size() ? m_vecRowLines[row] : -1;
}

void NoWrapDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->features &= ~QStyleOptionViewItem::WrapText;
    option->textElideMode = Qt::ElideRight;
    option->text.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

// ---------------------------------------------------------------------------------------------
// Window

CLogViewerWnd* CLogViewerWnd::Singleton() {
    if (!s_pCLogViewerWnd && LXUIKIT_ASSERT_MAIN_THREAD())
        new CLogViewerWnd(nullptr);
    return s_pCLogViewerWnd;
}

CLogViewerWnd* CLogViewerWnd::Instance() { return s_pCLogViewerWnd; }

int CLogViewerWnd::SaveInfoSize() { return SAVE_INFO_SIZE; }

bool CLogViewerWnd::IsCollecting() { return g_stdOutUIIsVisible.load(std::memory_order_relaxed); }

bool CLogViewerWnd::isAutoOpen() { return core::app_setting::GetBool(kAutoOpenKey, false); }

CLogViewerWnd::CLogViewerWnd(QWidget* parent) : QWidget(parent), d(std::make_unique<CLogViewerWndPrivate>()) {
    InitDialog();
}

CLogViewerWnd::~CLogViewerWnd() {
    if (d->pSaveTimer && d->pSaveTimer->isActive())
        SaveConfigToCache();
    if (s_pCLogViewerWnd == this) {
        s_pCLogViewerWnd = nullptr;
        g_stdOutUIIsVisible = false;
        std::deque<Chunk> gone;  // queued records belonged to this window; freed after unlocking
        std::unique_lock<std::mutex> lock(Queue().mutex);
        gone.swap(Queue().dequeChunks);
        Queue().i32Count = 0;
        Queue().i64Skipped = 0;
        g_i32PendingCount.store(0);
        lock.unlock();
    }
}

void CLogViewerWnd::InitDialog() {
    // One window per process: a second one works but never becomes the singleton.
    if (LXUIKIT_ASSERT(s_pCLogViewerWnd == nullptr))
        s_pCLogViewerWnd = this;
    setObjectName(QStringLiteral("CLogViewerWnd"));
    setWindowTitle(QStringLiteral("超级开发者工具（快捷键 Ctrl+F9）"));
    setLayoutDirection(Qt::LeftToRight);
    setWindowFlags(Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                   Qt::WindowCloseButtonHint);

    SetupUi();
    if (!ReadConfigFromCache()) {
        if (QScreen* screen = QGuiApplication::primaryScreen()) {
            const QSize half(qRound(screen->geometry().width() / 2.0), qRound(screen->geometry().height() / 2.0));
            resize(half);
        }
    }
    SAVE_INFO_SIZE = kInitialSaveInfoSize * 10;
    d->bToolAvailable = devtools::IsAvailable();
    lx_devtools::LModalBypassHelper::Attach(this);

    d->pFlushTimer = new QTimer(this);
    d->pFlushTimer->setTimerType(Qt::CoarseTimer);
    d->pFlushTimer->setInterval(kFlushIntervalMs);
    LXUIKIT_SAFE_CONNECT(d->pFlushTimer.data(), &QTimer::timeout, this, &CLogViewerWnd::DrainTurn);
    d->pFlushTimer->start();
    d->pSaveTimer = new QTimer(this);
    d->pSaveTimer->setSingleShot(true);
    d->pSaveTimer->setInterval(kSaveDelayMs);
    LXUIKIT_SAFE_CONNECT(d->pSaveTimer.data(), &QTimer::timeout, this, &CLogViewerWnd::SaveConfigToCache);

    ApplyTheme();
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                         [this] { ApplyTheme(); });
    // Nothing may be collected once the application is going down.
    LXUIKIT_SAFE_CONNECT(qApp, &QCoreApplication::aboutToQuit, this, [] { g_stdOutUIIsVisible = false; });
}

void CLogViewerWnd::SetupUi() {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    d->pTabs = new QTabWidget(this);
    outer->addWidget(d->pTabs);

    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("AppStdOutTabWidget_Content"));
    auto* pageLayout = new QVBoxLayout(page);
    pageLayout->setContentsMargins(10, 0, 10, 0);
    pageLayout->setSpacing(5);

    auto* top = new QGridLayout;
    top->setHorizontalSpacing(10);
    top->setVerticalSpacing(1);
    int col = 0;
    d->pSelectAll = new QCheckBox(QStringLiteral("全选"), page);
    top->addWidget(d->pSelectAll, 0, col++);
    const QPair<int, const char*> typeBoxes[] = {
        {LxLogType_Protocol, "协议"}, {LxLogType_Qt, "QT框架"},   {LxLogType_Web, "Web"},
        {LxLogType_Debug, "调试"},    {LxLogType_Info, "信息"},   {LxLogType_Warning, "警告"},
        {LxLogType_Error, "错误"},    {LxLogType_Report, "上报"}, {LxLogType_System, "系统"},
    };
    for (const auto& tb : typeBoxes) {
        auto* box = new QCheckBox(QString::fromUtf8(tb.second), page);
        box->setProperty("lx_log_type", tb.first);
        d->vecTypeChecks.append({tb.first, box});
        top->addWidget(box, 0, col++);
        LXUIKIT_SAFE_CONNECT(box, &QCheckBox::clicked, this, [this] {
            UpdateSelectAllCheckBoxState();
            UpdateAllFilterFlags();
        });
    }
    LXUIKIT_SAFE_CONNECT(d->pSelectAll.data(), &QCheckBox::clicked, this, [this](bool checked) {
        for (auto& tb : d->vecTypeChecks)
            if (tb.second)
                tb.second->setChecked(checked);
        UpdateAllFilterFlags();
    });

    top->addWidget(new QLabel(QStringLiteral("过滤: "), page), 0, col++);
    d->m_filterComboBox = new QComboBox(page);
    d->m_filterComboBox->setEditable(true);
    d->m_filterComboBox->setFixedSize(180, 25);
    d->m_filterComboBox->setMaxVisibleItems(5);
    d->m_filterComboBox->setStyleSheet(QStringLiteral("QComboBox QAbstractItemView::item {   height: 25px;}"));
    d->m_filterComboBox->setInsertPolicy(QComboBox::InsertAtTop);
    top->addWidget(d->m_filterComboBox, 0, col++);
    LXUIKIT_SAFE_CONNECT(d->m_filterComboBox.data(), &QComboBox::editTextChanged, this,
                         &CLogViewerWnd::OnFilterEditTextChanged);

    auto makeButton = [&](const char* text, int w) {
        auto* b = new QPushButton(QString::fromUtf8(text), page);
        b->setFixedSize(w, 25);
        b->setFocusPolicy(Qt::NoFocus);
        top->addWidget(b, 0, col++);
        return b;
    };
    d->pClearBtn = makeButton("清空", 60);
    d->pCommonFilterBtn = makeButton("常用过滤词", 90);
    d->pAutoScroll = new QCheckBox(QStringLiteral("自动滚动"), page);
    d->pAutoScroll->setStyleSheet(QStringLiteral("QCheckBox:checked {color: red;}"));
    d->pAutoScroll->setChecked(true);
    top->addWidget(d->pAutoScroll, 0, col++);
    d->pRegExp = new QCheckBox(QStringLiteral("正则表达式"), page);
    top->addWidget(d->pRegExp, 0, col++);
    d->pAutoOpenBtn = makeButton("自动打开", 80);
    d->pAutoOpenBtn->setCheckable(true);
    d->pAutoOpenBtn->setChecked(isAutoOpen());
    d->pSpyBtn = makeButton("QT Spy", 60);
    d->pUiDemoBtn = makeButton("UI-Demo", 60);
    top->setColumnStretch(col, 1);
    pageLayout->addLayout(top);

    LXUIKIT_SAFE_CONNECT(d->pClearBtn.data(), &QPushButton::clicked, this, &CLogViewerWnd::onClearButtonClicked);
    LXUIKIT_SAFE_CONNECT(d->pCommonFilterBtn.data(), &QPushButton::clicked, this,
                         &CLogViewerWnd::onCommonFilterButtonClicked);
    LXUIKIT_SAFE_CONNECT(d->pRegExp.data(), &QCheckBox::clicked, this, [this] { UpdateAllFilterFlags(); });
    LXUIKIT_SAFE_CONNECT(d->pAutoOpenBtn.data(), &QPushButton::toggled, this,
                         [](bool on) { core::app_setting::SetBool(kAutoOpenKey, on); });
    LXUIKIT_SAFE_CONNECT(d->pSpyBtn.data(), &QPushButton::clicked, this, [] { initSpyToolWnd(true); });
    LXUIKIT_SAFE_CONNECT(d->pUiDemoBtn.data(), &QPushButton::clicked, this, &CLogViewerWnd::showUiDemo);

    d->pModel = new CItemInfoStandardItemModel(this, &d->vecStore, kFetchBatch);
    d->pList = new QTableView(page);
    d->pList->setModel(d->pModel);
    const int widths[] = {35, 84, 45, 7000, 200};
    for (int i = 0; i < 5; ++i)
        d->pList->setColumnWidth(i, widths[i]);
    d->pList->setSelectionBehavior(QAbstractItemView::SelectRows);
    d->pList->setEditTriggers(QAbstractItemView::NoEditTriggers);
    d->pList->setSortingEnabled(false);
    d->pList->setShowGrid(false);
    d->pList->setAutoScroll(false);
    d->pList->setWordWrap(false);
    QHeaderView* rows = d->pList->verticalHeader();
    rows->setMinimumSectionSize(23);
    rows->setMaximumSectionSize(23);
    rows->setDefaultSectionSize(23);
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->hide();
    d->pList->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    d->pList->setItemDelegateForColumn(3, new NoWrapDelegate(d->pList));
    d->pList->setContextMenuPolicy(Qt::CustomContextMenu);
    LXUIKIT_SAFE_CONNECT(d->pList.data(), &QTableView::clicked, this, &CLogViewerWnd::onListViewItemClicked);
    LXUIKIT_SAFE_CONNECT(d->pList.data(), &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        QMenu menu(this);
        menu.addAction(QStringLiteral("日志统计信息"), this, &CLogViewerWnd::showStatistics);
        menu.exec(d->pList->viewport()->mapToGlobal(pos));
    });

    d->pDetail = new QPlainTextEdit(page);
    d->pDetail->setReadOnly(true);
    pageLayout->addWidget(d->pList, 7);
    pageLayout->addWidget(d->pDetail, 2);

    d->pStatus = new QLabel(page);
    d->pStatus->setTextFormat(Qt::RichText);
    pageLayout->addWidget(d->pStatus);

    d->pTabs->addTab(page, QStringLiteral("标准输出"));
    LXUIKIT_SAFE_CONNECT(d->pTabs.data(), &QTabWidget::currentChanged, this, &CLogViewerWnd::OnTabOpened);
    RefreshStatus();
}

void CLogViewerWnd::OnTabOpened(int index) {
    QWidget* holder = d->pTabs ? d->pTabs->widget(index) : nullptr;
    auto it = d->hashPendingTabs.find(holder);
    if (!holder || it == d->hashPendingTabs.end())
        return;
    const core::CSafeFunction<QWidget*()> factory = it.value();
    d->hashPendingTabs.erase(it);
    QWidget* content = factory.IsCallable() ? factory() : nullptr;
    if (!content) {
        LXUIKIT_LOG_WARN("developer tools tab {} has no page: its factory is gone or made nothing",
                         d->pTabs->tabText(index));
        return;
    }
    holder->layout()->addWidget(content);
}

void CLogViewerWnd::AddUserTab(const QString& title, core::CSafeFunction<QWidget*()> factory) {
    if (!d->pTabs)
        return;
    // The page is made when the tab is first opened: a tool tab costs nothing until it is used.
    auto* holder = new QWidget;
    auto* layout = new QVBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    d->hashPendingTabs[holder] = std::move(factory);
    const int index = d->pTabs->addTab(holder, title);
    if (d->pTabs->currentIndex() == index)
        OnTabOpened(index);
}

// ---------------------------------------------------------------------------------------------
// Records

void CLogViewerWnd::addMessage(const FrameWork::LogContext& context) {
    if (!g_stdOutUIIsVisible.load(std::memory_order_relaxed))
        return;
    int type = context.i32Level & LxLogType_All;
    if (context.strText.size() > kMaxMessageLength && !(type & LxLogType_Protocol))
        FrameWork::_FW_OnAssertFailed(FrameWork::kAssertWarning, "LxUIKit", __FILE__, __LINE__,
                                      "message.size() <= 10240");
    if (context.strModule == "#Qt#")
        type |= LxLogType_Qt;

    const bool bMain = OnMainThread();
    if (bMain && s_bAdding)
        return;  // logged while a line is being added: dropped, the line in progress comes first
    ItemData item;
    // A huge text is cut here already so the queue never holds it whole; one character more than
    // the limit is kept so that the line is still marked as cut when it is added.
    item.strMessage =
        context.strText.size() > kMaxMessageLength + 1 ? context.strText.left(kMaxMessageLength + 1) : context.strText;
    item.strLocation = LocationOf(context);
    item.eType = LxLogType(type);

    if (bMain) {
        CLogViewerWnd* wnd = Singleton();
        if (!wnd)
            return;
        // Worker lines written before this one go first. When a flood left more than one turn's
        // work, this line waits behind it instead of stalling the GUI thread on the whole backlog.
        wnd->DrainTurn();
        if (wnd->d->i64Backlog > 0) {
            if (wnd->d->dequeBacklog.empty() || wnd->d->dequeBacklog.back().size() >= kChunkSize) {
                wnd->d->dequeBacklog.emplace_back();
                wnd->d->dequeBacklog.back().reserve(kChunkSize);
            }
            wnd->d->dequeBacklog.back().append(std::move(item));
            ++wnd->d->i64Backlog;
            return;
        }
        wnd->addMessageInMain(item.strMessage, item.strLocation, item.eType);
        return;
    }
    Chunk gone;  // a chunk trimmed off the queue's front, freed after the lock is let go
    {
        PendingQueue& q = Queue();
        std::unique_lock<std::mutex> lock(q.mutex);
        if (q.dequeChunks.empty() || q.dequeChunks.back().size() >= kChunkSize) {
            Chunk fresh;
            if (!q.vecSpare.empty()) {
                fresh = std::move(q.vecSpare.back());
                q.vecSpare.pop_back();
            }
            lock.unlock();
            fresh.clear();  // frees what a reused chunk still holds; keeps its capacity
            fresh.reserve(kChunkSize);
            lock.lock();
            // Another writer may have started a chunk meanwhile: this one goes after it, and every
            // record still lands behind the ones written before it.
            q.dequeChunks.push_back(std::move(fresh));
        }
        q.dequeChunks.back().append(std::move(item));
        ++q.i32Count;
        // Lines with a store's worth of newer lines behind them can never be kept: drop them here,
        // a chunk at a time, so a flood between two drains cannot grow the queue without bound.
        if (q.i32Count >= 2 * (SAVE_INFO_SIZE + kDropBlock) && q.dequeChunks.size() > 1) {
            gone.swap(q.dequeChunks.front());
            q.dequeChunks.pop_front();
            q.i32Count -= gone.size();
            q.i64Skipped += gone.size();
        }
        g_i32PendingCount.store(q.i32Count, std::memory_order_relaxed);
    }
}

bool CLogViewerWnd::HasPendingMessages() const {
    return d->i64Backlog > 0 || g_i32PendingCount.load(std::memory_order_relaxed) > 0;
}

void CLogViewerWnd::FlashPendingMessage() { Drain(-1); }

void CLogViewerWnd::DrainTurn() {
    Drain(s_i64DrainTurnBudgetNs);
    // What the turn left is picked up again as soon as the events waiting now have been handled.
    if (d->i64Backlog > 0 && !d->bTurnPosted) {
        d->bTurnPosted = true;
        QPointer<CLogViewerWnd> self(this);
        QTimer::singleShot(0, this, [self] {
            if (!self)
                return;
            self->d->bTurnPosted = false;
            self->DrainTurn();
        });
    }
}

void CLogViewerWnd::Drain(qint64 i64BudgetNs) {
    if (s_bAdding)
        return;
    qint64 skipped = 0;
    if (g_i32PendingCount.load(std::memory_order_relaxed) > 0) {
        std::deque<Chunk> taken;
        {
            std::unique_lock<std::mutex> lock(Queue().mutex);
            taken.swap(Queue().dequeChunks);
            skipped = Queue().i64Skipped;
            Queue().i64Skipped = 0;
            Queue().i32Count = 0;
            g_i32PendingCount.store(0, std::memory_order_relaxed);
        }
        for (Chunk& chunk : taken) {
            d->i64Backlog += chunk.size();
            d->dequeBacklog.push_back(std::move(chunk));
        }
    }
    if (d->i64Backlog == 0 && skipped == 0)
        return;
    QElapsedTimer clock;
    clock.start();
    s_bAdding = true;
    // The lines that would be dropped before the backlog is through are never built: only the
    // sequence numbers move on. What remains is exactly what adding every record one by one would
    // keep, whether it goes in now or over several turns.
    const int finalSize =
        devtools::log::detail::StoreSizeAfter(d->vecStore.size(), skipped + d->i64Backlog, SAVE_INFO_SIZE);
    const qint64 fromBacklog = qMin<qint64>(d->i64Backlog, finalSize);
    const int fromStore = finalSize - int(fromBacklog);
    if (d->vecStore.size() > fromStore)
        DropOldest(d->vecStore.size() - fromStore);
    qint64 toSkip = d->i64Backlog - fromBacklog;
    d->i32NextSeq += int(skipped + toSkip);
    d->i64Backlog -= toSkip;
    std::vector<Chunk> spent;  // chunks gone through, handed back to the writers at the end
    const auto popFront = [this, &spent] {
        spent.push_back(std::move(d->dequeBacklog.front()));
        d->dequeBacklog.pop_front();
        d->i32BacklogFront = 0;
    };
    while (toSkip > 0) {
        Chunk& front = d->dequeBacklog.front();
        const int left = front.size() - d->i32BacklogFront;
        if (toSkip >= left) {
            toSkip -= left;
            popFront();
        } else {
            d->i32BacklogFront += int(toSkip);
            toSkip = 0;
        }
    }
    const QDateTime now = QDateTime::currentDateTime();
    int added = 0;
    while (d->i64Backlog > 0) {
        Chunk& front = d->dequeBacklog.front();
        AddLine(std::move(front[d->i32BacklogFront]), now, true);
        --d->i64Backlog;
        if (++d->i32BacklogFront >= front.size())
            popFront();
        if (i64BudgetNs >= 0 && ++added % kClockEveryLines == 0 && clock.nsecsElapsed() > i64BudgetNs)
            break;
    }
    if (d->i64Backlog == 0) {
        d->dequeBacklog.clear();
        d->i32BacklogFront = 0;
    }
    s_bAdding = false;
    RecycleChunks(&spent);
    if (d->pModel && isVisible())
        d->pModel->Update(0);
    RefreshStatus();
    ScheduleAutoScroll();
}

void CLogViewerWnd::addMessageInMain(const QString& message, const QString& location, LxLogType type) {
    if (s_bAdding)
        return;
    LXUIKIT_ASSERT_MAIN_THREAD();
    s_bAdding = true;
    ItemData item;
    item.strMessage = message;
    item.strLocation = location;
    item.eType = type;
    AddLine(std::move(item), QDateTime::currentDateTime(), false);
    // The store never holds more than its cap: a line past it drops the oldest block.
    if (d->vecStore.size() > SAVE_INFO_SIZE)
        DropOldest(kDropBlock);
    s_bAdding = false;
    RefreshStatus();
    ScheduleAutoScroll();
}

void CLogViewerWnd::AddLine(ItemData&& item, const QDateTime& now, bool bBulk) {
    if (item.strMessage.size() > kMaxMessageLength) {
        item.strMessage.truncate(kMaxMessageLength);
        item.strMessage += QLatin1String("...");
    }
    item.i32Seq = d->i32NextSeq++;
    item.time = now;
    item.bShown = false;
    d->i64TextLength += item.strMessage.size();
    d->vecStore.append(std::move(item));
    ItemData& added = d->vecStore.last();
    if (isVisible() && d->pList && (added.eType & d->i32FilterMask) &&
        (d->strFilterText.isEmpty() || IsTextMatchFilter(added))) {
        added.bShown = true;
        d->pModel->OnLineShown();
        if (!bBulk)
            d->pModel->Update(0);
    }
}

void CLogViewerWnd::DropOldest(int i32Count) {
    i32Count = qMin(i32Count, d->vecStore.size());
    if (i32Count <= 0)
        return;
    d->pModel->BeginDropOldest(i32Count);
    for (int i = 0; i < i32Count; ++i)
        d->i64TextLength -= d->vecStore[i].strMessage.size();
    d->vecStore.erase(d->vecStore.begin(), d->vecStore.begin() + i32Count);
    d->pModel->EndDropOldest(i32Count);
}

// ---------------------------------------------------------------------------------------------
// Filters

bool CLogViewerWnd::IsTextMatchFilter(const ItemData& item) {
    const QString text = FilterText();
    if (d->pRegExp && d->pRegExp->isChecked()) {
        if (d->strRegExpPattern != text || d->regExp.pattern() != text) {
            d->strRegExpPattern = text;
            d->regExp.setPattern(text);
        }
        if (!d->regExp.isValid())
            return false;
        // A match at the very first character of a field does not count.
        return d->regExp.indexIn(item.strMessage) > 0 || d->regExp.indexIn(item.strLocation) > 0;
    }
    return item.strMessage.contains(text, Qt::CaseInsensitive) || item.strLocation.contains(text, Qt::CaseInsensitive);
}

void CLogViewerWnd::UpdateAllFilterFlags() {
    if (d->m_filterComboBox)
        d->strFilterText = d->m_filterComboBox->currentText();
    int mask = 0;
    for (const auto& tb : qAsConst(d->vecTypeChecks))
        if (tb.second && tb.second->isChecked())
            mask |= tb.first;
    d->i32FilterMask = mask;
    const QString text = FilterText();
    const bool bRegExp = d->pRegExp && d->pRegExp->isChecked();
    if (bRegExp) {
        d->strRegExpPattern = text;
        d->regExp.setPattern(text);
    }
    if (d->m_filterComboBox) {
        const bool bBroken = bRegExp && !d->regExp.isValid();
        // A new style sheet re-polishes the box: only when the frame really changes.
        if (bBroken != d->bFilterShownBroken) {
            d->bFilterShownBroken = bBroken;
            d->m_filterComboBox->setStyleSheet(
                QStringLiteral("QComboBox QAbstractItemView::item {   height: 25px;}") +
                (bBroken ? QStringLiteral(" QComboBox { border: 1px solid #CF0000; }") : QString()));
        }
        d->m_filterComboBox->setToolTip(bBroken ? d->regExp.errorString() : QString());
    }
    const bool bCollect = isVisible();
    for (ItemData& item : d->vecStore)
        item.bShown = bCollect && (item.eType & mask) && (text.isEmpty() || IsTextMatchFilter(item));
    d->pModel->Restart();
    d->pModel->Update(0);
    if (d->pList)
        d->pList->scrollToBottom();
    RefreshStatus();
    if (d->pSaveTimer)
        d->pSaveTimer->start();
}

void CLogViewerWnd::UpdateSelectAllCheckBoxState() {
    bool all = true;
    for (const auto& tb : qAsConst(d->vecTypeChecks))
        all = all && tb.second && tb.second->isChecked();
    if (d->pSelectAll)
        d->pSelectAll->setChecked(all);
}

void CLogViewerWnd::OnFilterEditTextChanged(const QString&) { UpdateAllFilterFlags(); }

void CLogViewerWnd::onClearButtonClicked() {
    d->vecStore.clear();
    d->i64TextLength = 0;
    d->pModel->Restart();
    if (d->pDetail)
        d->pDetail->clear();
    RefreshStatus();
}

void CLogViewerWnd::onListViewItemClicked(const QModelIndex& index) {
    const int line = d->pModel->LineOfRow(index.row());
    if (line < 0 || line >= d->vecStore.size() || !d->pDetail)
        return;
    const ItemData& item = d->vecStore[line];
    d->pDetail->setPlainText(item.strMessage + QStringLiteral("\n\n") + item.strLocation);
}

void CLogViewerWnd::onCommonFilterButtonClicked() {
    CLogFilterDialog dlg(this);
    LXUIKIT_SAFE_CONNECT(&dlg, &CLogFilterDialog::itemSelected, this, [this, &dlg](const QString& text) {
        if (d->m_filterComboBox)
            d->m_filterComboBox->setEditText(text);
        dlg.accept();
    });
    lx_devtools::LModalBypassHelper::Attach(&dlg);
    dlg.exec();
}

void CLogViewerWnd::showStatistics() {
    auto* dlg = new CLogStatisticsDialog(this);
    dlg->setAttribute(Qt::WA_DeleteOnClose);
    dlg->SetData(FrameWork::GetLogStatistics());
    dlg->show();
}

// ---------------------------------------------------------------------------------------------
// Status, scrolling, settings

void CLogViewerWnd::RefreshStatus() {
    if (!d->pStatus)
        return;
    QString regExp;
    if (d->pRegExp && d->pRegExp->isChecked()) {
        regExp = FilterText();
        if (!regExp.isEmpty() && !QRegExp(regExp).isValid())
            regExp += QStringLiteral(" (无效)");
        regExp = regExp.toHtmlEscaped();
    }
    const std::string text = lx_log_detail::Format(
        "<html><head/><body><p>合计: <span style=\" color:#ff0000;\">{}</span> 条,&nbsp;&nbsp;&nbsp;&nbsp;已加载:<span "
        "style=\" color:#ff0000;\">{}</span> 条 内容长度:{}  数据大小:{}KB<span style=\" "
        "color:#ff0000;\">；正则表达式:{}</span></p></body></html>",
        d->vecStore.size(), d->pModel->rowCount(), d->i64TextLength, d->i64TextLength * 2 / 1024, regExp);
    d->pStatus->setText(QString::fromStdString(text));
}

void CLogViewerWnd::ScheduleAutoScroll() {
    if (!d->pAutoScroll || !d->pAutoScroll->isChecked() || !isVisible())
        return;
    if (QGuiApplication::mouseButtons() & Qt::LeftButton)
        return;  // the user may be dragging the scroll bar
    // The flag is the window's own: a scroll task left over from a closed window must not hold back
    // the next window's scrolling.
    if (d->bScrollPending || QCoreApplication::closingDown())
        return;
    d->bScrollPending = true;
    QPointer<CLogViewerWnd> self(this);
    core::post::ToMainDelay(
        [self] {
            if (!self)
                return;
            self->d->bScrollPending = false;
            if (QCoreApplication::closingDown() || !self->d->pList)
                return;
            self->d->pModel->JumpToNewest();
            self->d->pModel->Update(0);
            self->d->pList->scrollToBottom();
            self->RefreshStatus();
        },
        kScrollDelayMs);
}

bool CLogViewerWnd::ReadConfigFromCache() {
    core::CIniWrapper ini = CommonSettings();
    const int mask = ini.GetInt(kSection, QStringLiteral("StdOutFilter"), LxLogType_All);
    d->i32FilterMask = mask & LxLogType_All;
    for (auto& tb : d->vecTypeChecks)
        if (tb.second)
            tb.second->setChecked(d->i32FilterMask & tb.first);
    UpdateSelectAllCheckBoxState();
    if (d->m_filterComboBox) {
        const QSignalBlocker block(d->m_filterComboBox.data());
        d->strFilterText = ini.GetString(kSection, QStringLiteral("StdOutFilterString"));
        d->m_filterComboBox->setEditText(d->strFilterText);
    }

    const QStringList geometry = ini.GetString(kSection, QStringLiteral("Geometry")).split(QLatin1Char('-'));
    if (geometry.size() != 4)
        return false;
    bool ok[4] = {};
    const QRect rect(geometry[0].toInt(&ok[0]), geometry[1].toInt(&ok[1]), geometry[2].toInt(&ok[2]),
                     geometry[3].toInt(&ok[3]));
    if (!(ok[0] && ok[1] && ok[2] && ok[3]) || rect.width() <= 0 || rect.height() <= 0)
        return false;
    const QList<QScreen*> screens = QGuiApplication::screens();
    const int screenIndex = ini.GetInt(kSection, QStringLiteral("ScreenIndex"), 0);
    QScreen* screen =
        screenIndex >= 0 && screenIndex < screens.size() ? screens[screenIndex] : QGuiApplication::primaryScreen();
    QRect placed = rect;
    if (screen && !screen->availableGeometry().intersects(rect)) {
        // The saved spot is off the screen now (a screen went away): keep the size, centre it.
        placed.moveCenter(screen->availableGeometry().center());
    }
    resize(placed.size());
    move(placed.topLeft());
    return true;
}

void CLogViewerWnd::SaveConfigToCache() {
    if (d->pSaveTimer)
        d->pSaveTimer->stop();
    core::CIniWrapper ini = CommonSettings();
    const QList<QScreen*> screens = QGuiApplication::screens();
    const int screenIndex = screen() ? screens.indexOf(screen()) : 0;
    ini.SetValue(kSection, QStringLiteral("ScreenIndex"), qMax(0, screenIndex));
    const QRect g = geometry();
    ini.SetValue(kSection, QStringLiteral("Geometry"),
                 QStringLiteral("%1-%2-%3-%4").arg(g.x()).arg(g.y()).arg(g.width()).arg(g.height()));
    ini.SetValue(kSection, QStringLiteral("StdOutFilter"), d->i32FilterMask);
    ini.SetValue(kSection, QStringLiteral("StdOutFilterString"), FilterText());
}

void CLogViewerWnd::ApplyTheme() {
    // Plain Qt controls: the theme reaches them through the palette (the line colours stay fixed).
    setPalette(lx_ui_theme::ThemedPalette(style()->standardPalette()));
    setAutoFillBackground(true);
}

// ---------------------------------------------------------------------------------------------
// Showing

void CLogViewerWnd::show() {
    if (!devtools::IsAvailable())
        return;
    if (d->bToolAvailable) {
        QWidget::show();
        return;
    }
    core::app_setting::SetBool(kAutoOpenKey, false);
    gui::ShowSimpleToast(QStringLiteral("该工具仅在内网可用！更多信息请联系平台。"), TriBool::Neutral, 5000);
    close();
}

void CLogViewerWnd::setToolAvailable(bool bAvailable) { d->bToolAvailable = bAvailable; }
bool CLogViewerWnd::isToolAvailable() const { return d->bToolAvailable; }

void CLogViewerWnd::showUiDemo() {
    QLibrary lib;
    QString error;
    bool loaded = false;
    const QStringList candidates = devtools::log::detail::UiDemoCandidates();
    for (const QString& candidate : candidates) {
        lib.setFileName(candidate);
        if (lib.load()) {
            loaded = true;
            break;
        }
        error = lib.errorString();
    }
    if (!loaded) {
        LXUIKIT_LOG_ERROR("LxStdUiDemo load failed");
        LXUIKIT_LOG_DEBUG("LxStdUiDemo loader said: {}", error);
        return;
    }
    using ShowMainWnd = void (*)();
    auto fn = reinterpret_cast<ShowMainWnd>(lib.resolve("showMainWnd"));
    if (!fn) {
        LXUIKIT_LOG_ERROR("LxStdUiDemo showMainWnd resolve failed: {}", lib.errorString());
        return;
    }
    fn();  // the library stays loaded: its window lives on
}

void CLogViewerWnd::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    if (s_pCLogViewerWnd == this)
        g_stdOutUIIsVisible = true;
    UpdateAllFilterFlags();
}

void CLogViewerWnd::hideEvent(QHideEvent* e) {
    QWidget::hideEvent(e);
    if (s_pCLogViewerWnd == this)
        g_stdOutUIIsVisible = false;
    SaveConfigToCache();
}

void CLogViewerWnd::closeEvent(QCloseEvent* e) {
    SaveConfigToCache();
    QWidget::closeEvent(e);
}

// ---------------------------------------------------------------------------------------------
// Read access

const QVector<CLogViewerWnd::ItemData>& CLogViewerWnd::Lines() const { return d->vecStore; }
int CLogViewerWnd::FilterMask() const { return d->i32FilterMask; }
QString CLogViewerWnd::FilterText() const { return d->strFilterText; }
QString CLogViewerWnd::StatusText() const { return d->pStatus ? d->pStatus->text() : QString(); }
QString CLogViewerWnd::DetailText() const { return d->pDetail ? d->pDetail->toPlainText() : QString(); }
