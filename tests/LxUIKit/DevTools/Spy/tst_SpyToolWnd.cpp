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
#include "SpyTestUtil.h"

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
}  // namespace

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
    void singleInstanceAndPicking() {
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
        QCOMPARE(tabs.mid(0, 6),
                 QStringList({"属性&&样式表", "设计", "调试", "窗口缩放调试", "事件查看器", "信号&槽"}));
        // The corner menu reaches every tab, the last one included.
        auto* allTabs = w->findChild<QToolButton*>(QStringLiteral("SpyAllTabsButton"));
        QVERIFY(allTabs && allTabs->menu());
        emit allTabs->menu()->aboutToShow();
        const QList<QAction*> entries = allTabs->menu()->actions();
        QCOMPARE(entries.size(), w->tabWidget()->count());
        QCOMPARE(entries.last()->text(), tabs.last());
        entries.last()->trigger();
        QCOMPARE(w->tabWidget()->currentIndex(), entries.size() - 1);

        w->close();  // deletes itself
        QTRY_VERIFY(!currentSpyToolWnd());
        initSpyToolWnd(false);
        QVERIFY(currentSpyToolWnd());
        QVERIFY(!currentSpyToolWnd()->isVisible());
    }
    void clicksThatPickAreConsumedAndReported() {
        SpyDesk app;
        QVERIFY(app.exposed());
        lxtest::LogCapture logs;
        auto reports = [&logs] {
            QStringList out;
            for (const auto& r : logs.records())
                if (r.i32Level == FrameWork::kLogReport && r.strModule == "LxUIKit")
                    out << r.strText;
            return out;
        };
        QSignalSpy clicked(app.button, &QPushButton::clicked);
        CSpyToolWnd* w = OpenPicking();
        QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(ILxUISpyComponent::SelectedPseudoWidget().widget(), app.button);
        QCOMPARE(ILxUISpyComponent::DebugWindow(), app.top.windowHandle());
        QVERIFY(!ILxUISpyComponent::ms_config.picking);  // one pick ends picking
        QVERIFY(w->isVisible());
        QVERIFY(reports().isEmpty());  // picks are reported only when enabled
        // The highlight frames the selection inside the picked window.
        LxCurrentWidgetHighLightView* hl = LxCurrentWidgetHighLightView::Instance();
        QVERIFY(hl && hl->selectionFrame());
        QCOMPARE(hl->selectionFrame()->parentWidget(), &app.top);
        // Not picking: the application gets its clicks again.
        QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
        QCOMPARE(clicked.count(), 1);

        devtools::SetReportEnabled(true);
        OpenPicking();
        QTest::mouseClick(app.top.windowHandle(), Qt::LeftButton, Qt::NoModifier, app.ButtonPoint());
        QCOMPARE(reports(), QStringList({"spy pick (click): class=QPushButton objectName= "
                                         "path=desk/panel/[QPushButton] geometry=(20, 20 80x30) in window"}));
        // A choice in the inspector is reported too; a phantom names its container and text.
        QTabBar bar(&app.top);
        bar.setObjectName("Tabs");
        bar.addTab("Quotes");
        bar.addTab("News");
        bar.show();
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(
            devtools::spy::PseudoWidgetAtQTabBar(&bar, bar.tabRect(1).center()), nullptr);
        QVERIFY2(reports().value(1).startsWith("spy pick (select): class=QTabBar::Item objectName= path=desk/Tabs "),
                 qPrintable(reports().value(1)));
        QVERIFY(reports().value(1).endsWith(" container=QTabBar#Tabs text=\"News\""));
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(PseudoWidget(), nullptr);  // nothing to report
        QCOMPARE(reports().size(), 2);

        devtools::SetReportEnabled(false);
        ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(app.button, nullptr);
        QCOMPARE(reports().size(), 2);
    }
    void keepPickingHotKeysAndWheel() {
        SpyDesk app;
        QVERIFY(app.exposed());
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

        QTest::keyClick(app.top.windowHandle(), Qt::Key_F2);
        QVERIFY(ILxUISpyComponent::ms_config.figmaMode);
        QVERIFY(w->figmaCheckBox()->isChecked());
        QTest::keyClick(app.top.windowHandle(), Qt::Key_F3);
        QVERIFY(ILxUISpyComponent::ms_config.copyReviewMode);
        QVERIFY(w->OnHotKey(Qt::Key_F3, Qt::NoModifier));
        QVERIFY(!ILxUISpyComponent::ms_config.copyReviewMode);
        QVERIFY(!w->OnHotKey(Qt::Key_F7, Qt::NoModifier));  // nobody takes it

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
        // Keys go to the inspector, not the application; Esc ends picking.
        QTest::keyClick(app.top.windowHandle(), Qt::Key_Escape);
        QVERIFY(!ILxUISpyComponent::ms_config.picking);
    }
    void copyReviewTexts() {
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
        const PseudoWidget cell =
            PseudoWidget::FromWidgetPoint(&list, InView(&list, list.visualItemRect(list.item(5)).center()));
        const QStringList texts = CopyReviewTexts(cell);
        QCOMPARE(texts.first(), QStringLiteral("row 5"));
        QVERIFY(texts.contains("row 4") && texts.contains("row 6") && texts.contains("row 8"));
        QVERIFY(!texts.contains("row 9"));
        QVERIFY(CopyReviewTexts(PseudoWidget()).isEmpty());
    }
    void popupPassThrough() {
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
        QTest::mouseClick(w->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          keep->mapTo(w, QPoint(6, keep->height() / 2)));
        QVERIFY(keep->isChecked());
        QVERIFY(ILxUISpyComponent::ms_config.keepPicking);
        QVERIFY(popup.isVisible());

        // The wheel scrolls the list under it instead of going to the popup.
        QTableWidget* table = w->findChild<LxWidgetPropertyView*>()->table();
        QVERIFY(table->isVisible());
        QCOMPARE(table->verticalScrollBar()->value(), 0);
        const QPoint at = table->viewport()->mapTo(w, table->viewport()->rect().center());
        QWheelEvent wheel(QPointF(at), QPointF(w->mapToGlobal(at)), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(w->windowHandle(), &wheel);
        QVERIFY(table->verticalScrollBar()->value() > 0);

        // A QMenu is left alone: it handles clicks outside itself (by closing).
        popup.close();
        QMenu menu;
        menu.addAction("Buy");
        menu.popup(QPoint(700, 520));
        QTRY_COMPARE(QApplication::activePopupWidget(), &menu);
        QTest::mouseClick(w->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          keep->mapTo(w, QPoint(6, keep->height() / 2)));
        QVERIFY(keep->isChecked());
        QTRY_VERIFY(!menu.isVisible());
    }
    void toolBarIconsFollowTheme() {
        initSpyToolWnd(false);
        CSpyToolWnd* w = currentSpyToolWnd();
        for (LIconButton* b : {w->opacityButton(), w->clearSelectionButton(), w->refreshTreeButton()}) {
            QVERIFY(b);
            QVERIFY2(lx_ui_res::SvgIconRenderer::get(b->iconPath()), qPrintable(b->iconPath()));
        }
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
};

QTEST_MAIN(TestSpyToolWnd)
#include "tst_SpyToolWnd.moc"
