// Hit testing of the widget inspector: real widgets under a point, and the items (cells, header
// cells, tabs, menu actions) that views, tab bars and menus draw themselves.

#include <LxStdUI/LTabBarBase.h>
#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>
#include <LxUIKit/DevTools/Spy/PseudoWidget.h>

#include <QHeaderView>
#include <QListWidget>
#include <QMenu>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtTest>

#include "LxTestSupport.h"
#include "SpyTestUtil.h"

using namespace devtools::spy;

namespace {
QWidget* Child(QWidget* parent, const QRect& r, const QString& name) {
    auto* w = new QWidget(parent);
    w->setObjectName(name);
    w->setGeometry(r);
    return w;
}
}  // namespace

class TestSpyHitTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void childAtExFindsTopmostVisibleChildAndEquality() {
        QWidget top;
        top.resize(200, 200);
        QWidget* a = Child(&top, QRect(0, 0, 100, 100), "a");
        QWidget* b = Child(&top, QRect(50, 50, 100, 100), "b");  // above a
        QWidget* inner = Child(b, QRect(10, 10, 20, 20), "inner");
        top.show();
        QVERIFY(QTest::qWaitForWindowExposed(&top));

        QCOMPARE(childAtEx(&top, QPoint(55, 55)), b);  // overlap: the later sibling is on top
        QCOMPARE(childAtEx(&top, QPoint(10, 10)), a);
        QCOMPARE(childAtEx(&top, QPoint(65, 65)), inner);
        QCOMPARE(childAtEx(&top, QPoint(190, 190)), &top);  // no child: the widget itself
        // Edges of the widget itself count as inside; one pixel further does not.
        QCOMPARE(childAtEx(&top, QPoint(200, 200)), &top);
        QCOMPARE(childAtEx(&top, QPoint(201, 10)), nullptr);
        QCOMPARE(childAtEx(&top, QPoint(-1, 10)), nullptr);
        QCOMPARE(childAtEx(nullptr, QPoint(1, 1)), nullptr);
        QWidget hidden;
        hidden.resize(10, 10);
        QCOMPARE(childAtEx(&hidden, QPoint(1, 1)), nullptr);  // never shown: no visible attribute
        // Through the window: the same search from the window's coordinates.
        QCOMPARE(PseudoWidget::FromWindowPoint(top.windowHandle(), QPoint(15, 15)).widget(), a);
        QWindow plain;
        QVERIFY(PseudoWidget::FromWindowPoint(&plain, QPoint(1, 1)).isNull());
        QVERIFY(PseudoWidget::FromWindowPoint(nullptr, QPoint(1, 1)).isNull());

        PseudoWidget one(QRect(1, 2, 3, 4), &top, "x", nullptr, QString(), {});
        PseudoWidget same(QRect(1, 2, 3, 4), &top, "x", nullptr, QString(), {});
        PseudoWidget other(QRect(1, 2, 3, 5), &top, "x", nullptr, QString(), {});
        QVERIFY(one == same);
        QVERIFY(one != other);
        QVERIFY(one != PseudoWidget(&top));
        QVERIFY(PseudoWidget(a) == PseudoWidget(static_cast<QObject*>(a)));
        QCOMPARE(one.mapTo(&top, QPoint(0, 0)), QPoint(1, 2));
        QVERIFY(PseudoWidget(a).isWidget() && !PseudoWidget(a).isObject());
        QObject plainObject;
        QVERIFY(PseudoWidget(&plainObject).isObject());
        auto* layout = new QVBoxLayout(a);
        QVERIFY(PseudoWidget(layout).isLayout());
        QCOMPARE(PseudoWidget(layout).window(), &top);
    }
    void childAtExSkipsHiddenWindowsMasksAndOverlays() {
        QWidget top;
        top.resize(200, 200);
        QWidget* base = Child(&top, QRect(0, 0, 200, 200), "base");
        QWidget* hiddenChild = Child(&top, QRect(0, 0, 50, 50), "hidden");
        QWidget* masked = Child(&top, QRect(100, 0, 100, 100), "masked");
        masked->setMask(QRegion(0, 0, 10, 10));
        auto* overlay = new LxWidgetRectView(Qt::red, Qt::SolidLine);  // the inspector's own frame
        overlay->setParent(&top);
        overlay->setGeometry(0, 100, 100, 100);
        auto* childWindow = new QWidget(&top, Qt::Tool);
        childWindow->setGeometry(0, 0, 200, 200);
        top.show();
        overlay->show();
        hiddenChild->hide();
        QVERIFY(QTest::qWaitForWindowExposed(&top));
        childWindow->show();

        QCOMPARE(childAtEx(&top, QPoint(10, 10)), base);    // hidden child and child window fall through
        QCOMPARE(childAtEx(&top, QPoint(105, 5)), masked);  // inside the mask
        QCOMPARE(childAtEx(&top, QPoint(150, 50)), base);   // outside the mask
        QCOMPARE(childAtEx(&top, QPoint(50, 150)), base);   // the inspector's overlay is never picked
        QCOMPARE(PseudoWidget::FromWidgetPoint(&top, QPoint(50, 150)).widget(), base);
    }
    void tableCellsAndHeaderCells() {
        QTableWidget table(50, 3);
        table.resize(400, 300);
        table.setHorizontalHeaderLabels({"Ticker", "Price", "Change"});
        for (int r = 0; r < 50; ++r)
            table.setItem(r, 1, new QTableWidgetItem(QStringLiteral("cell %1").arg(r)));
        table.setRowHidden(0, true);
        table.show();
        QVERIFY(QTest::qWaitForWindowExposed(&table));

        // Body cell: row 0 is hidden, so the first visible row is 1.
        const QRect cell = table.visualRect(table.model()->index(1, 1));
        PseudoWidget p = PseudoWidget::FromWidgetPoint(&table, InView(&table, cell.center()));
        QVERIFY(p.isPhantom());
        QCOMPARE(p.phantomContainer(), &table);
        QCOMPARE(p.text(), QStringLiteral("cell 1"));
        QCOMPARE(p.geometry(), cell.translated(InView(&table, QPoint())));
        QCOMPARE(p.phantomProperties()->value("row").toInt(), 1);

        // Horizontal header cell: found through the table, not the header.
        QHeaderView* hh = table.horizontalHeader();
        const QPoint hPos = hh->viewport()->mapTo(&table, QPoint(hh->sectionViewportPosition(2) + 3, 3));
        p = PseudoWidget::FromWidgetPoint(&table, hPos);
        QCOMPARE(p.phantomContainer(), &table);
        QCOMPARE(p.text(), QStringLiteral("Change"));
        QVERIFY(p.geometry().contains(hPos));
        QCOMPARE(p.phantomProperties()->value("orientation").toString(), QStringLiteral("horizontal"));

        // Vertical header: row labels are 1-based numbers; the hidden row 0 is skipped.
        QHeaderView* vh = table.verticalHeader();
        const QPoint vPos = vh->viewport()->mapTo(&table, QPoint(3, vh->sectionViewportPosition(1) + 2));
        p = PseudoWidget::FromWidgetPoint(&table, vPos);
        QCOMPARE(p.phantomContainer(), &table);
        QCOMPARE(p.text(), QStringLiteral("2"));

        // Right-to-left: the first column sits at the right end.
        table.setLayoutDirection(Qt::RightToLeft);
        QCoreApplication::processEvents();
        const QPoint rtl = hh->viewport()->mapTo(&table, QPoint(hh->sectionViewportPosition(0) + 3, 3));
        QCOMPARE(PseudoWidget::FromWidgetPoint(&table, rtl).text(), QStringLiteral("Ticker"));
        QVERIFY(rtl.x() > table.width() / 2);

        QCOMPARE(PseudoWidgetAtQTableView(nullptr, QPoint()).isNull(), true);
    }
    void listAndTreeItems() {
        QListWidget list;
        list.addItems({"Northwind", "Bluepeak", "Orchard"});
        list.resize(200, 200);
        QTreeWidget tree;
        auto* parent = new QTreeWidgetItem(&tree, QStringList("Portfolio"));
        new QTreeWidgetItem(parent, QStringList("Kestrel Labs"));
        tree.expandAll();
        tree.resize(200, 200);
        list.show();
        tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list));
        QVERIFY(QTest::qWaitForWindowExposed(&tree));

        PseudoWidget p =
            PseudoWidget::FromWidgetPoint(&list, InView(&list, list.visualItemRect(list.item(1)).center()));
        QCOMPARE(p.text(), QStringLiteral("Bluepeak"));
        QCOMPARE(p.phantomContainer(), &list);
        QCOMPARE(p.className(), QStringLiteral("QListWidget::Item"));

        p = PseudoWidget::FromWidgetPoint(&tree, InView(&tree, tree.visualItemRect(parent->child(0)).center()));
        QCOMPARE(p.text(), QStringLiteral("Kestrel Labs"));
        QCOMPARE(p.phantomProperties()->value("level").toInt(), 1);
        // The tree's header is not a table header: it is picked as a widget of its own.
        const QPoint head = tree.header()->viewport()->mapTo(&tree, QPoint(5, 5));
        QCOMPARE(PseudoWidget::FromWidgetPoint(&tree, head).widget(), tree.header()->viewport());
    }
    void viewsWithoutItemsYieldTheView() {
        QListWidget list;
        list.addItem("only");
        list.resize(200, 200);
        QTableView noModel;
        noModel.resize(100, 100);
        QTreeView emptyTree;
        QStandardItemModel empty;
        emptyTree.setModel(&empty);
        emptyTree.resize(100, 100);
        for (QWidget* w :
             {static_cast<QWidget*>(&list), static_cast<QWidget*>(&noModel), static_cast<QWidget*>(&emptyTree)})
            w->show();
        QVERIFY(QTest::qWaitForWindowExposed(&emptyTree));

        const QPoint below = InView(&list, QPoint(5, list.viewport()->height() - 3));
        QCOMPARE(PseudoWidget::FromWidgetPoint(&list, below).widget(), &list);
        QCOMPARE(FromSpecialWidget(&noModel, QPoint(50, 50)).widget(), &noModel);
        QCOMPARE(PseudoWidget::FromWidgetPoint(&emptyTree, QPoint(50, 60)).widget(), &emptyTree);
        QVERIFY(!IsSpecialWidget(nullptr));
        QVERIFY(!GetSpecialWidgetContentParent(nullptr));
        QCOMPARE(GetSpecialWidgetContentParent(list.viewport()), &list);
        QCOMPARE(GetSpecialWidgetContentParent(&list), nullptr);
    }
    void tabBarKeys() {
        QTabBar plain;
        plain.addTab("Quotes");
        plain.addTab("News");
        LTabBarBase own;
        own.setTabsClosable(true);
        own.addTab("Watchlist", "tab.watch");
        own.addTab("Alerts", "tab.alerts");
        own.setTabObjectName(1, "AlertsTab");
        own.setTabFixed(1, true);
        own.setTabTip(1, "Price alerts");
        own.setMenuButtonVisible(1, true);
        plain.show();
        own.show();
        QVERIFY(QTest::qWaitForWindowExposed(&own));

        PseudoWidget p = PseudoWidgetAtQTabBar(&plain, plain.tabRect(1).center());
        QCOMPARE(p.text(), QStringLiteral("News"));
        QCOMPARE(p.phantomProperties()->keys(), QStringList({"index", "isTabVisible"}));
        QCOMPARE(p.phantomProperties()->value("index").toInt(), 1);

        p = PseudoWidget::FromWidgetPoint(&own, own.tabRect(1).center() + QPoint(0, 2));
        QCOMPARE(p.phantomContainer(), &own);
        QCOMPARE(p.className(), QStringLiteral("AlertsTab"));
        const auto props = p.phantomProperties();
        QCOMPARE(props->value("tabID").toString(), QStringLiteral("tab.alerts"));
        QCOMPARE(props->value("isTabFixed").toBool(), true);
        QCOMPARE(props->value("tabTip").toString(), QStringLiteral("Price alerts"));
        QCOMPARE(props->value("isMenuButtonVisible").toBool(), true);
        QCOMPARE(props->value("isCloseButtonVisible").toBool(), false);  // a fixed tab cannot be closed
        QCOMPARE(props->size(), 7);
        // Per-tab data follows a moved tab.
        own.moveTab(1, 0);
        QCOMPARE(own.tabID(0), QStringLiteral("tab.alerts"));
        QCOMPARE(own.indexOfTabID("tab.watch"), 1);
        QCOMPARE(PseudoWidgetAtQTabBar(&plain, QPoint(-5, -5)).widget(), &plain);
    }
    void menuActionsAndSeparators() {
        QMenu menu;
        QAction* buy = menu.addAction("Buy");
        QAction* sep = menu.addSeparator();
        menu.addAction("Sell");
        menu.popup(QPoint(10, 10));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));

        PseudoWidget p = PseudoWidget::FromWidgetPoint(&menu, menu.actionGeometry(buy).center());
        QCOMPARE(p.phantomObject(), buy);
        QCOMPARE(p.text(), QStringLiteral("Buy"));
        QCOMPARE(p.phantomContainer(), &menu);
        QCOMPARE(PseudoWidget::FromWidgetPoint(&menu, menu.actionGeometry(sep).center()).widget(), &menu);
        menu.close();
    }
    void phantomOutlivesContainer() {
        auto* list = new QListWidget;
        list->addItem("gone soon");
        list->show();
        QVERIFY(QTest::qWaitForWindowExposed(list));
        PseudoWidget copy =
            PseudoWidget::FromWidgetPoint(list, InView(list, list->visualItemRect(list->item(0)).center()));
        QVERIFY(copy.isValid());
        delete list;
        QVERIFY(!copy.isValid());
        QVERIFY(copy.isNull());
        QCOMPARE(copy.phantomContainer(), nullptr);
        QCOMPARE(copy.window(), nullptr);
        QCOMPARE(copy.mapToGlobal(QPoint(1, 2)), QPoint(1, 2));
        QCOMPARE(copy.text(), QStringLiteral("gone soon"));  // the record itself stays readable
        copy.update();                                       // no container: nothing to do, no crash
    }
};

QTEST_MAIN(TestSpyHitTest)
#include "tst_SpyHitTest.moc"
