// Anchor layout: 500 children laid out on every resize, beside Qt's own ways of placing the same
// children in the same run:
//   anchor   QAnchorLayout, a 25 x 20 grid written as flags: the first child of a row
//            "Left, Top:<y>, Size:0.04 <h>", every other "RightOfSibling:-1, TopAlignSibling:-1,
//            SameSizeAs:-1" (so most tokens resolve a sibling);
//   grid     QGridLayout with the same children in the same 25 x 20 cells;
//   by hand  a loop computing each cell and calling setGeometry (the floor: no layout at all).
// Each pass alternates the host between two sizes, so no layout can skip work. Flags are parsed
// once (the first pass); a last line times passes right after every child's flags changed, which
// is when parsing happens again.
//
//   bench_anchorlayout [children=500] [passes=300]
//
// Build in Release for the figures; ratios are the result.

#include <LxUIKit/QAnchorLayout.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QWidget>

#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int kColumns = 25;

struct Host {
    QWidget widget;
    std::vector<QWidget*> children;
    explicit Host(int n) {
        for (int i = 0; i < n; ++i)
            children.push_back(new QWidget(&widget));
        // Shown: layouts skip hidden children, and a real window's children are visible.
        widget.resize(1200, 900);
        widget.show();
    }
};

QRect SizeFor(int pass) { return pass % 2 ? QRect(0, 0, 1000, 800) : QRect(0, 0, 1200, 900); }

// Microseconds per pass.
double Time(int passes, const std::function<void(int)>& pass) {
    pass(1);  // warm: first placement, first parse
    QElapsedTimer t;
    t.start();
    for (int i = 0; i < passes; ++i)
        pass(i);
    return double(t.nsecsElapsed()) / 1000.0 / passes;
}

QString AnchorFlags(int i, int rowHeight) {
    if (i % kColumns == 0)
        return QStringLiteral("Left, Top:%1, Size:0.04 %2").arg((i / kColumns) * rowHeight).arg(rowHeight);
    return QStringLiteral("RightOfSibling:-1, TopAlignSibling:-1, SameSizeAs:-1");
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int n = argc > 1 ? atoi(argv[1]) : 500;
    const int passes = argc > 2 ? atoi(argv[2]) : 300;
    const int rows = (n + kColumns - 1) / kColumns;
    const int rowHeight = 30;

    Host anchorHost(n);
    auto* anchor = new QAnchorLayout(&anchorHost.widget);
    anchor->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < n; ++i)
        anchor->addWidget(anchorHost.children[size_t(i)], AnchorFlags(i, rowHeight));
    const double usAnchor = Time(passes, [&](int pass) { anchor->setGeometry(SizeFor(pass)); });

    Host gridHost(n);
    auto* grid = new QGridLayout(&gridHost.widget);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    for (int i = 0; i < n; ++i)
        grid->addWidget(gridHost.children[size_t(i)], i / kColumns, i % kColumns);
    const double usGrid = Time(passes, [&](int pass) { grid->setGeometry(SizeFor(pass)); });

    Host handHost(n);
    const double usHand = Time(passes, [&](int pass) {
        const QRect r = SizeFor(pass);
        const int w = int(r.width() * 0.04);
        for (int i = 0; i < n; ++i)
            handHost.children[size_t(i)]->setGeometry((i % kColumns) * w, (i / kColumns) * rowHeight, w, rowHeight);
    });

    // Every child's flags change before each pass: parsing is paid again.
    int flip = 0;
    const double usReparse = Time(passes / 10 + 1, [&](int pass) {
        ++flip;
        for (int i = 0; i < n; ++i)
            anchorHost.children[size_t(i)]->setProperty(QAnchorLayout::kFlagsProperty,
                                                        AnchorFlags(i, rowHeight + (flip % 2)));
        anchor->setGeometry(SizeFor(pass));
    });

    const QRect gridLast = gridHost.children.back()->geometry();
    const QRect last = anchorHost.children.back()->geometry();
    std::printf("anchor layout, %d children in %d rows, %d passes each (last child at %d,%d %dx%d)\n", n, rows, passes,
                last.x(), last.y(), last.width(), last.height());
    std::printf("  QAnchorLayout            %10.1f us/pass\n", usAnchor);
    std::printf("  (grid's last child at %d,%d %dx%d)\n", gridLast.x(), gridLast.y(), gridLast.width(),
                gridLast.height());
    std::printf("  QGridLayout (anchor)     %10.1f us/pass   ratio anchor/grid    %.2f\n", usGrid, usAnchor / usGrid);
    std::printf("  setGeometry by hand      %10.1f us/pass   ratio anchor/by-hand %.2f\n", usHand, usAnchor / usHand);
    std::printf("  QAnchorLayout, all flags changed before each pass %10.1f us/pass (%.2f x a pass)\n", usReparse,
                usReparse / usAnchor);
    return 0;
}
