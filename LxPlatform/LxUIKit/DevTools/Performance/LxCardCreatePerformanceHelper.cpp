#include <LxUIKit/DevTools/Performance/LxCardCreatePerformanceHelper.h>

#include <LxUIKit/DevTools/DevToolsText_p.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QWidget>

LxCardCreatePerformanceHelper* LxCardCreatePerformanceHelper::instance() {
    static LxCardCreatePerformanceHelper* s_p = new LxCardCreatePerformanceHelper();  // lives to the end
    return s_p;
}

void LxCardCreatePerformanceHelper::GetChildrenCount(QWidget* widget, int* total, int* visible) {
    if (!widget || !total)
        return;
    for (QObject* child : widget->children()) {
        if (!child->isWidgetType())
            continue;
        auto* w = static_cast<QWidget*>(child);
        ++*total;
        if (visible && !w->isHidden()) {
            ++*visible;
            GetChildrenCount(w, total, visible);
        } else {
            GetChildrenCount(w, total, nullptr);
        }
    }
}

void LxCardCreatePerformanceHelper::ReportCardCreatePerformanceInfo(QWidget* card, const QString& kind,
                                                                    const QString& name, qint64 elapsedMs) {
    LXUIKIT_ASSERT_RETURN(card);
    PerformanceInfo& info = m_mapInfos[QStringLiteral("%1-%2").arg(kind, name)];
    info.i32Reports += 1;
    info.i64TotalTimeMs += elapsedMs;
    int total = 0;
    int visible = 0;
    GetChildrenCount(card, &total, &visible);
    info.i64TotalCreated += total;
    info.i64TotalVisible += visible;
}

void LxCardCreatePerformanceHelper::ShowCreatePerformanceInfoWindow() {
    if (m_pWindow) {
        m_pWindow->close();
        m_pWindow->deleteLater();
        m_pWindow = nullptr;
    }
    auto* model = new QStandardItemModel(0, 4);
    model->setHorizontalHeaderLabels(
        {DevText("Card"), DevText("平均耗时（ms）"), DevText("平均创建控件数量"), DevText("平均可见控件数量")});
    for (auto it = m_mapInfos.begin(); it != m_mapInfos.end(); ++it) {
        const PerformanceInfo& info = it.value();
        const double n = info.i32Reports > 0 ? double(info.i32Reports) : 1.0;
        QList<QStandardItem*> row;
        row << new QStandardItem(QStringLiteral("%1（%2）").arg(it.key()).arg(info.i32Reports));
        for (double v :
             {double(info.i64TotalTimeMs) / n, double(info.i64TotalCreated) / n, double(info.i64TotalVisible) / n}) {
            auto* item = new QStandardItem;
            item->setData(v, Qt::DisplayRole);
            row << item;
        }
        model->appendRow(row);
    }
    auto* view = new QTableView();
    model->setParent(view);
    view->setModel(model);
    view->setWindowTitle(DevText("Card Create Performance Info"));
    view->setAttribute(Qt::WA_DeleteOnClose);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    view->horizontalHeader()->setStretchLastSection(true);
    view->resize(720, 360);
    m_pWindow = view;
    view->show();
}

void LxCardCreatePerformanceHelper::Clear() { m_mapInfos.clear(); }

QTableView* LxCardCreatePerformanceHelper::Window() const { return m_pWindow; }
