// The inspector window: one instance, picking through the shared configuration, events that pick
// never reach the application, keep-picking, the F2/F3 modes.

#include <LxStdUI/SvgIconRenderer.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>
#include <LxUIKit/DevTools/Spy/LxWidgetPropertyView_p.h>
#include <LxUIKit/DevTools/Spy/SpyTexts_p.h>
#include <LxUIKit/DevTools/Spy/SpyToolWnd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabBar>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QtTest>

#include "LxTestSupport.h"

class TestSpyToolWnd : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() {
        if (CSpyToolWnd* w = currentSpyToolWnd())
            delete w;
        ILxUISpyComponent::ResetSharedState();
        QGuiApplication::restoreOverrideCursor();
        devtools::SetReportEnabled(false);
        lxtest::ResetGlobals();
    }
    void singleInstanceAndPicking();
    void clicksThatPickAreConsumed();
    void keepPickingAndHover();
    void hotKeysAndFigmaWheel();
    void copyReviewTexts();
    void reporterLogsPicksOnlyWhenEnabled();
    void popupPassThrough();
    void toolBarIconsFollowTheme();
};

namespace {
CSpyToolWnd* OpenPicking() {
    initSpyToolWnd(true);
    CSpyToolWnd* w = currentSpyToolWnd();
    QElapsedTimer t;
    t.start();
    while (w && !ILxUISpyComponent::ms_config.picking && t.elapsed() < 2000)
        QTest::qWait(5);
    return w;
}

struct App {
    QWidget top;
    QPushButton* button;
    QWidget* panel;
    App() {
        top.resize(300, 200);
        panel = new QWidget(&top);
        panel->setObjectName("panel");
        panel->setGeometry(10, 10, 200, 100);
        button = new QPushButton("Buy", panel);
        button->setGeometry(10, 10, 80, 30);
        top.show();
    }
    QPoint ButtonPoint() const { return button->mapTo(&top, QPoint(20, 10)); }
};
}  // namespace

void TestSpyToolWnd::singleInstanceAndPicking() {
    CSpyToolWnd* w = OpenPicking();
    QVERIFY(w);
    QVERIFY(!w->isVisible());  // hidden while picking, so it never covers what is picked
    QCOMPARE(w->startStopButton()->text(), QStringLiteral("■"));
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::CrossCursor);
    initSpyToolWnd(true);  // a second call never makes a second window
    QCOMPARE(currentSpyToolWnd(), w);
    QTest::qWait(30);
    QVERIFY(ILxUISpyComponent::ms_config.picking);  // and does not toggle picking off

    w->StartOrStopEventFilter();
    QVERIFY(!ILxUISpyComponent::ms_config.picking);
    QVERIFY(w->isVisible());
    QCOMPARE(w->startStopButton()->text(), QStringLiteral("▶"));
    QVERIFY(!QGuiApplication::overrideCursor());
    QTRY_VERIFY(w->width() >= 960);  // working size restored after picking
    QStringList tabs;
    for (int i = 0; i < w->tabWidget()->count(); ++i)
        tabs << w->tabWidget()->tabText(i);
    QCOMPARE(tabs.mid(0, 6), QStringList({"属性&&样式表", "设计", "调试", "窗口缩放调试", "事件查看器", "信号&槽"}));

    w->close();  // deletes itself
    QTRY_VERIFY(!currentSpyToolWnd());
    initSpyToolWnd(false);
    QVERIFY(currentSpyToolWnd());
    QVERIFY(!currentSpyToolWnd()->isVisible());
}

void TestSpyToolWnd::clicksThatPickAreConsumed() {
    App app;
    QVERIFY(QTest::qWaitForWindowExposed(&app.top));
    QSignalSpy clicked(app.button, &QPushButton::clicked);
    CSpyToolWnd* w = OpenPicking();
    QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
    QCOMPARE(clicked.count(), 0);
    QCOMPARE(ILxUISpyComponent::SelectedPseudoWidget().widget(), app.button);
    QCOMPARE(ILxUISpyComponent::DebugWindow(), app.top.windowHandle());
    QVERIFY(!ILxUISpyComponent::ms_config.picking);  // one pick ends picking
    QVERIFY(w->isVisible());
    // The highlight frames the selection inside the picked window.
    LxCurrentWidgetHighLightView* hl = LxCurrentWidgetHighLightView::Instance();
    QVERIFY(hl && hl->selectionFrame());
    QCOMPARE(hl->selectionFrame()->parentWidget(), &app.top);
    QCOMPARE(hl->selectionFrame()->geometry(), QRect(app.ButtonPoint() - QPoint(20, 10), app.button->size()));
    // Not picking: the application gets its clicks again.
    QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
    QCOMPARE(clicked.count(), 1);
}

void TestSpyToolWnd::keepPickingAndHover() {
    App app;
    QVERIFY(QTest::qWaitForWindowExposed(&app.top));
    CSpyToolWnd* w = OpenPicking();
    w->keepPickingCheckBox()->setChecked(true);
    QVERIFY(ILxUISpyComponent::ms_config.keepPicking);
    QTest::mouseMove(app.top.windowHandle(), QPoint(150, 150));
    QTRY_COMPARE(ILxUISpyComponent::HoveredPseudoWidget().widget(), &app.top);
    QTest::mouseMove(app.top.windowHandle(), app.ButtonPoint());
    QTRY_COMPARE(ILxUISpyComponent::HoveredPseudoWidget().widget(), app.button);
    QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
    QVERIFY(ILxUISpyComponent::ms_config.picking);  // keeps picking
    QCOMPARE(ILxUISpyComponent::SelectedPseudoWidget().widget(), app.button);
    // Keys go to the inspector, not the application; Esc ends picking.
    QTest::keyClick(app.top.windowHandle(), Qt::Key_Escape);
    QVERIFY(!ILxUISpyComponent::ms_config.picking);
}

void TestSpyToolWnd::hotKeysAndFigmaWheel() {
    App app;
    QVERIFY(QTest::qWaitForWindowExposed(&app.top));
    CSpyToolWnd* w = OpenPicking();
    QTest::keyClick(app.top.windowHandle(), Qt::Key_F2);
    QVERIFY(ILxUISpyComponent::ms_config.figmaMode);
    QVERIFY(w->figmaCheckBox()->isChecked());
    QTest::keyClick(app.top.windowHandle(), Qt::Key_F3);
    QVERIFY(ILxUISpyComponent::ms_config.copyReviewMode);
    QVERIFY(w->OnHotKey(Qt::Key_F3, Qt::NoModifier));
    QVERIFY(!ILxUISpyComponent::ms_config.copyReviewMode);
    QVERIFY(!w->OnHotKey(Qt::Key_F7, Qt::NoModifier));  // nobody takes it

    QTest::mouseMove(app.top.windowHandle(), QPoint(150, 150));  // a move needs a new position
    QTest::mouseMove(app.top.windowHandle(), app.ButtonPoint());
    QTRY_COMPARE(ILxUISpyComponent::HoveredPseudoWidget().widget(), app.button);
    auto wheel = [&](int dy) {
        QWheelEvent ev(QPointF(app.ButtonPoint()), QPointF(app.top.mapToGlobal(app.ButtonPoint())), QPoint(),
                       QPoint(0, dy), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        return QCoreApplication::sendEvent(app.top.windowHandle(), &ev);
    };
    wheel(-120);  // towards the parent
    QCOMPARE(ILxUISpyComponent::HoveredPseudoWidget().widget(), app.panel);
    wheel(-120);
    QCOMPARE(ILxUISpyComponent::HoveredPseudoWidget().widget(), &app.top);
    wheel(-120);  // a window has no parent to walk to
    QCOMPARE(ILxUISpyComponent::HoveredPseudoWidget().widget(), &app.top);
    wheel(120);  // back down
    QCOMPARE(ILxUISpyComponent::HoveredPseudoWidget().widget(), app.panel);
    // A click picks the walked-to item.
    QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
    QCOMPARE(ILxUISpyComponent::SelectedPseudoWidget().widget(), app.panel);
}

void TestSpyToolWnd::copyReviewTexts() {
    using devtools::spy::CopyReviewTexts;
    QWidget box;
    auto* v = new QVBoxLayout(&box);
    auto* buy = new QPushButton("Buy", &box);
    v->addWidget(buy);
    v->addWidget(new QPushButton("Sell", &box));
    v->addWidget(new QLabel("", &box));  // empty texts are left out
    QCOMPARE(CopyReviewTexts(buy), QStringList({"Buy", "Sell"}));

    QTabBar bar;
    bar.addTab("Quotes");
    bar.addTab("News");
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    const PseudoWidget tab = devtools::spy::PseudoWidgetAtQTabBar(&bar, bar.tabRect(1).center());
    QCOMPARE(CopyReviewTexts(tab), QStringList({"News", "Quotes"}));

    QListWidget list;
    for (int i = 0; i < 40; ++i)
        list.addItem(QStringLiteral("row %1").arg(i));
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const QPoint off = list.viewport()->mapTo(&list, QPoint(0, 0));
    const PseudoWidget cell = PseudoWidget::FromWidgetPoint(&list, list.visualItemRect(list.item(5)).center() + off);
    const QStringList texts = CopyReviewTexts(cell);
    QCOMPARE(texts.first(), QStringLiteral("row 5"));
    QVERIFY(texts.contains("row 4") && texts.contains("row 6") && texts.contains("row 8"));
    QVERIFY(!texts.contains("row 9"));
    QVERIFY(CopyReviewTexts(PseudoWidget()).isEmpty());
}

void TestSpyToolWnd::reporterLogsPicksOnlyWhenEnabled() {
    App app;
    app.top.setObjectName("Desk");
    app.panel->setObjectName("OrderPanel");
    QVERIFY(QTest::qWaitForWindowExposed(&app.top));
    lxtest::LogCapture logs;
    auto reports = [&logs] {
        QStringList out;
        for (const auto& r : logs.records())
            if (r.i32Level == FrameWork::kLogReport && r.strModule == "LxUIKit")
                out << r.strText;
        return out;
    };
    OpenPicking();
    QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
    QCOMPARE(ILxUISpyComponent::SelectedPseudoWidget().widget(), app.button);
    QVERIFY(reports().isEmpty());  // off by default

    devtools::SetReportEnabled(true);
    OpenPicking();
    QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
    QCOMPARE(reports(), QStringList({"spy pick (click): class=QPushButton objectName= "
                                     "path=Desk/OrderPanel/[QPushButton] geometry=(20, 20 80x30) in window"}));
    // A choice in the inspector is reported too; a phantom names its container and text.
    QTabBar bar(&app.top);
    bar.setObjectName("Tabs");
    bar.addTab("Quotes");
    bar.addTab("News");
    bar.show();
    ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(
        devtools::spy::PseudoWidgetAtQTabBar(&bar, bar.tabRect(1).center()), nullptr);
    QVERIFY2(reports().value(1).startsWith("spy pick (select): class=QTabBar::Item objectName= path=Desk/Tabs "),
             qPrintable(reports().value(1)));
    QVERIFY(reports().value(1).endsWith(" container=QTabBar#Tabs text=\"News\""));
    ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(PseudoWidget(), nullptr);  // nothing to report
    QCOMPARE(reports().size(), 2);

    devtools::SetReportEnabled(false);
    ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(app.button, nullptr);
    QCOMPARE(reports().size(), 2);
}

void TestSpyToolWnd::popupPassThrough() {
    initSpyToolWnd(false);
    CSpyToolWnd* w = currentSpyToolWnd();
    QPushButton selected("Buy");  // many properties: the property table scrolls
    ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(&selected, nullptr);
    w->setGeometry(0, 0, 900, 500);
    w->show();
    QVERIFY(QTest::qWaitForWindowExposed(w));
    QWidget popup(nullptr, Qt::Popup);
    popup.setGeometry(700, 520, 120, 60);
    popup.show();
    QTRY_COMPARE(QApplication::activePopupWidget(), &popup);

    // A click on the inspector reaches the check box under it; the popup stays open.
    QCheckBox* keep = w->keepPickingCheckBox();
    QTest::mouseClick(w->windowHandle(), Qt::LeftButton, Qt::NoModifier, keep->mapTo(w, QPoint(6, keep->height() / 2)));
    QVERIFY(keep->isChecked());
    QVERIFY(ILxUISpyComponent::ms_config.keepPicking);
    QVERIFY(popup.isVisible());

    // The wheel scrolls the list under it instead of going to the popup.
    QTableWidget* table = w->findChild<LxWidgetPropertyView*>()->table();
    QVERIFY(table->isVisible());
    QCOMPARE(table->verticalScrollBar()->value(), 0);
    const QPoint at = table->viewport()->mapTo(w, table->viewport()->rect().center());
    QWheelEvent wheel(QPointF(at), QPointF(w->mapToGlobal(at)), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(w->windowHandle(), &wheel);
    QVERIFY(table->verticalScrollBar()->value() > 0);

    // A QMenu is left alone: it handles clicks outside itself (by closing).
    popup.close();
    QMenu menu;
    menu.addAction("Buy");
    menu.popup(QPoint(700, 520));
    QTRY_COMPARE(QApplication::activePopupWidget(), &menu);
    QTest::mouseClick(w->windowHandle(), Qt::LeftButton, Qt::NoModifier, keep->mapTo(w, QPoint(6, keep->height() / 2)));
    QVERIFY(keep->isChecked());
    QTRY_VERIFY(!menu.isVisible());
}

void TestSpyToolWnd::toolBarIconsFollowTheme() {
    initSpyToolWnd(false);
    CSpyToolWnd* w = currentSpyToolWnd();
    for (LIconButton* b : {w->opacityButton(), w->clearSelectionButton(), w->refreshTreeButton()}) {
        QVERIFY(b);
        QVERIFY2(lx_ui_res::SvgIconRenderer::get(b->iconPath()), qPrintable(b->iconPath()));
    }
    QCOMPARE(CSpyToolWnd::IconColorKey(), QStringLiteral("ck_gray940"));
    const QColor lightBase = w->tabWidget()->widget(0)->palette().color(QPalette::Base);
    lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
    QVERIFY(w->tabWidget()->widget(0)->palette().color(QPalette::Base).lightness() < lightBase.lightness() / 2);
    QVERIFY(w->findChild<LxWidgetPropertyView*>()->table()->palette().color(QPalette::Text).lightness() > 128);

    // The clear button drops the selection.
    QPushButton b("Buy");
    ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(&b, nullptr);
    w->clearSelectionButton()->click();
    QVERIFY(!ILxUISpyComponent::SelectedPseudoWidget().isValid());
}

QTEST_MAIN(TestSpyToolWnd)
#include "tst_SpyToolWnd.moc"
