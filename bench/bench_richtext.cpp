// Rich-text feed benchmark: 1000 items of about 12 mixed snippets at width 360, at most 3 lines.
//
// Phases per item: create the widget, fill it (SetRichTextData / setText), heightForWidth(360),
// and paint into a QImage; then the cost of asking heightForWidth(360) again, and the memory each
// item keeps. The anchor is QLabel
// with word wrap showing the same HTML (which it cannot even cut at 3 lines), measured in the same
// run on the same items. Times are per item; ratios are rich text / QLabel (below 1: faster).
//
//   bench_richtext [items]

#include <LxUIKit/LxUIKit.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include <malloc.h>
#include <unistd.h>

namespace {

const int kWidth = 360;
const int kMaxLines = 3;
const int kRepeatedQueries = 20;

using SnippetList = CLxRichText::SnippetList;

// Resident memory in bytes.
qint64 Rss() {
    FILE* f = std::fopen("/proc/self/statm", "r");
    if (!f)
        return 0;
    long size = 0, resident = 0;
    if (std::fscanf(f, "%ld %ld", &size, &resident) != 2)
        resident = 0;
    std::fclose(f);
    return qint64(resident) * sysconf(_SC_PAGESIZE);
}

QString DrawPicture(const QString& dir, const QString& name, QColor color, int shape) {
    QImage img(120, 120, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(color);
    p.setPen(Qt::NoPen);
    if (shape % 2)
        p.drawEllipse(QRectF(6, 6, 108, 108));
    else
        p.drawRoundedRect(QRectF(10, 10, 100, 100), 20, 20);
    p.setBrush(Qt::black);
    p.drawEllipse(QRectF(36, 40, 12, 16));
    p.drawEllipse(QRectF(72, 40, 12, 16));
    p.end();
    const QString path = dir + QLatin1Char('/') + name;
    img.save(path);
    return path;
}

struct Samples {
    QStringList emoticons;
    QStringList emoji;
};

SnippetList MakeItem(int index, const Samples& samples) {
    static const char* const kText[] = {
        "Markets opened higher as tech led the rebound. ",
        "今天大盘高开，科技股领涨，成交量明显放大。",
        "I added a little more on the dip. ",
        "财报收入超预期，但指引偏弱。",
        "Watching the 200-day average closely — a clean break would change my view. ",
        "长线持有的朋友不用太在意短期波动。",
        "Cash is a position too. ",
        "Volume is thin, so I would not read too much into this move. ",
    };
    QRandomGenerator rng(quint32(7 + index));
    SnippetList list;
    const int count = 10 + rng.bounded(5);  // about 12
    for (int k = 0; k < count; ++k) {
        switch (k % 2 ? rng.bounded(7) : 0) {
        case 0: {
            QString text = QString::fromUtf8(kText[rng.bounded(int(std::size(kText)))]);
            if (index % 4 == 0 && k % 3 == 0)
                text += text;  // some long items
            list.push_back(std::make_shared<CLxRichTextSnippetText>(text));
            break;
        }
        case 1: {
            auto s = std::make_shared<CLxRichTextSnippetStock>();
            s->SetStockIdAndDisplayText(1000 + rng.bounded(50), QStringLiteral("$Tenvira(TNVR)$"));
            list.push_back(s);
            break;
        }
        case 2: {
            auto s = std::make_shared<CLxRichTextSnippetUser>();
            s->SetUserData(10000 + rng.bounded(100), QStringLiteral("Ann Lee"));
            list.push_back(s);
            break;
        }
        case 3: {
            auto s = std::make_shared<CLxRichTextSnippetPortfolio>();
            s->SetPortfolioData(501, QStringLiteral("Tech Leaders"), QStringLiteral("TL1"));
            list.push_back(s);
            break;
        }
        case 4: {
            auto s = std::make_shared<CLxRichTextSnippetLink>();
            s->SetLinkData(QStringLiteral("earnings call"), QStringLiteral("https://example.com/ir"),
                           CLxRichTextDataLink::LinkType_Web);
            list.push_back(s);
            break;
        }
        case 5: {
            const int i = rng.bounded(samples.emoticons.size());
            list.push_back(std::make_shared<CLxRichTextSnippetEmoticon>(uint32_t(i + 1), samples.emoticons[i]));
            break;
        }
        default: {
            const int i = rng.bounded(samples.emoji.size());
            list.push_back(std::make_shared<CLxRichTextSnippetEmoji>(QStringLiteral("x"), samples.emoji[i]));
            break;
        }
        }
    }
    return list;
}

struct Phases {
    double create = 0, fill = 0, hfw = 0, paint = 0, repeated = 0;  // ns per item (repeated: per call)
    double memory = 0;                                              // bytes per item
    long long checksum = 0;                                         // keeps the work observable
    double Overall() const { return fill + hfw + paint; }
};

double PerItem(qint64 ns, int n) { return double(ns) / n; }

// Runs the phases over all items for one kind of widget.
template <typename W>
Phases Run(int n, const std::function<W*()>& create, const std::function<void(W*, int)>& build) {
    Phases out;
    malloc_trim(0);
    const qint64 rss0 = Rss();
    std::vector<W*> widgets;
    widgets.reserve(size_t(n));
    QElapsedTimer t;

    t.start();
    for (int i = 0; i < n; ++i)
        widgets.push_back(create());
    out.create = PerItem(t.nsecsElapsed(), n);

    t.start();
    for (int i = 0; i < n; ++i)
        build(widgets[size_t(i)], i);
    out.fill = PerItem(t.nsecsElapsed(), n);

    std::vector<int> heights(static_cast<size_t>(n), 0);
    t.start();
    for (int i = 0; i < n; ++i)
        heights[size_t(i)] = widgets[size_t(i)]->heightForWidth(kWidth);
    out.hfw = PerItem(t.nsecsElapsed(), n);

    t.start();
    for (int r = 0; r < kRepeatedQueries; ++r)
        for (int i = 0; i < n; ++i)
            out.checksum += widgets[size_t(i)]->heightForWidth(kWidth);
    out.repeated = PerItem(t.nsecsElapsed(), n * kRepeatedQueries);

    t.start();
    for (int i = 0; i < n; ++i) {
        W* w = widgets[size_t(i)];
        const int h = qMax(1, heights[size_t(i)]);
        w->resize(kWidth, h);
        QImage img(kWidth, h, QImage::Format_ARGB32_Premultiplied);
        img.fill(Qt::white);
        w->render(&img);
        out.checksum += img.pixel(kWidth / 2, h / 2) & 0xff;
    }
    out.paint = PerItem(t.nsecsElapsed(), n);

    out.memory = double(Rss() - rss0) / n;
    for (size_t i = 0; i < heights.size(); ++i)
        out.checksum += heights[i];
    qDeleteAll(widgets);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return out;
}

void Row(const char* name, double rich, double label, const char* unit = "us") {
    const double scale = std::strcmp(unit, "us") == 0 ? 1e-3 : 1.0 / 1024.0;
    std::printf("  %-34s %10.2f %s %10.2f %s   ratio %5.2f\n", name, rich * scale, unit, label * scale, unit,
                label > 0 ? rich / label : 0.0);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int n = argc > 1 ? qMax(10, QString::fromLocal8Bit(argv[1]).toInt()) : 1000;

    QTemporaryDir dir;
    Samples samples;
    static const QColor kColors[] = {Qt::yellow, Qt::cyan,          Qt::magenta,
                                     Qt::green,  QColor("#ff8a65"), QColor("#ba68c8")};
    for (int i = 0; i < 6; ++i) {
        samples.emoticons << DrawPicture(dir.path(), QStringLiteral("emo_%1.png").arg(i), kColors[i], i);
        samples.emoji << DrawPicture(dir.path(), QStringLiteral("emoji_%1.png").arg(i), kColors[5 - i], i + 1);
    }

    // Items and their HTML are made before timing; both widgets get the same HTML.
    std::vector<SnippetList> items;
    std::vector<QString> html;
    {
        CLxRichText maker;
        for (int i = 0; i < n; ++i) {
            items.push_back(MakeItem(i, samples));
            maker.SetRichTextData(items.back());
            html.push_back(maker.text());
        }
    }
    int snippets = 0;
    for (const auto& item : items)
        snippets += int(item.size());

    std::function<CLxRichText*()> makeRich = [] {
        auto* w = new CLxRichText;
        w->SetMaxLine(kMaxLines);
        return w;
    };
    std::function<void(CLxRichText*, int)> buildRich = [&](CLxRichText* w, int i) {
        w->SetRichTextData(items[size_t(i)]);
    };
    std::function<QLabel*()> makeLabel = [] {
        auto* w = new QLabel;
        w->setWordWrap(true);
        w->setTextFormat(Qt::RichText);
        return w;
    };
    std::function<void(QLabel*, int)> buildLabel = [&](QLabel* w, int i) { w->setText(html[size_t(i)]); };

    // Warm up fonts, glyph caches and picture caches for both.
    Run<CLxRichText>(qMin(n, 50), makeRich, buildRich);
    Run<QLabel>(qMin(n, 50), makeLabel, buildLabel);

    const Phases rich = Run<CLxRichText>(n, makeRich, buildRich);
    const Phases label = Run<QLabel>(n, makeLabel, buildLabel);
    // Memory a second time in the other order, since the first run can pay for allocator growth.
    const Phases label2 = Run<QLabel>(n, makeLabel, buildLabel);
    const Phases rich2 = Run<CLxRichText>(n, makeRich, buildRich);

    std::printf("bench_richtext: %d items, %.1f snippets per item, width %d, at most %d lines\n", n,
                double(snippets) / n, kWidth, kMaxLines);
    std::printf("  %-34s %13s %13s\n", "per item", "CLxRichText", "QLabel");
    Row("create", rich.create, label.create);
    Row("fill (SetRichTextData / setText)", rich.fill, label.fill);
    Row("heightForWidth(360), first", rich.hfw, label.hfw);
    Row("paint into QImage", rich.paint, label.paint);
    Row("overall (fill + hfw + paint)", rich.Overall(), label.Overall());
    Row("overall with widget creation", rich.Overall() + rich.create, label.Overall() + label.create);
    Row("heightForWidth(360), repeated", rich.repeated, label.repeated);
    Row("memory per item (RSS, 1st run)", rich.memory, label.memory, "KiB");
    Row("memory per item (RSS, 2nd run)", rich2.memory, label2.memory, "KiB");
    std::printf("  (checksums %lld %lld)\n", rich.checksum, label.checksum);
    return 0;
}
