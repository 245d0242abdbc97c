// Cost of the diagnostics' instruments on the work they watch, each beside the same work without
// them, in the same run:
//
//   paint     a widget repainting continuously (repaint(), synchronous), with a CFpsHelper
//             counting its paint events vs the same widget unwatched (the anchor);
//   objects   creating and destroying QObjects (and QWidgets) with the application listener's
//             object hooks installed vs without hooks (the anchor).
//
// Printed: time per frame / per object for both, the overhead in microseconds and the ratio.
// Each measurement runs `rounds` times alternating with its anchor; the fastest round is kept.
//
//   bench_fps [frames=20000] [objects=200000] [rounds=5]
//
// Build in Release for the figures. Ratios are the result; absolute times depend on the machine.

#include <LxBusiness/ObjectHooks_p.h>
#include <LxUIKit/DevTools/Performance/FpsHelper.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace {

class Canvas : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.fillRect(rect(), (++m_i32Frame & 1) ? Qt::darkGreen : Qt::darkBlue);
    }

private:
    int m_i32Frame = 0;
};

double TimeNs(const std::function<void()>& work) {
    QElapsedTimer clock;
    clock.start();
    work();
    return double(clock.nsecsElapsed());
}

void Report(const char* what, const char* per, double anchorNs, double measuredNs, long n) {
    const double a = anchorNs / n / 1000.0;
    const double m = measuredNs / n / 1000.0;
    std::printf("  %-26s anchor %9.3f us/%s   with %9.3f us/%s   overhead %8.3f us   ratio %6.3f\n", what, a, per, m,
                per, m - a, m / a);
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen") : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    const long frames = argc > 1 ? std::atol(argv[1]) : 20000;
    const long objects = argc > 2 ? std::atol(argv[2]) : 200000;
    const int rounds = argc > 3 ? std::atoi(argv[3]) : 5;

    Canvas canvas;
    canvas.resize(320, 200);
    canvas.show();
    app.processEvents();
    CFpsHelper helper(&canvas, QStringLiteral("canvas"));
    auto paint = [&] {
        for (long i = 0; i < frames; ++i)
            canvas.repaint();
    };
    double paintAnchor = 1e300;
    double paintWith = 1e300;
    for (int r = 0; r < rounds; ++r) {
        helper.Stop();
        paintAnchor = std::min(paintAnchor, TimeNs(paint));
        helper.Start();
        paintWith = std::min(paintWith, TimeNs(paint));
    }
    const int counted = helper.FrameCount();
    helper.Stop();

    std::vector<QObject*> batch(size_t(std::max(1L, objects)));
    auto churnObjects = [&] {
        for (long i = 0; i < objects; ++i)
            batch[size_t(i)] = new QObject;
        for (long i = 0; i < objects; ++i)
            delete batch[size_t(i)];
    };
    const long widgets = std::max(1L, objects / 20);
    auto churnWidgets = [&] {
        for (long i = 0; i < widgets; ++i)
            batch[size_t(i)] = new QWidget;
        for (long i = 0; i < widgets; ++i)
            delete batch[size_t(i)];
    };
    double objAnchor = 1e300, objWith = 1e300, widAnchor = 1e300, widWith = 1e300;
    for (int r = 0; r < rounds; ++r) {
        lxbusiness::hooks::Uninstall();
        objAnchor = std::min(objAnchor, TimeNs(churnObjects));
        widAnchor = std::min(widAnchor, TimeNs(churnWidgets));
        lxbusiness::hooks::Install();
        objWith = std::min(objWith, TimeNs(churnObjects));
        widWith = std::min(widWith, TimeNs(churnWidgets));
        app.processEvents();  // the class look-up of this round
    }
    const lxbusiness::hooks::Counts counts = lxbusiness::hooks::GetCounts();
    lxbusiness::hooks::Uninstall();

    std::printf("bench_fps: %ld frames of a %dx%d widget, %ld QObjects, %ld QWidgets, best of %d rounds\n", frames,
                canvas.width(), canvas.height(), objects, widgets, rounds);
    Report("paint (FPS helper)", "frame", paintAnchor, paintWith, frames);
    Report("QObject new+delete (hooks)", "object", objAnchor, objWith, objects);
    Report("QWidget new+delete (hooks)", "widget", widAnchor, widWith, widgets);
    std::printf("  (frames counted in the last round %d; objects seen by the hooks in the last round %lld)\n", counted,
                counts.i64TotalObjects);
    return 0;
}
