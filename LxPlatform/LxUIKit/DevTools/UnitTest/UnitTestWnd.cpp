#include <LxUIKit/DevTools/UnitTest/UnitTestWnd.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <LxBusiness/UnitTestManager.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
QString StateText(CUnitTestSessionResult::State state) {
    switch (state) {
    case CUnitTestSessionResult::Passed: return DevText("通过");
    case CUnitTestSessionResult::Failed: return DevText("失败");
    case CUnitTestSessionResult::Queued: return DevText("等待");
    default: return DevText("未运行");
    }
}
}  // namespace

CUnitTestWnd::CUnitTestWnd(QWidget* parent) : QWidget(parent) {
    setWindowTitle(DevText("单元测试"));
    setProperty("popup_widget", true);
    resize(760, 480);
    m_pRunAll = new QPushButton(DevText("全部运行"), this);
    m_pRunSelected = new QPushButton(DevText("运行选中"), this);
    m_pReload = new QPushButton(DevText("刷新列表"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_pRunAll);
    buttons->addWidget(m_pRunSelected);
    buttons->addWidget(m_pReload);
    buttons->addStretch(1);

    m_pList = new QTreeWidget(this);
    m_pList->setRootIsDecorated(false);
    m_pList->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pList->setHeaderLabels({DevText("测试项"), DevText("结果"), DevText("耗时（ms）"), DevText("信息")});
    m_pList->header()->setSectionResizeMode(NameColumn, QHeaderView::ResizeToContents);
    m_pList->header()->setStretchLastSection(true);
    m_pSummary = new QLabel(this);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_pList, 1);
    layout->addWidget(m_pSummary);

    CUnitTestManager* mgr = CUnitTestManager::instance();
    LXUIKIT_SAFE_CONNECT(m_pRunAll.data(), &QPushButton::clicked, this, [this] { RunAll(); });
    LXUIKIT_SAFE_CONNECT(m_pRunSelected.data(), &QPushButton::clicked, this, [this] { RunSelected(); });
    LXUIKIT_SAFE_CONNECT(m_pReload.data(), &QPushButton::clicked, this, &CUnitTestWnd::Reload);
    LXUIKIT_SAFE_CONNECT(mgr, &CUnitTestManager::sessionFinished, this, &CUnitTestWnd::OnSessionFinished);
    LXUIKIT_SAFE_CONNECT(mgr, &CUnitTestManager::runFinished, this, &CUnitTestWnd::OnRunFinished);
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this, [this] {
        for (int i = 0; i < m_pList->topLevelItemCount(); ++i)
            ShowResult(CUnitTestManager::instance()->GetResult(m_pList->topLevelItem(i)->text(NameColumn)));
    });
    Reload();
}

void CUnitTestWnd::showEvent(QShowEvent* event) {
    if (!CUnitTestManager::instance()->IsRunning())
        Reload();
    QWidget::showEvent(event);
}

void CUnitTestWnd::Reload() {
    m_pList->clear();
    const QStringList names = CUnitTestManager::instance()->GetTestSessionNames();
    for (const QString& name : names) {
        new QTreeWidgetItem(m_pList, QStringList{name});
        ShowResult(CUnitTestManager::instance()->GetResult(name));
    }
    m_pSummary->setText(DevText("共 %1 项").arg(names.size()));
    SetRunning(CUnitTestManager::instance()->IsRunning());
}

bool CUnitTestWnd::RunAll() {
    if (!CUnitTestManager::instance()->StartRun())
        return false;
    Reload();
    m_pSummary->setText(DevText("运行中…"));
    return true;
}

bool CUnitTestWnd::RunSelected() {
    QStringList names;
    const auto selected = m_pList->selectedItems();
    for (QTreeWidgetItem* item : selected)
        names << item->text(NameColumn);
    if (names.isEmpty() || !CUnitTestManager::instance()->StartRun(names))
        return false;
    for (const QString& name : qAsConst(names))
        ShowResult(CUnitTestManager::instance()->GetResult(name));
    SetRunning(true);
    m_pSummary->setText(DevText("运行中…"));
    return true;
}

QString CUnitTestWnd::SummaryText() const { return m_pSummary->text(); }

void CUnitTestWnd::SetRunning(bool bRunning) {
    m_pRunAll->setEnabled(!bRunning);
    m_pRunSelected->setEnabled(!bRunning);
    m_pReload->setEnabled(!bRunning);
}

void CUnitTestWnd::OnSessionFinished(const CUnitTestSessionResult& result) { ShowResult(result); }

void CUnitTestWnd::OnRunFinished(int i32Passed, int i32Failed, double dTotalMs) {
    SetRunning(false);
    m_pSummary->setText(DevText("共 %1 项：通过 %2，失败 %3，耗时 %4 ms")
                            .arg(i32Passed + i32Failed)
                            .arg(i32Passed)
                            .arg(i32Failed)
                            .arg(dTotalMs, 0, 'f', 2));
}

void CUnitTestWnd::ShowResult(const CUnitTestSessionResult& result) {
    const QList<QTreeWidgetItem*> items = m_pList->findItems(result.strName, Qt::MatchExactly, NameColumn);
    if (items.isEmpty())
        return;
    QTreeWidgetItem* item = items.first();
    const bool ran =
        result.enState == CUnitTestSessionResult::Passed || result.enState == CUnitTestSessionResult::Failed;
    item->setText(ResultColumn, StateText(result.enState));
    item->setText(DurationColumn, ran ? QString::number(result.dDurationMs, 'f', 2) : QString());
    item->setText(MessageColumn, result.strMessage);
    item->setToolTip(MessageColumn, result.strMessage);
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    const QColor color = result.enState == CUnitTestSessionResult::Failed   ? res->color("ct_text_red")
                         : result.enState == CUnitTestSessionResult::Passed ? res->color("ct_text_green")
                                                                            : res->color("ct_text_h3");
    item->setForeground(ResultColumn, color);
    if (result.enState == CUnitTestSessionResult::Failed)
        item->setForeground(MessageColumn, color);
    else
        item->setData(MessageColumn, Qt::ForegroundRole, QVariant());
}

QTreeWidget* CUnitTestWnd::List() const { return m_pList; }
