// The flyout that follows the main window through the message dispatch.

#include <LxCore/MessageDispatch.h>
#include <LxUIKit/LxFlyoutsWnd.h>

#include <QtTest>

#include "LxTestSupport.h"

namespace {
class CountingFlyout : public LxFlyoutsWnd {
public:
    int i32Shows = 0;
    int i32Exits = 0;

protected:
    void showEvent(QShowEvent* e) override {
        ++i32Shows;
        LxFlyoutsWnd::showEvent(e);
    }
    void OnAppExit() override {
        ++i32Exits;
        LxFlyoutsWnd::OnAppExit();
    }
};

int Send(unsigned id) { return _CMessageDispatch::instance()->Dispatch(int(id)); }
}  // namespace

class TestFlyoutsWnd : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void followsTheMainWindow();
    void leavesUserHiddenPanelsAlone();
    void exitClosesWithLogLines();
};

void TestFlyoutsWnd::followsTheMainWindow() {
    CountingFlyout fly;
    fly.show();
    QCOMPARE(Send(LxFlyoutsWnd::kMsgMainWndHide), 1);
    QVERIFY(fly.isHidden());
    QVERIFY(fly.IsHiddenByApp());
    Send(LxFlyoutsWnd::kMsgMainWndRestore);
    Send(LxFlyoutsWnd::kMsgMainWndRestore);
    QVERIFY(fly.isVisible());
    QCOMPARE(fly.i32Shows, 2);  // once at first, once on the first restore only
    QVERIFY(!fly.IsHiddenByApp());

    fly.SetHideOrRestoreFollowMainWnd(false);
    Send(LxFlyoutsWnd::kMsgMainWndHide);
    QVERIFY(fly.isVisible());
    fly.hide();
    Send(LxFlyoutsWnd::kMsgMainWndRestore);
    QVERIFY(fly.isHidden());

    lxtest::AssertRecorder rec;
    fly.OnMainWndMessage(20157);
    QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LxFlyoutsWnd"), QStringLiteral("0")));
}

void TestFlyoutsWnd::leavesUserHiddenPanelsAlone() {
    CountingFlyout fly;
    fly.show();
    fly.hide();  // closed by the user
    Send(LxFlyoutsWnd::kMsgMainWndHide);
    QVERIFY(!fly.IsHiddenByApp());
    Send(LxFlyoutsWnd::kMsgMainWndRestore);
    QVERIFY(fly.isHidden());
    QCOMPARE(fly.i32Shows, 1);
}

void TestFlyoutsWnd::exitClosesWithLogLines() {
    auto* fly = new CountingFlyout;
    fly->show();
    lxtest::LogCapture log;
    Send(LxFlyoutsWnd::kMsgAppExit);
    QCOMPARE(fly->i32Exits, 1);
    QVERIFY(fly->isHidden());
    const int start = log.indexOf(QStringLiteral("LxFlyoutsWnd::OnMainWndMessage  OnAppExit  start. "));
    const int end = log.indexOf(QStringLiteral(" LxFlyoutsWnd::OnMainWndMessage  OnAppExit  end. "));
    QVERIFY(start >= 0 && end > start);
    QCOMPARE(QString::fromStdString(log.records()[size_t(start)].strFunction), QStringLiteral("OnMainWndMessage"));
    delete fly;  // a destroyed panel is never called again
    QCOMPARE(Send(LxFlyoutsWnd::kMsgAppExit), 0);
}

QTEST_MAIN(TestFlyoutsWnd)
#include "tst_FlyoutsWnd.moc"
