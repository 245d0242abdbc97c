// Unit-test window: lists the registered sessions, runs all or the selected ones and shows each
// result with its message, then the summary.
#include <LxUIKit/DevTools/UnitTest/UnitTestWnd.h>

#include <LxBusiness/UnitTestManager.h>

#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

class TestUnitTestWnd : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { CUnitTestManager::instance()->ClearTestSessions(); }

    void listsRunsAndReports() {
        CUnitTestManager* mgr = CUnitTestManager::instance();
        mgr->RegisterTestSession("行情解析", [] { return CUnitTestResult::Pass(); });
        mgr->RegisterTestSession("下单校验", [] { return CUnitTestResult::Fail(QStringLiteral("数量为 0 时未拒绝")); });
        CUnitTestWnd wnd;
        QTreeWidget* list = wnd.List();
        QCOMPARE(list->topLevelItemCount(), 2);
        QCOMPARE(list->topLevelItem(1)->text(CUnitTestWnd::NameColumn), QStringLiteral("下单校验"));
        QCOMPARE(list->topLevelItem(1)->text(CUnitTestWnd::ResultColumn), QStringLiteral("未运行"));
        QVERIFY(!wnd.RunSelected());  // nothing selected

        QVERIFY(wnd.RunAll());
        QVERIFY(!wnd.RunAll());
        QVERIFY(!wnd.findChild<QPushButton*>()->isEnabled());
        QTRY_VERIFY(wnd.SummaryText().startsWith(QStringLiteral("共 2 项：通过 1，失败 1，耗时")));
        QCOMPARE(list->topLevelItem(0)->text(CUnitTestWnd::ResultColumn), QStringLiteral("通过"));
        QCOMPARE(list->topLevelItem(1)->text(CUnitTestWnd::ResultColumn), QStringLiteral("失败"));
        QCOMPARE(list->topLevelItem(1)->text(CUnitTestWnd::MessageColumn), QStringLiteral("数量为 0 时未拒绝"));
        QVERIFY(!list->topLevelItem(1)->text(CUnitTestWnd::DurationColumn).isEmpty());
        QVERIFY(wnd.findChild<QPushButton*>()->isEnabled());

        list->topLevelItem(0)->setSelected(true);
        QVERIFY(wnd.RunSelected());
        QTRY_VERIFY(wnd.SummaryText().startsWith(QStringLiteral("共 1 项：通过 1，失败 0")));
    }
};

QTEST_MAIN(TestUnitTestWnd)
#include "tst_UnitTestWnd.moc"
