// The frameless window (dragging by its title bar, resizing by its edges within the minimum size,
// maximise toggling) and the icon button (rotation, hover background).

#include <LxStdUI/LFrameLessWnd.h>
#include <LxStdUI/LIconButton.h>
#include <LxStdUI/LIconResource.h>

#include <QLabel>
#include <QtTest>

#include "ImageFixtures.h"
#include "LxTestSupport.h"

class TestLFrameLessWnd : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void dragsByTheTitleBar();
    void resizesByEdgesWithinTheMinimum();
    void edgesAndMaximise();
    void iconButtonRotatesAndHovers();
};

void TestLFrameLessWnd::dragsByTheTitleBar() {
    LFrameLessWnd wnd;
    auto* label = new QLabel(QStringLiteral("drag me"));
    wnd.setTitleBarWidget(label);
    wnd.setContentWidget(new QWidget);
    wnd.setGeometry(100, 100, 400, 300);
    wnd.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wnd));
    const QPoint start = wnd.pos();
    // Pressing on the label (which takes no mouse) drags the window.
    QTest::mousePress(label, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QMouseEvent move(QEvent::MouseMove, QPointF(45, 25), label->mapToGlobal(QPoint(45, 25)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(label, &move);
    QTest::mouseRelease(label, Qt::LeftButton, Qt::NoModifier, QPoint(45, 25));
    QCOMPARE(wnd.pos(), start + QPoint(40, 20));
    // The content area does not drag.
    QTest::mousePress(wnd.contentWidget(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    QMouseEvent move2(QEvent::MouseMove, QPointF(90, 90), wnd.contentWidget()->mapToGlobal(QPoint(90, 90)),
                      Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(wnd.contentWidget(), &move2);
    QCOMPARE(wnd.pos(), start + QPoint(40, 20));
}

void TestLFrameLessWnd::resizesByEdgesWithinTheMinimum() {
    LFrameLessWnd wnd;
    wnd.setContentWidget(new QWidget);
    wnd.setMinimumSize(200, 150);
    wnd.setGeometry(100, 100, 400, 300);
    wnd.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wnd));
    auto drag = [&wnd](const QPoint& from, const QPoint& to) {
        QTest::mousePress(&wnd, Qt::LeftButton, Qt::NoModifier, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), wnd.mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&wnd, &move);
        QTest::mouseRelease(&wnd, Qt::LeftButton, Qt::NoModifier, to);
    };
    drag(QPoint(398, 298), QPoint(448, 318));  // bottom-right corner
    QCOMPARE(wnd.geometry(), QRect(100, 100, 450, 320));
    drag(QPoint(2, 150), QPoint(-48, 150));  // left edge: the right edge stays
    QCOMPARE(wnd.geometry(), QRect(50, 100, 500, 320));
    drag(QPoint(250, 1), QPoint(250, 500));  // top edge, far past the minimum
    QCOMPARE(wnd.geometry(), QRect(50, 270, 500, 150));
    wnd.setResizable(false);
    drag(QPoint(498, 100), QPoint(700, 100));
    QCOMPARE(wnd.width(), 500);
}

void TestLFrameLessWnd::edgesAndMaximise() {
    LFrameLessWnd wnd;
    wnd.resize(300, 200);
    QCOMPARE(wnd.edgesAt(QPoint(1, 1)), Qt::LeftEdge | Qt::TopEdge);
    QCOMPARE(wnd.edgesAt(QPoint(299, 100)), Qt::Edges(Qt::RightEdge));
    QCOMPARE(wnd.edgesAt(QPoint(150, 199)), Qt::Edges(Qt::BottomEdge));
    QCOMPARE(wnd.edgesAt(QPoint(150, 100)), Qt::Edges());
    QCOMPARE(wnd.chromeSize(), QSize(12, 12 + wnd.titleBarHeight()));
    wnd.show();
    wnd.toggleMaximized();
    QTRY_VERIFY(wnd.isMaximized());
    QCOMPARE(wnd.edgesAt(QPoint(1, 1)), Qt::Edges());
    QCOMPARE(wnd.chromeSize(), QSize(0, wnd.titleBarHeight()));
}

void TestLFrameLessWnd::iconButtonRotatesAndHovers() {
    LIconButton button(QString::fromLatin1(LResource::icon_arrow_right_normal));
    button.setFixedSize(40, 40);
    button.setIconSize(QSize(32, 32));
    button.setHoverBackgroundEnabled(true);
    button.setRotate(380);
    QCOMPARE(button.rotate(), 20);
    button.setRotate(-90);
    QCOMPARE(button.rotate(), 270);

    // Half a turn about the centre: the drawing matches the unturned one mirrored both ways.
    const auto distance = [](const QImage& a, const QImage& b) {
        qint64 d = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x)
                d += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
        return d;
    };
    button.setRotate(0);
    const QImage plain = lxtest::Render(&button, Qt::white);
    button.setRotate(180);
    const QImage turned = lxtest::Render(&button, Qt::white);
    const qint64 unchanged = distance(turned, plain), mirrored = distance(turned, plain.mirrored(true, true));
    QVERIFY2(mirrored * 4 < unchanged, qPrintable(QStringLiteral("%1 %2").arg(mirrored).arg(unchanged)));

    QVERIFY(!button.isShowingHoverBackground());
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(&button, &enter);
    QVERIFY(button.isShowingHoverBackground());
    const QImage hovered = lxtest::Render(&button, Qt::white);
    QVERIFY(hovered.pixelColor(1, 20) != QColor(Qt::white));  // the background reaches the edges
    button.setEnabled(false);
    QVERIFY(!button.isShowingHoverBackground());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&button, &leave);
    button.setEnabled(true);
    QVERIFY(!button.isShowingHoverBackground());
}

QTEST_MAIN(TestLFrameLessWnd)
#include "tst_LFrameLessWnd.moc"
