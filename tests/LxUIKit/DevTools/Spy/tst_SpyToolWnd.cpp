// The inspector window: one instance, picking through the shared configuration, events that pick
// never reach the application, keep-picking, the F2/F3 modes.

#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>
#include <LxUIKit/DevTools/Spy/SpyTexts_p.h>
#include <LxUIKit/DevTools/Spy/SpyToolWnd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
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
        lxtest::ResetGlobals();
    }
    void singleInstanceAndPicking();
    void clicksThatPickAreConsumed();
    void keepPickingAndHover();
    void hotKeysAndFigmaWheel();
    void copyReviewTexts();
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
    QCOMPARE(w->tabWidget()->count(), 5);
    QCOMPARE(w->tabWidget()->tabText(0), QStringLiteral("属性&&样式表"));

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

QTEST_MAIN(TestSpyToolWnd)
#include "tst_SpyToolWnd.moc"
