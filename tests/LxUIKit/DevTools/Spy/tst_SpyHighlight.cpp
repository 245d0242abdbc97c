// The inspector's selection frame follows the selected widget: it hides with it (an ancestor
// hidden, as a page switched away), comes back with it, and is placed anew when it moves or resizes.

#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>

#include <QPushButton>
#include <QtTest>

#include "LxTestSupport.h"

class TestSpyHighlight : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() {
        LxCurrentWidgetHighLightView::Release();
        ILxUISpyComponent::ResetSharedState();
        lxtest::ResetGlobals();
    }
    void selectionFrameFollowsItsWidget();
};

void TestSpyHighlight::selectionFrameFollowsItsWidget() {
    QWidget top;
    top.resize(300, 200);
    auto* page = new QWidget(&top);
    page->setGeometry(10, 10, 250, 150);
    auto* button = new QPushButton(QStringLiteral("Buy"), page);
    button->setGeometry(10, 10, 80, 30);
    top.show();
    QVERIFY(QTest::qWaitForWindowExposed(&top));

    LxCurrentWidgetHighLightView* hl = LxCurrentWidgetHighLightView::Init();
    ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(PseudoWidget(button), nullptr);
    QWidget* frame = hl->selectionFrame();
    QVERIFY(frame && frame->isVisible());
    QCOMPARE(frame->geometry(), QRect(QPoint(20, 20), QSize(80, 30)));

    page->hide();
    QVERIFY(!frame->isVisible());
    page->show();
    QVERIFY(frame->isVisible());

    button->move(40, 50);
    QCOMPARE(frame->geometry(), QRect(QPoint(50, 60), QSize(80, 30)));
    button->resize(100, 40);
    QCOMPARE(frame->geometry(), QRect(QPoint(50, 60), QSize(100, 40)));

    // Once the selection moves on, the former widget no longer moves the frame.
    ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(PseudoWidget(page), nullptr);
    QCOMPARE(frame->geometry(), QRect(QPoint(10, 10), QSize(250, 150)));
    button->hide();
    QVERIFY(frame->isVisible());
    QCOMPARE(frame->geometry(), QRect(QPoint(10, 10), QSize(250, 150)));
}

QTEST_MAIN(TestSpyHighlight)
#include "tst_SpyHighlight.moc"
