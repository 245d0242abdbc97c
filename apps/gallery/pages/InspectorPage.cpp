// Inspector: things to pick with the widget inspector (Ctrl+F10, or the button): nested panels, a
// list, a table with headers, a tree, a tab bar and a menu. The demo picks a table cell and opens
// the inspector beside it (over the page's right half), so a screenshot shows the selection frame on
// the cell, the widget tree expanded to it and the cell's properties.

#include "GalleryPages.h"

#include <LxStdUI/LTabBarBase.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>
#include <LxUIKit/DevTools/Spy/SpyToolWnd.h>

#include <QCoreApplication>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(InspectorPage)
};

QWidget* NestedPanels(QWidget* parent) {
    auto* outer = new QWidget(parent);
    outer->setObjectName(QStringLiteral("OuterPanel"));
    outer->setStyleSheet(QStringLiteral("#OuterPanel { border: 1px solid #8AA4C8; border-radius: 4px; }"));
    auto* v = new QVBoxLayout(outer);
    auto* inner = new QWidget(outer);
    inner->setObjectName(QStringLiteral("InnerPanel"));
    auto* h = new QVBoxLayout(inner);
    auto* label =
        new QLabel(Texts::tr("Nested panels: pick the button, then turn the wheel in Figma mode (F2)."), inner);
    label->setWordWrap(true);
    h->addWidget(label);
    auto* buy = new QPushButton(Texts::tr("Place order"), inner);
    buy->setObjectName(QStringLiteral("PlaceOrderButton"));
    h->addWidget(buy);
    v->addWidget(inner);
    return outer;
}
}  // namespace

QWidget* CreateInspectorPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* grid = new QGridLayout(page);

    auto* open = new QPushButton(Texts::tr("Open the inspector (Ctrl+F10)"), page);
    open->setObjectName(QStringLiteral("OpenInspectorButton"));
    QObject::connect(open, &QPushButton::clicked, page, [] { initSpyToolWnd(true); });
    auto* menuButton = new QToolButton(page);
    menuButton->setText(Texts::tr("Order menu"));
    menuButton->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(menuButton);
    menu->addAction(Texts::tr("Buy"));
    menu->addAction(Texts::tr("Sell"));
    menu->addSeparator();
    menu->addAction(Texts::tr("Cancel all"));
    menuButton->setMenu(menu);
    grid->addWidget(open, 0, 0);
    grid->addWidget(menuButton, 0, 1);

    auto* tabs = new LTabBarBase(page);
    tabs->setObjectName(QStringLiteral("InspectorTabs"));
    for (const auto& t : {std::make_pair(Texts::tr("Watchlist"), QStringLiteral("tab.watch")),
                          std::make_pair(Texts::tr("Alerts"), QStringLiteral("tab.alerts")),
                          std::make_pair(Texts::tr("News"), QStringLiteral("tab.news"))}) {
        const int i = tabs->addTab(t.first, t.second);
        tabs->setTabObjectName(i, QStringLiteral("Tab_") + t.second.mid(4));
    }
    tabs->setTabFixed(0, true);
    tabs->setMenuButtonVisible(1, true);
    grid->addWidget(tabs, 1, 0, 1, 2);

    grid->addWidget(NestedPanels(page), 2, 0);
    auto* list = new QListWidget(page);
    list->setObjectName(QStringLiteral("InspectorList"));
    list->addItems({Texts::tr("Northwind Tools"), Texts::tr("Bluepeak Energy"), Texts::tr("Orchard Robotics"),
                    Texts::tr("Kestrel Labs")});
    grid->addWidget(list, 2, 1);

    auto* table = new QTableWidget(6, 3, page);
    table->setObjectName(QStringLiteral("InspectorTable"));
    table->setHorizontalHeaderLabels({Texts::tr("Ticker"), Texts::tr("Last"), Texts::tr("Change")});
    const char* const tickers[] = {"NWTL", "BLPK", "ORCR", "KSTL", "MRDN", "QLNX"};
    for (int r = 0; r < 6; ++r) {
        table->setItem(r, 0, new QTableWidgetItem(QLatin1String(tickers[r])));
        table->setItem(r, 1, new QTableWidgetItem(QString::number(12.5 + r * 3.25, 'f', 2)));
        table->setItem(r, 2,
                       new QTableWidgetItem(QLatin1String(r % 2 ? "+" : "-") + QString::number(r * 0.7, 'f', 1) +
                                            QLatin1Char('%')));
    }
    table->horizontalHeader()->setStretchLastSection(true);
    grid->addWidget(table, 3, 0);

    auto* tree = new QTreeWidget(page);
    tree->setObjectName(QStringLiteral("InspectorTree"));
    tree->setHeaderLabel(Texts::tr("Portfolios"));
    for (const QString& name : {Texts::tr("Growth"), Texts::tr("Income")}) {
        auto* p = new QTreeWidgetItem(tree, QStringList(name));
        for (const char* t : {"NWTL", "ORCR", "QLNX"})
            new QTreeWidgetItem(p, QStringList(QLatin1String(t)));
    }
    tree->expandAll();
    grid->addWidget(tree, 3, 1);

    // The window's style leaves tables alone; this one follows the theme like the list beside it.
    auto applyTheme = [table] {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        table->setStyleSheet(QStringLiteral("QTableWidget { background:%1; color:%2; gridline-color:%3;"
                                            " border:1px solid %4; }"
                                            "QTableCornerButton::section { background:%5; border:none; }")
                                 .arg(res->colorString(QStringLiteral("ct_bg_primary")),
                                      res->colorString(QStringLiteral("ct_text_h1")),
                                      res->colorString(QStringLiteral("ct_line_separator")),
                                      res->colorString(QStringLiteral("ct_border")),
                                      res->colorString(QStringLiteral("ct_bg_secondary"))));
    };
    applyTheme();
    QObject::connect(lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, table, applyTheme);
    return page;
}

void DemoInspectorPage(QWidget* page) {
    auto* table = page->findChild<QTableWidget*>(QStringLiteral("InspectorTable"));
    if (!table)
        return;
    const QRect cell = table->visualRect(table->model()->index(2, 1));
    const QPoint pos = table->viewport()->mapTo(table, cell.center());
    const PseudoWidget picked = PseudoWidget::FromWidgetPoint(table, pos);
    initSpyToolWnd(false);
    CSpyToolWnd* spy = currentSpyToolWnd();
    if (!spy)
        return;
    // Over the right part of the gallery window, leaving the picked cell in sight.
    const QWidget* window = page->window();
    const QPoint origin = window->mapToGlobal(QPoint(0, 0));
    const int width = qMin(780, window->width() * 2 / 3);
    spy->setGeometry(QRect(origin + QPoint(window->width() - width, 48), QSize(width, window->height() - 48)));
    spy->show();
    spy->raise();
    ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(picked, nullptr);
}
