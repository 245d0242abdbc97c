// The standard UI library's controls in one window, for the developer tools' "UI-Demo" button.
// Sections: theme (a switch that flips Light / Dark live), titles and texts, links, check boxes,
// radio buttons and switches, input, icon buttons, the tab bar, the line chart, the slideshow, the
// flow layout, colour tokens, font tokens, and windows (LDialog styles, LFrameLessWnd, toast).
// All sample content is made up. The kit loads this module and calls showMainWnd(); the window
// deletes itself when closed.
//
// Screenshots without a display: with LX_STDUI_DEMO_SCREENSHOT=<prefix> set, showMainWnd() renders
// the window's whole content once in each theme, through the theme switch, to <prefix>-light.png
// and <prefix>-dark.png, then puts the theme back as it was.

#include <LxStdUI/FontToken.h>
#include <LxStdUI/ILLineChartCallBack.h>
#include <LxStdUI/LCheck.h>
#include <LxStdUI/LComboBox.h>
#include <LxStdUI/LDialog.h>
#include <LxStdUI/LFlowLayout.h>
#include <LxStdUI/LFrameLessWnd.h>
#include <LxStdUI/LIconButton.h>
#include <LxStdUI/LIconResource.h>
#include <LxStdUI/LLineChart.h>
#include <LxStdUI/LLineEdit.h>
#include <LxStdUI/LLink.h>
#include <LxStdUI/LRadio.h>
#include <LxStdUI/LSlideshowBase.h>
#include <LxStdUI/LSwitch.h>
#include <LxStdUI/LTabBarBase.h>
#include <LxStdUI/LText.h>
#include <LxStdUI/LTitle.h>
#include <LxStdUI/MultiLang.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxGuiHelper.h>

#include <QApplication>
#include <QButtonGroup>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>
#include <QtMath>

#include <memory>

namespace {

const char* const kColorTokens[] = {
    "ct_text_h1",        "ct_text_h2",    "ct_text_h3",      "ct_text_link",      "ct_text_highlight", "ct_text_green",
    "ct_text_red",       "ct_bg_primary", "ct_bg_secondary", "ct_bg_tertiary",    "ct_bg_blue",        "ct_bg_hover",
    "ct_line_separator", "ct_border",     "ct_lime",         "ct_button_primary", "ct_toast_bg",       "ck_blue300_50",
};

const char* const kIcons[] = {
    LResource::icon_pic_loading_normal, LResource::icon_pic_refresh_24_normal, LResource::icon_arrow_left_normal,
    LResource::icon_arrow_right_normal, LResource::icon_translate_normal,      LResource::icon_zoom_in_normal,
    LResource::icon_zoom_out_normal,    LResource::icon_close_normal,
};

// Invented instruments and watch-list tags.
const char* const kTickers[] = {"NWCX", "ZQX", "BRLN", "KOVA", "TALMR", "QUIN", "MERIDA", "OSKB"};
const char* const kTags[] = {"高股息", "Semiconductors", "新能源",  "Dividend aristocrats", "港股通", "Small caps",
                             "消费",   "Momentum",       "ETF 精选"};

// Closing prices of two invented stocks over 40 sessions.
QVector<QPointF> Prices(double start, double drift, double swing, double phase) {
    QVector<QPointF> out;
    for (int i = 0; i < 40; ++i)
        out << QPointF(i, start + drift * i + swing * qSin(i / 3.0 + phase) + swing * 0.4 * qCos(i * 1.7));
    return out;
}

class PriceHover : public ILLineChartCallBack {
public:
    QString GetHoverText(LLineChart* pChart, int i32Index, double) override {
        QString out = QStringLiteral("Session %1").arg(i32Index + 1);
        for (int s = 0; s < pChart->SeriesCount(); ++s) {
            const QVector<QPointF> data = pChart->SeriesData(s);
            if (i32Index >= 0 && i32Index < data.size())
                out += QStringLiteral("\n%1  %2").arg(pChart->SeriesName(s)).arg(data[i32Index].y(), 0, 'f', 2);
        }
        return out;
    }
    QString GetHoverScaleText(LLineChart*, double dX) override { return QStringLiteral("D%1").arg(qRound(dX) + 1); }
};

class DemoWindow : public QWidget {
public:
    DemoWindow() {
        setObjectName(QStringLiteral("LxStdUiDemoMainWnd"));
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle(QStringLiteral("LxStdUI Demo"));
        auto* scroll = new QScrollArea(this);
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        m_pBody = new QWidget;
        m_pBody->setObjectName(QStringLiteral("LxStdUiDemoBody"));
        auto* grid = new QGridLayout(m_pBody);
        grid->setContentsMargins(16, 16, 16, 16);
        grid->setSpacing(12);
        // Two columns of sections, the wide ones across both.
        grid->addWidget(BuildTheme(), 0, 0, 1, 2);
        grid->addWidget(BuildTexts(), 1, 0);
        grid->addWidget(BuildChoices(), 1, 1);
        grid->addWidget(BuildInput(), 2, 0);
        grid->addWidget(BuildIconButtons(), 2, 1);
        grid->addWidget(BuildTabs(), 3, 0, 1, 2);
        grid->addWidget(BuildChart(), 4, 0, 1, 2);
        grid->addWidget(BuildSlideshow(), 5, 0);
        grid->addWidget(BuildFlow(), 5, 1);
        grid->addWidget(BuildColors(), 6, 0);
        grid->addWidget(BuildFonts(), 6, 1);
        grid->addWidget(BuildWindows(), 7, 0, 1, 2);
        grid->setColumnStretch(0, 1);
        grid->setColumnStretch(1, 1);
        grid->setRowStretch(8, 1);
        scroll->setWidget(m_pBody);
        auto* outer = new QVBoxLayout(this);
        outer->setContentsMargins(0, 0, 0, 0);
        outer->addWidget(scroll);
        resize(980, 760);
        connect(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this, [this] { Repaint(); });
        Repaint();
    }

    // Renders the whole content (not only the part scrolled into view) in both themes.
    void SaveScreenshots(const QString& prefix) {
        const bool bWasDark = lx_ui_theme::Manager::instance()->isDark();
        for (bool dark : {false, true}) {
            m_pThemeSwitch->setChecked(dark);  // the user's way: through the switch
            QApplication::processEvents();
            m_pBody->adjustSize();
            const QString file = prefix + (dark ? QStringLiteral("-dark.png") : QStringLiteral("-light.png"));
            if (!m_pBody->grab().save(file))
                qWarning("LxStdUiDemo: could not write the screenshot %s", qPrintable(file));
        }
        m_pThemeSwitch->setChecked(bWasDark);
    }

private:
    // A section: a framed box with a section title over its content.
    QWidget* Section(const QString& title, QLayout* content) {
        auto* box = new QFrame;
        box->setObjectName(QStringLiteral("DemoSection"));
        auto* col = new QVBoxLayout(box);
        col->setContentsMargins(12, 10, 12, 12);
        col->setSpacing(8);
        auto* head = new LTitle;
        head->setTitleStyle(2);
        head->setText(title);
        col->addWidget(head);
        col->addLayout(content);
        col->addStretch(1);  // a short section beside a tall one keeps its content at the top
        return box;
    }

    QWidget* BuildTheme() {
        auto* row = new QHBoxLayout;
        row->addWidget(new LText(QStringLiteral("Light")));
        m_pThemeSwitch = new LSwitch;
        m_pThemeSwitch->setObjectName(QStringLiteral("DemoThemeSwitch"));
        m_pThemeSwitch->setChecked(lx_ui_theme::Manager::instance()->isDark());
        row->addWidget(m_pThemeSwitch);
        row->addWidget(new LText(QStringLiteral("Dark")));
        auto* hint = new LText(QStringLiteral("Every control below follows the theme at once."));
        hint->setTextStyle(6);
        row->addSpacing(16);
        row->addWidget(hint);
        row->addStretch(1);
        connect(m_pThemeSwitch, &LSwitch::toggled, this, [](bool dark) {
            lx_ui_theme::Manager::instance()->setTheme(dark ? lx_ui_theme::Manager::Dark : lx_ui_theme::Manager::Light);
        });
        return Section(QStringLiteral("Theme"), row);
    }

    QWidget* BuildTexts() {
        auto* col = new QVBoxLayout;
        const char* const titles[] = {"Page title: Northwind Capital", "Section title: Positions",
                                      "Group title: Today"};
        for (int i = 0; i < 3; ++i) {
            auto* t = new LTitle;
            t->setTitleStyle(i + 1);
            t->setText(QString::fromUtf8(titles[i]));
            col->addWidget(t);
        }
        const char* const texts[] = {"1 Body: NWCX up 2.4% on volume", "2 Small body: 成交额 3.2亿",
                                     "3 Caption: updated 09:35",       "4 Body secondary: 持仓 1,200 股",
                                     "5 Small secondary: cost 18.40",  "6 Description: alerts reach you by toast",
                                     "7 Caption hint: delayed 15 min"};
        for (int i = 0; i < 7; ++i) {
            auto* t = new LText(QString::fromUtf8(texts[i]));
            t->setTextStyle(i + 1);
            col->addWidget(t);
        }
        auto* cut = new LText(QStringLiteral("Dottable: a text far wider than its label is cut with an ellipsis"));
        cut->setDottable(true);
        cut->setMaximumWidth(260);
        col->addWidget(cut);
        auto* links = new QHBoxLayout;
        const char* const linkTexts[] = {"Large link", "Open ZQX", "small link"};
        for (int i = 0; i < 3; ++i) {
            auto* l = new LLink(QString::fromUtf8(linkTexts[i]));
            l->setLinkStyle(i + 1);
            links->addWidget(l);
        }
        auto* off = new LLink(QStringLiteral("disabled"));
        off->setEnabled(false);
        links->addWidget(off);
        links->addStretch(1);
        col->addLayout(links);
        return Section(QStringLiteral("Titles, texts and links"), col);
    }

    QWidget* BuildChoices() {
        auto* col = new QVBoxLayout;
        auto* checks = new QHBoxLayout;
        auto* c1 = new LCheck(QStringLiteral("Pre-market"));
        c1->setChecked(true);
        auto* c2 = new LCheck(QStringLiteral("After hours"));
        auto* c3 = new LCheck(QStringLiteral("Locked"));
        c3->setChecked(true);
        c3->setEnabled(false);
        for (auto* c : {c1, c2, c3})
            checks->addWidget(c);
        checks->addStretch(1);
        col->addLayout(checks);

        auto* radios = new QHBoxLayout;
        auto* group = new QButtonGroup(this);
        const char* const periods[] = {"1D", "1W", "1M", "1Y"};
        for (const char* p : periods) {
            auto* r = new LRadio(QString::fromLatin1(p));
            group->addButton(r);
            radios->addWidget(r);
        }
        group->buttons().at(1)->setChecked(true);
        auto* rOff = new LRadio(QStringLiteral("5Y"));
        rOff->setEnabled(false);
        radios->addWidget(rOff);
        radios->addStretch(1);
        col->addLayout(radios);

        const char* const switches[] = {"Price alerts", "Show odd lots", "Margin (unavailable)"};
        for (int i = 0; i < 3; ++i) {
            auto* row = new QHBoxLayout;
            auto* s = new LSwitch;
            s->setChecked(i == 0);
            s->setEnabled(i != 2);
            row->addWidget(s);
            row->addWidget(new LText(QString::fromUtf8(switches[i])));
            row->addStretch(1);
            col->addLayout(row);
        }
        col->addStretch(1);
        return Section(QStringLiteral("Check boxes, radio buttons, switches"), col);
    }

    QWidget* BuildInput() {
        auto* grid = new QGridLayout;
        auto* combo = new LComboBox;
        for (const char* t : kTickers)
            combo->addItem(QString::fromLatin1(t));
        grid->addWidget(new LText(QStringLiteral("Instrument")), 0, 0);
        grid->addWidget(combo, 0, 1);
        auto* qty = new LLineEdit;
        qty->setPlaceholderText(QStringLiteral("Quantity, e.g. 100"));
        grid->addWidget(new LText(QStringLiteral("Quantity")), 1, 0);
        grid->addWidget(qty, 1, 1);
        auto* price = new LLineEdit;
        price->setText(QStringLiteral("18.4x"));
        price->setErrorState(true);
        grid->addWidget(new LText(QStringLiteral("Limit price")), 2, 0);
        grid->addWidget(price, 2, 1);
        auto* err = new LText(QStringLiteral("Not a price"));
        err->setTextStyle(7);
        grid->addWidget(err, 3, 1);
        grid->setColumnStretch(1, 1);
        grid->setRowStretch(4, 1);
        return Section(QStringLiteral("Input"), grid);
    }

    QWidget* BuildIconButtons() {
        auto* col = new QVBoxLayout;
        auto* row = new QHBoxLayout;
        for (const char* path : kIcons) {
            auto* b = new LIconButton;
            b->setIconPath(QString::fromLatin1(path));
            b->setIconSize(QSize(20, 20));
            b->setFixedSize(32, 32);
            b->setHoverBackgroundEnabled(true);
            b->setToolTip(QString::fromLatin1(path));
            row->addWidget(b);
        }
        row->addStretch(1);
        col->addLayout(row);
        auto* row2 = new QHBoxLayout;
        auto* turned = new LIconButton;
        turned->setIconPath(QString::fromLatin1(LResource::icon_arrow_right_normal));
        turned->setRotate(90);
        turned->setFixedSize(32, 32);
        auto* off = new LIconButton;
        off->setIconPath(QString::fromLatin1(LResource::icon_close_normal));
        off->setFixedSize(32, 32);
        off->setEnabled(false);
        row2->addWidget(turned);
        row2->addWidget(new LText(QStringLiteral("turned 90°")));
        row2->addSpacing(12);
        row2->addWidget(off);
        row2->addWidget(new LText(QStringLiteral("disabled")));
        row2->addStretch(1);
        col->addLayout(row2);
        col->addStretch(1);
        return Section(QStringLiteral("Icon buttons"), col);
    }

    QWidget* BuildTabs() {
        auto* col = new QVBoxLayout;
        auto* tabs = new LTabBarBase;
        tabs->setExpanding(false);
        const char* const names[] = {"Watchlist", "Positions", "Orders", "自选股"};
        for (int i = 0; i < 4; ++i) {
            const int index = tabs->addTab(QString::fromUtf8(names[i]), QStringLiteral("tab_%1").arg(i));
            tabs->setTabTip(index, QStringLiteral("%1 (fixed: %2)").arg(QString::fromUtf8(names[i])).arg(i == 0));
        }
        tabs->setTabFixed(0, true);
        tabs->setMenuButtonVisible(1, true);
        auto* status = new LText(QStringLiteral("Fixed tab: Watchlist. Close or open the menu of the others."));
        status->setTextStyle(6);
        QPointer<LText> statusGuard(status);
        connect(tabs, &LTabBarBase::closeRequested, this, [tabs, statusGuard](int index) {
            if (statusGuard)
                statusGuard->setText(QStringLiteral("Closed %1").arg(tabs->tabText(index)));
            tabs->removeTab(index);
        });
        connect(tabs, &LTabBarBase::menuRequested, this, [tabs, statusGuard](int index) {
            if (statusGuard)
                statusGuard->setText(QStringLiteral("Menu of %1").arg(tabs->tabText(index)));
        });
        col->addWidget(tabs);
        col->addWidget(status);
        return Section(QStringLiteral("Tab bar"), col);
    }

    QWidget* BuildChart() {
        auto* col = new QVBoxLayout;
        auto* chart = new LLineChart;
        chart->SetTitle(QStringLiteral("Closing price, 40 sessions"));
        const int a = chart->AddSeries(QStringLiteral("NWCX"), QStringLiteral("ct_text_link"));
        const int b = chart->AddSeries(QStringLiteral("KOVA"), QStringLiteral("ct_text_red"), LLineChart::RightAxis);
        chart->SetSeriesData(a, Prices(18.0, 0.06, 0.9, 0.0));
        chart->SetSeriesData(b, Prices(64.0, -0.15, 2.6, 1.3));
        chart->SetVerticalScale(LLineChart::LeftAxis, 16, 22, {{16, "16"}, {18, "18"}, {20, "20"}, {22, "22"}});
        chart->SetVerticalScale(LLineChart::RightAxis, 50, 70, {{50, "50"}, {60, "60"}, {70, "70"}});
        chart->SetHorizontalScale(0, 39, {{0, "D1"}, {13, "D14"}, {26, "D27"}, {39, "D40"}});
        chart->SetCallBack(std::make_shared<PriceHover>());
        chart->setMinimumHeight(240);
        col->addWidget(chart);
        return Section(QStringLiteral("Line chart"), col);
    }

    QWidget* BuildSlideshow() {
        auto* col = new QVBoxLayout;
        auto* show = new LSlideshowBase(nullptr, LSlideshowBase::Ratio_2_1);
        const char* const pages[][2] = {{"NWCX earnings call at 16:30", "ct_bg_blue"},
                                        {"Dividend season: 12 names pay this week", "ct_bg_tertiary"},
                                        {"新股申购：QUIN 明日开放", "ct_bg_secondary"}};
        for (const auto& page : pages) {
            auto* label = new QLabel(QString::fromUtf8(page[0]));
            label->setAlignment(Qt::AlignCenter);
            label->setWordWrap(true);
            label->setProperty("lx_bg_token", QString::fromLatin1(page[1]));
            m_vecSlides << label;
            show->addWidget(label);
        }
        show->setAutoPlayInterval(3000);
        col->addWidget(show);
        col->addStretch(1);
        return Section(QStringLiteral("Slideshow"), col);
    }

    QWidget* BuildFlow() {
        auto* holder = new QWidget;
        auto* flow = new LFlowLayout(holder, 0, 8, 8);
        for (const char* tag : kTags) {
            auto* chip = new LText(QString::fromUtf8(tag));
            chip->setTextStyle(2);
            chip->setObjectName(QStringLiteral("DemoChip"));
            chip->setContentsMargins(10, 3, 10, 3);
            flow->addWidget(chip);
        }
        auto* col = new QVBoxLayout;
        col->addWidget(holder);
        return Section(QStringLiteral("Flow layout"), col);
    }

    QWidget* BuildColors() {
        auto* grid = new QGridLayout;
        int i = 0;
        for (const char* token : kColorTokens) {
            auto* swatch = new QLabel;
            swatch->setFixedSize(28, 18);
            swatch->setProperty("lx_token", QString::fromLatin1(token));
            m_vecSwatches << swatch;
            auto* name = new LText(QString::fromLatin1(token));
            name->setTextStyle(5);
            grid->addWidget(swatch, i / 2, (i % 2) * 2);
            grid->addWidget(name, i / 2, (i % 2) * 2 + 1);
            ++i;
        }
        grid->setColumnStretch(1, 1);
        grid->setColumnStretch(3, 1);
        return Section(QStringLiteral("Colour tokens"), grid);
    }

    QWidget* BuildFonts() {
        auto* col = new QVBoxLayout;
        for (const auto& token : LFontTokenLoader::getAllFontTokens()) {
            auto* label =
                new QLabel(QStringLiteral("%1 (%2 px) 行情 Quotes 123").arg(token.strName).arg(token.i32PixelSize));
            label->setFont(LFontTokenLoader::font(token.strName));
            col->addWidget(label);
        }
        col->addStretch(1);
        return Section(QStringLiteral("Font tokens"), col);
    }

    QWidget* BuildWindows() {
        auto* row = new QHBoxLayout;
        auto* plain = new QPushButton(QStringLiteral("LDialog style 1"));
        auto* tip = new QPushButton(QStringLiteral("LDialog style 2"));
        auto* frameless = new QPushButton(QStringLiteral("LFrameLessWnd"));
        auto* toast = new QPushButton(QStringLiteral("Toast"));
        for (auto* b : {plain, tip, frameless, toast})
            row->addWidget(b);
        row->addStretch(1);
        connect(plain, &QPushButton::clicked, this, [this] {
            auto* dlg = new LDialog(nullptr);
            dlg->setLxStyle(1);
            dlg->setTitle(QStringLiteral("Northwind Capital"));
            dlg->setContentWidget(new LText(QStringLiteral("A plain frame for custom content.")));
            dlg->showCenter(this, 360);
        });
        connect(tip, &QPushButton::clicked, this, [this] {
            auto* dlg = new LDialog(nullptr);
            dlg->setLxStyle(2);
            dlg->setTitle(lxstdui_multi_lang::gui_helper::textTip());
            dlg->setContent(lxstdui_multi_lang::gui_helper::textPageLoadFailed());
            dlg->setConfirmText(lxstdui_multi_lang::gui_helper::textIKnow());
            dlg->showCenter(this, -1);
        });
        connect(frameless, &QPushButton::clicked, this, [] {
            auto* wnd = new LFrameLessWnd;
            wnd->setAttribute(Qt::WA_DeleteOnClose);
            wnd->setTitle(QStringLiteral("Order ticket: ZQX"));
            auto* content = new QWidget;
            auto* col = new QVBoxLayout(content);
            col->addWidget(new LText(QStringLiteral("Buy 200 ZQX at 41.20, good for the day.")));
            auto* note = new LText(QStringLiteral("Drag the title bar to move, the border to resize."));
            note->setTextStyle(6);
            col->addWidget(note);
            col->addStretch(1);
            wnd->setContentWidget(content);
            wnd->resize(420, 220);
            wnd->show();
        });
        connect(toast, &QPushButton::clicked, this,
                [] { gui::ShowSimpleToast(QStringLiteral("Order ZQX-1042 filled"), TriBool::True, 2000); });
        return Section(QStringLiteral("Windows and dialogs"), row);
    }

    void Repaint() {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        if (m_pThemeSwitch) {
            const QSignalBlocker block(m_pThemeSwitch.data());  // the theme changed elsewhere
            m_pThemeSwitch->setChecked(lx_ui_theme::Manager::instance()->isDark());
        }
        const QString text = res->colorString(QStringLiteral("ct_text_h1"));
        setStyleSheet(QStringLiteral("#LxStdUiDemoMainWnd, #LxStdUiDemoBody { background: %1; }"
                                     " #DemoSection { background: %2; border: 1px solid %3; border-radius: 6px; }"
                                     " #DemoChip { background: %4; border-radius: 10px; }"
                                     " QLabel { color: %5; }"
                                     " QPushButton { color: %5; background: %2; border: 1px solid %6;"
                                     " border-radius: 4px; padding: 4px 12px; }"
                                     " QPushButton:hover { background: %7; }"
                                     " QTabBar::tab { color: %8; background: %4; border: 1px solid %6;"
                                     " padding: 5px 14px; margin-right: 2px; }"
                                     " QTabBar::tab:selected { color: %5; background: %2; }")
                          .arg(res->colorString(QStringLiteral("ct_bg_secondary")),
                               res->colorString(QStringLiteral("ct_bg_primary")),
                               res->colorString(QStringLiteral("ct_line_separator")),
                               res->colorString(QStringLiteral("ct_bg_tertiary")), text,
                               res->colorString(QStringLiteral("ct_border")),
                               res->colorString(QStringLiteral("ct_bg_hover")),
                               res->colorString(QStringLiteral("ct_text_h2"))));
        for (QLabel* swatch : qAsConst(m_vecSwatches))
            if (swatch)
                swatch->setStyleSheet(QStringLiteral("background: %1; border: 1px solid %2;")
                                          .arg(res->colorString(swatch->property("lx_token").toString()),
                                               res->colorString(QStringLiteral("ct_border"))));
        for (QLabel* slide : qAsConst(m_vecSlides))
            if (slide)
                slide->setStyleSheet(QStringLiteral("background: %1; color: %2; font-size: 16px;")
                                         .arg(res->colorString(slide->property("lx_bg_token").toString()), text));
    }

    QPointer<QWidget> m_pBody;
    QPointer<LSwitch> m_pThemeSwitch;
    QList<QPointer<QLabel>> m_vecSwatches;
    QList<QPointer<QLabel>> m_vecSlides;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) void showMainWnd() {
    auto* wnd = new DemoWindow;
    wnd->show();
    wnd->raise();
    const QString prefix = qEnvironmentVariable("LX_STDUI_DEMO_SCREENSHOT");
    if (!prefix.isEmpty()) {
        QPointer<DemoWindow> guard(wnd);
        QTimer::singleShot(0, wnd, [guard, prefix] {
            if (guard)
                guard->SaveScreenshots(prefix);
        });
    }
}
