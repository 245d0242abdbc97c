// Hit testing of the widget inspector beside Qt's own searches, on the same points in one run:
//
//   nested widgets (2,000 in a chain of nested panels)
//       devtools::spy::childAtEx  vs  QWidget::childAt  and  QApplication::widgetAt
//   a table of 100,000 rows, a tree of 10,000 expanded items (and the same views with 10x fewer)
//       PseudoWidget::FromWidgetPoint  vs  QWidget::childAt + QAbstractItemView::indexAt
//
// Printed: nanoseconds per call for each, and the ratio kit / anchor. The views are measured at two
// model sizes to show that the cost does not grow with the model.
//
//   bench_spy [calls=20000]
//
// Build in Release for the figures. Ratios are the result; absolute times depend on the machine.

#include <LxUIKit/DevTools/Spy/PseudoWidget.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeView>
#include <QVector>

#include <cstdio>
#include <functional>

namespace {

double NsPerCall(int calls, const QVector<QPoint>& points, const std::function<void(const QPoint&)>& fn) {
    QElapsedTimer t;
    t.start();
    for (int i = 0; i < calls; ++i)
        fn(points[i % points.size()]);
    return double(t.nsecsElapsed()) / calls;
}

QVector<QPoint> Grid(const QSize& size) {
    QVector<QPoint> pts;
    for (int y = 3; y < size.height(); y += 17)
        for (int x = 3; x < size.width(); x += 23)
            pts << QPoint(x, y);
    return pts;
}

void Report(const char* name, double kit, const char* anchorName, double anchor) {
    std::printf("%-34s kit %9.0f ns   %-28s %9.0f ns   ratio %.2f\n", name, kit, anchorName, anchor, kit / anchor);
}

volatile quintptr g_sink = 0;

void BenchNested(int calls) {
    QWidget top;
    top.resize(800, 600);
    // 2,000 widgets: 40 columns of chains 50 deep, each level inset by a pixel.
    for (int c = 0; c < 40; ++c) {
        QWidget* parent = new QWidget(&top);
        parent->setGeometry(c * 20, 0, 20, 600);
        for (int d = 1; d < 50; ++d) {
            auto* w = new QWidget(parent);
            w->setGeometry(0, 1, 20, parent->height() - 1);
            parent = w;
        }
    }
    top.show();
    QCoreApplication::processEvents();
    const QVector<QPoint> pts = Grid(top.size());
    const double kit =
        NsPerCall(calls, pts, [&](const QPoint& p) { g_sink += quintptr(devtools::spy::childAtEx(&top, p)); });
    const double childAt = NsPerCall(calls, pts, [&](const QPoint& p) { g_sink += quintptr(top.childAt(p)); });
    const QPoint origin = top.mapToGlobal(QPoint(0, 0));
    const double widgetAt =
        NsPerCall(calls, pts, [&](const QPoint& p) { g_sink += quintptr(QApplication::widgetAt(origin + p)); });
    Report("nested 2,000 widgets", kit, "QWidget::childAt", childAt);
    Report("nested 2,000 widgets", kit, "QApplication::widgetAt", widgetAt);
}

void BenchView(QAbstractItemView* view, const char* name, int calls) {
    view->resize(800, 600);
    view->show();
    QCoreApplication::processEvents();
    const QVector<QPoint> pts = Grid(view->size());
    const double kit = NsPerCall(calls, pts, [&](const QPoint& p) {
        g_sink += quintptr(PseudoWidget::FromWidgetPoint(view, p).geometry().x());
    });
    QWidget* vp = view->viewport();
    const QPoint off = vp->mapTo(view, QPoint(0, 0));
    const double anchor = NsPerCall(calls, pts, [&](const QPoint& p) {
        g_sink += quintptr(view->childAt(p));
        g_sink += quintptr(view->indexAt(p - off).row());
    });
    Report(name, kit, "childAt + indexAt", anchor);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const int calls = argc > 1 ? std::max(1000, QString::fromLocal8Bit(argv[1]).toInt()) : 20000;
    BenchNested(calls);
    for (int rows : {10000, 100000}) {
        QStandardItemModel model(rows, 4);
        for (int r = 0; r < rows; ++r)
            model.setItem(r, 1, new QStandardItem(QStringLiteral("R%1").arg(r)));
        QTableView table;
        table.setModel(&model);
        table.scrollTo(model.index(rows / 2, 0));
        BenchView(&table, rows == 10000 ? "table 10,000 rows" : "table 100,000 rows", calls);
    }
    for (int items : {1000, 10000}) {
        QStandardItemModel model;
        for (int i = 0; i < items / 10; ++i) {
            auto* parent = new QStandardItem(QStringLiteral("Group %1").arg(i));
            for (int k = 0; k < 9; ++k)
                parent->appendRow(new QStandardItem(QStringLiteral("Item %1.%2").arg(i).arg(k)));
            model.appendRow(parent);
        }
        QTreeView tree;
        tree.setModel(&model);
        tree.expandAll();
        tree.scrollTo(model.index(items / 20, 0));
        BenchView(&tree, items == 1000 ? "tree 1,000 expanded items" : "tree 10,000 expanded items", calls);
    }
    return g_sink == 42 ? 1 : 0;
}
