// Diagnostics: an animated ticker whose repaint rate the FPS counter watches, the live performance
// monitor over this very process, the object statistics, cards of three kinds timed as they are
// built, and a few unit-test sessions registered by the gallery (one fails on purpose).

#include "GalleryPages.h"

#include <LxBusiness/AppListenerManager.h>
#include <LxBusiness/UnitTestManager.h>
#include <LxStdUI/FontToken.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/DevTools/Performance/FpsFrameCounter.h>
#include <LxUIKit/DevTools/Performance/FpsHelper.h>
#include <LxUIKit/DevTools/Performance/FpsMonitorDialog.h>
#include <LxUIKit/DevTools/Performance/LxCardCreatePerformanceHelper.h>
#include <LxUIKit/DevTools/Performance/ObjectStatisticsDialog.h>
#include <LxUIKit/DevTools/Performance/PerformanceMonitorWnd.h>
#include <LxUIKit/DevTools/UnitTest/UnitTestWnd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(DiagnosticsPage)
};

// A price line that scrolls by itself at about 30 frames a second.
class TickerWidget : public QWidget {
public:
    explicit TickerWidget(QWidget* parent) : QWidget(parent) {
        setMinimumSize(260, 90);
        auto* timer = new QTimer(this);
        timer->setInterval(33);
        connect(timer, &QTimer::timeout, this, [this] {
            m_i32Phase = (m_i32Phase + 1) % 3600;
            update();
        });
        timer->start();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.fillRect(rect(), res->color(QStringLiteral("ct_bg_secondary")));
        QPainterPath path;
        for (int x = 0; x < width(); x += 3) {
            const double t = (x + m_i32Phase * 4) / 40.0;
            const double y = height() / 2.0 + std::sin(t) * height() / 4.0 + std::sin(t * 2.7) * height() / 10.0;
            if (x == 0)
                path.moveTo(x, y);
            else
                path.lineTo(x, y);
        }
        p.setPen(QPen(res->color(QStringLiteral("ct_text_green")), 2));
        p.drawPath(path);
    }

private:
    int m_i32Phase = 0;
};

// Three kinds of invented content cards; each build is timed and reported.
QWidget* BuildCard(int kind, int i, QWidget* parent) {
    auto* card = new QWidget(parent);
    card->setObjectName(QStringLiteral("DiagCard"));
    card->setAttribute(Qt::WA_StyledBackground);
    auto* v = new QVBoxLayout(card);
    v->setContentsMargins(10, 6, 10, 6);
    static const char* const kQuotes[][3] = {
        {"Northwind Foods", "NWF", "+1.24%"}, {"Lumen Rail", "LMR", "-0.37%"}, {"Copperleaf Bio", "CLB", "+3.05%"}};
    static const char* const kNews[] = {"Harbor Grid wins the eastern port contract",
                                        "Quiet session for regional lenders"};
    static const char* const kPosts[][2] = {{"Mira Voss", "Added to my Copperleaf position after the trial results."},
                                            {"Tomas Reyl", "Watching Lumen Rail into the quarterly call."}};
    if (kind == 0) {
        const auto& q = kQuotes[i % 3];
        auto* row = new QHBoxLayout;
        row->addWidget(new QLabel(QStringLiteral("%1 (%2)").arg(QLatin1String(q[0]), QLatin1String(q[1])), card));
        row->addStretch(1);
        row->addWidget(new QLabel(QLatin1String(q[2]), card));
        v->addLayout(row);
    } else if (kind == 1) {
        v->addWidget(new QLabel(QLatin1String(kNews[i % 2]), card));
        auto* more = new QWidget(card);  // folded until the reader expands it
        auto* mv = new QVBoxLayout(more);
        mv->addWidget(new QLabel(Texts::tr("Full story"), more));
        mv->addWidget(new QLabel(Texts::tr("Related quotes"), more));
        more->hide();
        v->addWidget(more);
    } else {
        const auto& p = kPosts[i % 2];
        v->addWidget(new QLabel(QLatin1String(p[0]), card));
        v->addWidget(new QLabel(QLatin1String(p[1]), card));
        auto* comments = new QWidget(card);
        auto* cv = new QVBoxLayout(comments);
        for (int c = 0; c < 3; ++c)
            cv->addWidget(new QLabel(Texts::tr("Comment %1").arg(c + 1), comments));
        comments->hide();
        v->addWidget(comments);
    }
    return card;
}

void FillTimingTable(QTableWidget* table) {
    const auto& infos = LxCardCreatePerformanceHelper::instance()->Infos();
    table->setRowCount(infos.size());
    int row = 0;
    for (auto it = infos.begin(); it != infos.end(); ++it, ++row) {
        const double n = qMax(1, it.value().i32Reports);
        table->setItem(row, 0,
                       new QTableWidgetItem(QStringLiteral("%1 (%2)").arg(it.key()).arg(it.value().i32Reports)));
        table->setItem(row, 1, new QTableWidgetItem(QString::number(it.value().i64TotalTimeMs / n, 'f', 2)));
        table->setItem(row, 2, new QTableWidgetItem(QString::number(it.value().i64TotalCreated / n, 'f', 1)));
        table->setItem(row, 3, new QTableWidgetItem(QString::number(it.value().i64TotalVisible / n, 'f', 1)));
    }
}

// Small checks of invented trading helpers, registered once per process.
double RoundToTick(double price, double tick) { return std::round(price / tick) * tick; }

void RegisterGallerySessions() {
    CUnitTestManager* mgr = CUnitTestManager::instance();
    if (mgr->GetTestSessionNames().contains(QStringLiteral("tick.rounding")))
        return;
    mgr->RegisterTestSession(QStringLiteral("tick.rounding"), [] {
        const double r = RoundToTick(12.337, 0.01);
        return std::abs(r - 12.34) < 1e-9 ? CUnitTestResult::Pass()
                                          : CUnitTestResult::Fail(QStringLiteral("12.337 rounded to %1").arg(r));
    });
    mgr->RegisterTestSession(QStringLiteral("quote.parse"), [] {
        const QStringList fields = QStringLiteral("NWF,48.20,+1.24%").split(QLatin1Char(','));
        return fields.size() == 3 && fields[1].toDouble() > 0 ? CUnitTestResult::Pass()
                                                              : CUnitTestResult::Fail(QStringLiteral("bad quote"));
    });
    mgr->RegisterTestSession(QStringLiteral("order.lot_size"), [] {
        // Fails on purpose: shows how a failure and its message look.
        const int lot = 100;
        const int quantity = 250;
        return quantity % lot == 0 ? CUnitTestResult::Pass()
                                   : CUnitTestResult::Fail(
                                         QStringLiteral("quantity %1 is not a multiple of the lot size %2 (on purpose)")
                                             .arg(quantity)
                                             .arg(lot));
    });
}

}  // namespace

QWidget* CreateDiagnosticsPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QHBoxLayout(page);
    layout->setContentsMargins(16, 12, 16, 12);

    // Left: FPS, cards, tests and objects.
    auto* left = new QVBoxLayout;
    auto* title = new QLabel(Texts::tr("Diagnostics"), page);
    title->setFont(LFontTokenLoader::font(QStringLiteral("BigTitle2")));
    left->addWidget(title);

    auto* ticker = new TickerWidget(page);
    ticker->setObjectName(QStringLiteral("DiagTicker"));
    CFpsFrameCounter* counter = CFpsFrameCounter::Singleton();
    counter->AddWidget(ticker, Texts::tr("Price ticker"));
    if (!counter->IsStarted())
        counter->Start();
    auto* fpsLabel = new QLabel(Texts::tr("FPS: measuring…"), page);
    fpsLabel->setObjectName(QStringLiteral("DiagFpsLabel"));
    QPointer<QLabel> pFps = fpsLabel;
    QPointer<QWidget> pTicker = ticker;
    QObject::connect(counter, &CFpsFrameCounter::fpsUpdated, fpsLabel, [pFps, pTicker] {
        CFpsHelper* h = pTicker ? CFpsFrameCounter::Singleton()->HelperOf(pTicker) : nullptr;
        if (pFps && h)
            pFps->setText(Texts::tr("FPS: %1 now, %2 average, %3 peak")
                              .arg(h->Fps(), 0, 'f', 1)
                              .arg(h->ValidAverageFps(), 0, 'f', 1)
                              .arg(h->MaxFps(), 0, 'f', 1));
    });
    auto* fpsButton = new QPushButton(Texts::tr("Open FPS monitor"), page);
    QObject::connect(fpsButton, &QPushButton::clicked, page, [] { CFpsMonitorDialog::ShowDialog(); });
    auto* fpsRow = new QHBoxLayout;
    fpsRow->addWidget(fpsLabel, 1);
    fpsRow->addWidget(fpsButton);
    left->addWidget(ticker);
    left->addLayout(fpsRow);

    auto* tabs = new QTabWidget(page);
    tabs->setObjectName(QStringLiteral("DiagTabs"));
    // Cards of three kinds, each build timed.
    auto* cardsTab = new QWidget(tabs);
    auto* cv = new QVBoxLayout(cardsTab);
    auto* scroll = new QScrollArea(cardsTab);
    scroll->setWidgetResizable(true);
    auto* list = new QWidget(scroll);
    auto* rows = new QVBoxLayout(list);
    rows->setSpacing(4);
    const QString kinds[] = {QStringLiteral("Quote"), QStringLiteral("News"), QStringLiteral("Post")};
    for (int i = 0; i < 9; ++i) {
        const int kind = i % 3;
        QElapsedTimer clock;
        clock.start();
        QWidget* card = BuildCard(kind, i / 3, list);
        LxCardCreatePerformanceHelper::instance()->ReportCardCreatePerformanceInfo(
            card, kinds[kind], QStringLiteral("Gallery"), clock.elapsed());
        rows->addWidget(card);
    }
    rows->addStretch(1);
    scroll->setWidget(list);
    auto* timing = new QTableWidget(0, 4, cardsTab);
    timing->setObjectName(QStringLiteral("DiagTimingTable"));
    timing->setHorizontalHeaderLabels(
        {Texts::tr("Card"), Texts::tr("Average ms"), Texts::tr("Widgets made"), Texts::tr("Widgets visible")});
    timing->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    timing->verticalHeader()->setVisible(false);
    timing->setMaximumHeight(130);
    FillTimingTable(timing);
    auto* table = new QPushButton(Texts::tr("Open timing window"), cardsTab);
    QObject::connect(table, &QPushButton::clicked, page,
                     [] { LxCardCreatePerformanceHelper::instance()->ShowCreatePerformanceInfoWindow(); });
    cv->addWidget(scroll, 1);
    cv->addWidget(timing);
    cv->addWidget(table, 0, Qt::AlignRight);
    tabs->addTab(cardsTab, Texts::tr("Cards"));

    RegisterGallerySessions();
    tabs->addTab(new CUnitTestWnd(tabs), Texts::tr("Unit tests"));
    auto* objects = new CObjectStatisticsDialog(tabs);
    objects->setWindowFlags(Qt::Widget);
    tabs->addTab(objects, Texts::tr("Objects"));
    left->addWidget(tabs, 1);

    auto* monitor = new CPerformanceMonitorWnd(page);
    monitor->setObjectName(QStringLiteral("DiagMonitor"));
    layout->addLayout(left, 5);
    layout->addWidget(monitor, 6);

    // Tables and tabs follow the theme like the rest of the gallery.
    auto applyTheme = [page] {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        page->setStyleSheet(
            QStringLiteral(
                "QTableWidget, QTableView { background:%1; color:%2; gridline-color:%3; border:1px solid %3; }"
                "QTabWidget::pane { border:1px solid %3; }"
                "QTabBar::tab { background:%4; color:%5; padding:5px 12px; border:1px solid %3; }"
                "QTabBar::tab:selected { background:%1; color:%2; }"
                "QWidget#DiagCard { background:%4; border-radius:4px; }")
                .arg(res->colorString("ct_bg_primary"), res->colorString("ct_text_h1"),
                     res->colorString("ct_line_separator"), res->colorString("ct_bg_secondary"),
                     res->colorString("ct_text_h2")));
    };
    applyTheme();
    QObject::connect(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, page, applyTheme);
    return page;
}

void DemoDiagnosticsPage(QWidget* page) {
    // Runs the sessions, then lets the listener take a few samples (without blocking: the
    // screenshot is taken by a timer) and rests the pointer on the newest-but-one.
    if (CUnitTestWnd* tests = page->findChild<CUnitTestWnd*>())
        tests->RunAll();
    if (auto* tabs = page->findChild<QTabWidget*>(QStringLiteral("DiagTabs")))
        tabs->setCurrentIndex(1);
    QPointer<QWidget> pPage = page;
    for (int i = 0; i < 5; ++i)
        QTimer::singleShot(i * 250, page, [] { CAppListenerManager::instance()->SampleNow(); });
    QTimer::singleShot(1300, page, [pPage] {
        auto* monitor = pPage ? pPage->findChild<CPerformanceMonitorWnd*>(QStringLiteral("DiagMonitor")) : nullptr;
        if (!monitor)
            return;
        const int n = CAppListenerManager::instance()->GetAppInformationSet().vecSamples.size();
        monitor->Chart(0)->ShowHoverAt(qMax(0, n - 2));
    });
}
