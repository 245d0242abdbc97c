// Hit testing of the widget inspector beside Qt's own searches, on the same points in one run.
//
// One 1000x600 window holds about 6,000 nested widgets on its left and a table view on its right.
// The table's model is set to 1,000 rows and to 1,000,000 rows in turn (a computed model, as large
// lists are in a host). Three cases, each over a grid of points:
//
//   widgets      PseudoWidget::FromWidgetPoint  vs  QApplication::widgetAt  and  QWidget::childAt
//   table cells  PseudoWidget::FromWidgetPoint  vs  the same two anchors, at 1,000 and 1,000,000 rows
//
// The kit answers more than the anchors on a cell (the cell's item, rectangle and text, where the
// anchors stop at the viewport widget), so "childAt + indexAt" is printed too as a closer anchor.
//
// Rounds alternate the two model sizes and the best round of each case is kept, so a busy moment
// on the machine does not land on one size only. Printed: nanoseconds per call, the ratios, and
// whether the two targets hold: widgets within 2x of widgetAt, and the table cell cost at
// 1,000,000 rows within 10% of the cost at 1,000 rows.
//
//   bench_spy [calls=20000] [rounds=5]
//
// Build in Release for the figures. Ratios are the result; absolute times depend on the machine.

#include <LxUIKit/DevTools/Spy/PseudoWidget.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QTableView>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>

namespace {

volatile quintptr g_sink = 0;

// Rows are computed, not stored: a million QStandardItems would measure the model, not the search.
class NumberedModel : public QAbstractTableModel {
public:
    explicit NumberedModel(int rows) : m_rows(rows) {}
    int rowCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : m_rows; }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : 4; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole || !index.isValid())
            return QVariant();
        return QStringLiteral("ZX%1.%2").arg(index.row()).arg(index.column());
    }

private:
    int m_rows;
};

double NsPerCall(int calls, const QVector<QPoint>& points, const std::function<void(const QPoint&)>& fn) {
    QElapsedTimer t;
    t.start();
    for (int i = 0; i < calls; ++i)
        fn(points[i % points.size()]);
    return double(t.nsecsElapsed()) / calls;
}

// Points on a grid inside rect, in the window's coordinates.
QVector<QPoint> Grid(const QRect& rect) {
    QVector<QPoint> pts;
    for (int y = rect.top() + 3; y < rect.bottom(); y += 17)
        for (int x = rect.left() + 3; x < rect.right(); x += 23)
            pts << QPoint(x, y);
    return pts;
}

struct Costs {
    double kit = 1e300, widgetAt = 1e300, childAt = 1e300, childIndexAt = 1e300;
    void keepBest(const Costs& o) {
        kit = std::min(kit, o.kit);
        widgetAt = std::min(widgetAt, o.widgetAt);
        childAt = std::min(childAt, o.childAt);
        childIndexAt = std::min(childIndexAt, o.childIndexAt);
    }
};

class Bench {
public:
    Bench() {
        m_top.resize(1000, 600);
        // 6,000 widgets: 100 columns 6 px wide, each a chain 60 deep whose levels step down a pixel.
        for (int c = 0; c < 100; ++c) {
            auto* parent = new QWidget(&m_top);
            parent->setGeometry(c * 6, 0, 6, 600);
            for (int d = 1; d < 60; ++d) {
                auto* w = new QWidget(parent);
                w->setGeometry(0, 1, 6, parent->height() - 1);
                parent = w;
            }
        }
        m_table = new QTableView(&m_top);
        m_table->setGeometry(600, 0, 400, 600);
        m_top.show();
        QCoreApplication::processEvents();
    }

    Costs widgets(int calls) { return measure(calls, Grid(QRect(0, 0, 600, 600)), false); }

    Costs cells(NumberedModel* model, int calls) {
        m_table->setModel(model);
        m_table->scrollTo(model->index(model->rowCount() / 2, 1), QAbstractItemView::PositionAtCenter);
        QCoreApplication::processEvents();
        // Only points over the cells: the headers are a different branch of the search.
        const QWidget* vp = m_table->viewport();
        const QRect cellsRect(vp->mapTo(&m_top, QPoint(0, 0)), vp->size());
        return measure(calls, Grid(cellsRect), true);
    }

    QString pickedAt(const QPoint& p) { return PseudoWidget::FromWidgetPoint(&m_top, p).className(); }

private:
    Costs measure(int calls, const QVector<QPoint>& pts, bool withIndex) {
        Costs c;
        c.kit = NsPerCall(calls, pts, [&](const QPoint& p) {
            g_sink += quintptr(PseudoWidget::FromWidgetPoint(&m_top, p).geometry().x());
        });
        const QPoint origin = m_top.mapToGlobal(QPoint(0, 0));
        c.widgetAt =
            NsPerCall(calls, pts, [&](const QPoint& p) { g_sink += quintptr(QApplication::widgetAt(origin + p)); });
        c.childAt = NsPerCall(calls, pts, [&](const QPoint& p) { g_sink += quintptr(m_top.childAt(p)); });
        if (withIndex) {
            const QPoint off = m_table->viewport()->mapTo(&m_top, QPoint(0, 0));
            c.childIndexAt = NsPerCall(calls, pts, [&](const QPoint& p) {
                g_sink += quintptr(m_top.childAt(p));
                g_sink += quintptr(m_table->indexAt(p - off).row());
            });
        }
        return c;
    }

    QWidget m_top;
    QTableView* m_table = nullptr;
};

void Print(const char* name, const Costs& c) {
    std::printf("%-28s kit %6.0f ns | widgetAt %6.0f ns (ratio %.2f) | childAt %6.0f ns (ratio %.2f)", name, c.kit,
                c.widgetAt, c.kit / c.widgetAt, c.childAt, c.kit / c.childAt);
    if (c.childIndexAt < 1e299)
        std::printf(" | childAt+indexAt %6.0f ns (ratio %.2f)", c.childIndexAt, c.kit / c.childIndexAt);
    std::printf("\n");
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const int calls = argc > 1 ? std::max(1000, QString::fromLocal8Bit(argv[1]).toInt()) : 20000;
    const int rounds = argc > 2 ? std::max(1, QString::fromLocal8Bit(argv[2]).toInt()) : 5;

    Bench bench;
    NumberedModel small(1000);
    NumberedModel large(1000000);
    Costs widgets, cellsSmall, cellsLarge;
    for (int r = 0; r < rounds; ++r) {
        widgets.keepBest(bench.widgets(calls));
        // Alternate which size goes first, so neither always follows the model switch.
        if (r % 2 == 0) {
            cellsSmall.keepBest(bench.cells(&small, calls));
            cellsLarge.keepBest(bench.cells(&large, calls));
        } else {
            cellsLarge.keepBest(bench.cells(&large, calls));
            cellsSmall.keepBest(bench.cells(&small, calls));
        }
    }
    // What a cell pick answers, so a search that silently stopped at the viewport would show.
    std::printf("picked at a cell: %s\n", qPrintable(bench.pickedAt(QPoint(700, 100))));
    std::printf("%d calls per case, best of %d rounds\n", calls, rounds);
    Print("widgets (6,000 nested)", widgets);
    Print("table cells, 1,000 rows", cellsSmall);
    Print("table cells, 1,000,000 rows", cellsLarge);

    const double widgetRatio = widgets.kit / widgets.widgetAt;
    const double sizeRatio = cellsLarge.kit / cellsSmall.kit;
    std::printf("target widgets within 2x of widgetAt: %.2f -> %s\n", widgetRatio,
                widgetRatio <= 2.0 ? "met" : "missed");
    std::printf("target cell cost flat in model size (1,000,000 / 1,000 rows within 10%%): %.3f -> %s\n", sizeRatio,
                std::fabs(sizeRatio - 1.0) <= 0.10 ? "met" : "missed");
    return g_sink == 42 ? 1 : 0;
}
