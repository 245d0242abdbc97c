// Untrusted SVG through the document guard, then through the renderer: whatever the guard
// accepts must load and render at bounded cost (libFuzzer's time and memory limits, and the
// budget below for one document), and must never read a file.

#include "FuzzApp.h"

#include <LxUIKit/WebImage/LxSvgDocumentGuard_p.h>

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

// Loading and rendering one accepted document into a 64 x 64 target.
constexpr qint64 kBudgetMs = 2000;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size));
    QByteArray document;
    if (CLxSvgDocumentGuard::Check(bytes, document) != CLxSvgDocumentGuard::Verdict::Ok)
        return 0;
    QElapsedTimer timer;
    timer.start();
    QSvgRenderer renderer;
    if (!renderer.load(document))
        return 0;
    QImage target(64, 64, QImage::Format_ARGB32_Premultiplied);
    target.fill(Qt::transparent);
    QPainter painter(&target);
    renderer.render(&painter);
    painter.end();
    if (timer.elapsed() > kBudgetMs) {
        fprintf(stderr, "accepted document took %lld ms\n", static_cast<long long>(timer.elapsed()));
        abort();
    }
    return 0;
}
