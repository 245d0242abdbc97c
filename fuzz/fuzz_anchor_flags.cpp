// Anchor flag texts from untrusted input: each line is the flag text of one child of an anchor
// layout (at most eight). Oracles: nothing crashes or is undefined (the sanitizers watch), the
// parser keeps at most one token per comma-separated part, and every placed rectangle stays within
// a bounded distance of the layout, whatever the numbers say.

#include "FuzzApp.h"

#include <LxCore/FrameWork.h>
#include <LxUIKit/QAnchorLayout.h>
#include <LxUIKit/QAnchorLayout_p.h>

#include <QWidget>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void Check(bool ok, const char* what) {
    if (!ok) {
        std::fprintf(stderr, "fuzz_anchor_flags: %s\n", what);
        std::abort();
    }
}

void Run(const QString& input) {
    const QStringList lines = input.split(QLatin1Char('\n'));
    for (const QString& flags : lines) {
        QStringList errors;
        const auto tokens = lx_anchor::ParseFlags(flags, &errors);
        Check(int(tokens.size()) + errors.size() <= flags.count(QLatin1Char(',')) + 1, "more tokens than parts");
    }

    QWidget host;
    auto* layout = new QAnchorLayout(&host);
    const int n = qMin(8, lines.size());
    for (int i = 0; i < n; ++i) {
        auto* child = new QWidget(&host);
        child->setObjectName(QStringLiteral("w%1").arg(i));
        child->resize(10 + i, 10 + i);
        layout->addWidget(child, lines[i]);
    }
    // Two passes (siblings then have geometry from the first) and the sizing functions.
    const QSize hint = layout->sizeHint();
    Check(qAbs(hint.width()) <= (1 << 30) && qAbs(hint.height()) <= (1 << 30), "size hint out of bounds");
    (void)layout->minimumSize();
    for (const QRect& r : {QRect(0, 0, 640, 480), QRect(5, 5, 1, 1)}) {
        layout->setGeometry(r);
        for (int i = 0; i < n; ++i) {
            const QRect g = layout->itemAt(i)->widget()->geometry();
            Check(qAbs(g.x()) <= (1 << 30) && qAbs(g.y()) <= (1 << 30), "child placed out of bounds");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    static const bool s_bQuiet = [] {
        FrameWork::SetAssertHandler([](const FrameWork::AssertInfo&) {});  // out-of-range indices are expected
        return true;
    }();
    (void)s_bQuiet;
    if (size > 4096)
        return 0;
    Run(QString::fromUtf8(reinterpret_cast<const char*>(data), int(size)));
    return 0;
}
