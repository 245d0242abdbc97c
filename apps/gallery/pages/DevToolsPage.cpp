// Developer tools: the gallery's own log flows into the Ctrl+F9 viewer. Buttons log at every level
// from worker threads at a chosen rate, open an application-modal dialog (the tool window stays
// usable), show a stray parentless widget (the popup watch reports it), add a tab to the tools
// window and open the viewer.

#include "GalleryPages.h"

#include <LxCore/LxLog.h>
#include <LxCore/SafeQtConnect.h>
#include <LxStdUI/FontToken.h>
#include <LxUIKit/DevTools/Log/LogViewerWnd.h>
#include <LxUIKit/DevTools/LxDevTools.h>

#include <QCoreApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>
#include <QSpinBox>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(DevToolsPage)
};

// Worker threads writing records at a given total rate until stopped.
class LogFlood {
public:
    ~LogFlood() { Stop(); }
    bool Running() const { return !m_vecThreads.empty(); }
    void Start(int threads, int perSecond) {
        Stop();
        m_bStop = false;
        const int each = qMax(1, perSecond / qMax(1, threads));
        for (int t = 0; t < threads; ++t)
            m_vecThreads.emplace_back([this, t, each] { Run(t, each); });
    }
    void Stop() {
        m_bStop = true;
        for (auto& th : m_vecThreads)
            th.join();
        m_vecThreads.clear();
    }
    qint64 Written() const { return m_i64Written.load(); }

private:
    void Run(int t, int perSecond) {
        static const char* const kSymbols[] = {"NWCX", "BLRF", "QNTA", "ZEPH"};
        QElapsedTimer clock;
        clock.start();
        qint64 n = 0;
        while (!m_bStop) {
            // Paced in small steps: n records should have been written after n / rate seconds.
            if (n * 1000 > clock.elapsed() * perSecond) {
                QThread::msleep(5);
                continue;
            }
            const char* sym = kSymbols[n % 4];
            switch (n % 6) {
            case 0: LX_LOG_DEBUG("Gallery", "worker {} quote {} bid {}.{:02}", t, sym, 100 + n % 50, n % 100); break;
            case 1: LX_LOG_INFO("Gallery", "worker {} order {}-{} placed", t, sym, n); break;
            case 2: LX_LOG_WARN("Gallery", "worker {} order {}-{} partially filled", t, sym, n); break;
            case 3: LX_LOG_ERROR("Gallery", "worker {} order {}-{} rejected: price out of band", t, sym, n); break;
            case 4:
                LX_LOG(FrameWork::kLogProtocol, "Gallery", "worker {} push seq {} len {}", t, n, 64 + n % 900);
                break;
            default: LX_LOG(FrameWork::kLogWeb, "Gallery", "worker {} page loaded in {} ms", t, 20 + n % 300); break;
            }
            ++n;
            ++m_i64Written;
        }
    }

    std::atomic<bool> m_bStop{false};
    std::atomic<qint64> m_i64Written{0};
    std::vector<std::thread> m_vecThreads;
};

void OpenViewer() {
    if (CLogViewerWnd* wnd = CLogViewerWnd::Singleton()) {
        wnd->show();
        wnd->raise();
    }
}
}  // namespace

QWidget* CreateDevToolsPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    auto* title = new QLabel(Texts::tr("Developer tools"), page);
    title->setFont(LFontTokenLoader::font(QStringLiteral("BigTitle2")));
    auto* hint = new QLabel(Texts::tr("Press Ctrl+F9 anywhere in the gallery to open the developer tools window: every "
                                      "log record of every thread, live, coloured and filtered. Ctrl+F10 opens the "
                                      "widget inspector."),
                            page);
    hint->setProperty("role", QStringLiteral("hint"));
    hint->setWordWrap(true);
    layout->addWidget(title);
    layout->addWidget(hint);
    if (!devtools::IsAvailable()) {
        layout->addWidget(new QLabel(Texts::tr("This build has no developer tools."), page));
        layout->addStretch(1);
        return page;
    }

    auto flood = std::make_shared<LogFlood>();
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(10);
    auto* threads = new QSpinBox(page);
    threads->setRange(1, 8);
    threads->setValue(3);
    auto* rate = new QSpinBox(page);
    rate->setRange(1, 200000);
    rate->setValue(50);
    rate->setSuffix(Texts::tr(" records/s"));
    auto* floodBtn = new QPushButton(Texts::tr("Start logging"), page);
    floodBtn->setObjectName(QStringLiteral("DevToolsFlood"));
    auto* written = new QLabel(page);
    grid->addWidget(new QLabel(Texts::tr("Threads"), page), 0, 0);
    grid->addWidget(threads, 0, 1);
    grid->addWidget(new QLabel(Texts::tr("Rate"), page), 0, 2);
    grid->addWidget(rate, 0, 3);
    grid->addWidget(floodBtn, 0, 4);
    grid->addWidget(written, 0, 5);
    grid->setColumnStretch(6, 1);
    layout->addLayout(grid);
    LX_SAFE_CONNECT_IN("Gallery", floodBtn, &QPushButton::clicked, page, [=] {
        if (flood->Running()) {
            flood->Stop();
            floodBtn->setText(Texts::tr("Start logging"));
        } else {
            flood->Start(threads->value(), rate->value());
            floodBtn->setText(Texts::tr("Stop logging"));
        }
    });
    auto* counter = new QTimer(page);
    LX_SAFE_CONNECT_IN("Gallery", counter, &QTimer::timeout, page,
                       [=] { written->setText(Texts::tr("%1 records written").arg(flood->Written())); });
    counter->start(250);
    // The page owns the flood: its threads stop before the page goes.
    QObject::connect(page, &QObject::destroyed, [flood] { flood->Stop(); });

    auto* buttons = new QGridLayout;
    buttons->setHorizontalSpacing(10);
    auto addButton = [&](const QString& text, const char* name, int row, int col) {
        auto* b = new QPushButton(text, page);
        b->setObjectName(QLatin1String(name));
        buttons->addWidget(b, row, col);
        return b;
    };
    auto* viewer = addButton(Texts::tr("Open the log viewer"), "DevToolsOpenViewer", 0, 0);
    auto* modal = addButton(Texts::tr("Open an application-modal dialog"), "DevToolsModal", 0, 1);
    auto* stray = addButton(Texts::tr("Show a stray parentless widget"), "DevToolsStray", 1, 0);
    auto* tab = addButton(Texts::tr("Add a tab to the tools window"), "DevToolsAddTab", 1, 1);
    buttons->setColumnStretch(2, 1);
    layout->addLayout(buttons);
    auto* result = new QLabel(page);
    result->setObjectName(QStringLiteral("DevToolsResult"));
    result->setWordWrap(true);
    layout->addWidget(result);
    layout->addStretch(1);

    LX_SAFE_CONNECT_IN("Gallery", viewer, &QPushButton::clicked, page, [] { OpenViewer(); });
    LX_SAFE_CONNECT_IN("Gallery", modal, &QPushButton::clicked, page, [page, result] {
        OpenViewer();
        auto* dlg = new QDialog(page->window());
        dlg->setAttribute(Qt::WA_DeleteOnClose);
        dlg->setWindowModality(Qt::ApplicationModal);
        dlg->setWindowTitle(Texts::tr("Application-modal dialog"));
        auto* box = new QVBoxLayout(dlg);
        box->addWidget(new QLabel(Texts::tr("The gallery is blocked now; the developer tools window still takes "
                                            "clicks and keys."),
                                  dlg));
        auto* close = new QPushButton(Texts::tr("Close"), dlg);
        box->addWidget(close);
        QObject::connect(close, &QPushButton::clicked, dlg, &QDialog::close);
        dlg->show();
        result->setText(Texts::tr("A modal dialog is open: try the tools window."));
    });
    LX_SAFE_CONNECT_IN("Gallery", stray, &QPushButton::clicked, page, [page, result] {
        // A child cut loose from its parent without becoming a window: the mistake the watch catches.
        // Qt 5 cannot put such a widget on screen (show() needs a parent or a window), so the show
        // notification it would get is delivered the way any code that shows it would deliver it.
        auto* w = new QLabel(Texts::tr("stray"), page);
        w->setObjectName(QStringLiteral("GalleryStrayLabel"));
        w->QObject::setParent(nullptr);
        QShowEvent shown;
        QCoreApplication::sendEvent(w, &shown);
        delete w;
        result->setText(Texts::tr("A stray QLabel was shown: the log has a \"suspected unexpected popup\" line."));
    });
    auto tabCount = std::make_shared<int>(0);
    LX_SAFE_CONNECT_IN("Gallery", tab, &QPushButton::clicked, page, [tabCount, result] {
        const int n = ++*tabCount;
        devtools::AddCustomTab(Texts::tr("Gallery %1").arg(n),
                               core::CSafeFunction<QWidget*()>(QCoreApplication::instance(), [n]() -> QWidget* {
                                   return new QLabel(Texts::tr("Tab %1 added by the gallery.").arg(n));
                               }));
        OpenViewer();
        result->setText(Texts::tr("Tab \"Gallery %1\" added to the tools window.").arg(n));
    });
    return page;
}

void DemoDevToolsPage(QWidget* page) {
    // The viewer collects while it is visible: open it first, then log at every level.
    if (auto* b = page->findChild<QPushButton*>(QStringLiteral("DevToolsOpenViewer")))
        b->click();
    // Placed over the lower part of the gallery, so the page's buttons stay in the picture.
    if (CLogViewerWnd* wnd = CLogViewerWnd::Instance()) {
        const QRect area = page->window()->geometry();
        wnd->setGeometry(area.x() + 40, area.y() + area.height() / 2 - 40, area.width() - 80, area.height() / 2);
    }
    LX_LOG_DEBUG("Gallery", "quote NWCX bid 101.25 ask 101.30");
    LX_LOG_INFO("Gallery", "order NWCX-1042 placed: buy 100 at 101.30");
    LX_LOG_WARN("Gallery", "order NWCX-1042 partially filled: 40 of 100");
    LX_LOG_ERROR("Gallery", "order BLRF-7 rejected: price out of band");
    LX_LOG(FrameWork::kLogProtocol, "Gallery", "push seq 88120 len 512");
    LX_LOG(FrameWork::kLogReport, "Gallery", "event trade_panel_open reported");
    LX_LOG(FrameWork::kLogWeb, "Gallery", "page /research/qnta loaded in 84 ms");
    std::thread([] { LX_LOG_INFO("Gallery", "worker: portfolio ZEPH refreshed, 12 positions"); }).join();
}
