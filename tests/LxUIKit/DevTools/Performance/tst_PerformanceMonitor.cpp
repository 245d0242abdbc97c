// Performance monitor: scale marks, the charts' series and what one information set puts in the
// legends, labels and hover boxes; the IO and object tables; card-creation timing. FPS monitor:
// statistics over known sample sequences, the history cap, paint counting, the counter's helper
// list, the dialog's rows and the blinking highlight frame.
#include <LxUIKit/DevTools/Performance/FpsFrameCounter.h>
#include <LxUIKit/DevTools/Performance/FpsHelper.h>
#include <LxUIKit/DevTools/Performance/FpsMonitorDialog.h>
#include <LxUIKit/DevTools/Performance/FpsMonitorDialog_p.h>
#include <LxUIKit/DevTools/Performance/IOStatisticsDialog.h>
#include <LxUIKit/DevTools/Performance/LxCardCreatePerformanceHelper.h>
#include <LxUIKit/DevTools/Performance/ObjectStatisticsDialog.h>
#include <LxUIKit/DevTools/Performance/PerformanceMonitorWnd.h>
#include <LxUIKit/DevTools/Performance/PerformanceMonitorWnd_p.h>

#include <LxBusiness/AppListenerManager.h>
#include <LxCore/FrameWork.h>
#include <LxStdUI/ThemeManager.h>

#include "LxTestSupport.h"

#include <QDateTime>
#include <QLabel>
#include <QStandardItemModel>
#include <QTableView>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

namespace {
QStringList Texts(const CScaleData& s) {
    QStringList out;
    for (const LScaleMark& m : s.marks)
        out << m.strText;
    return out;
}
}  // namespace

class TestPerformanceMonitor : public QObject {
    Q_OBJECT
private slots:
    void cleanup() {
        LxCardCreatePerformanceHelper::instance()->Clear();
        if (QTableView* w = LxCardCreatePerformanceHelper::instance()->Window())
            w->close();
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light);
        CFpsFrameCounter::Singleton()->Stop();
        CFpsFrameCounter::Singleton()->Clear();
    }

    void scales_data() {
        QTest::addColumn<double>("lo");
        QTest::addColumn<double>("hi");
        QTest::addColumn<QString>("unit");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<double>("top");  // axis end in the data's unit
        QTest::newRow("flat zero") << 0.0 << 0.0 << "MB" << QStringList{"0MB", "1MB"} << 1.0;
        QTest::newRow("percent") << 0.0 << 37.2 << "%" << QStringList{"0%", "10%", "20%", "30%", "40%"} << 40.0;
        QTest::newRow("bytes become KB") << 0.0 << 3500.0 << "字节" << QStringList{"0KB", "1KB", "2KB", "3KB", "4KB"}
                                         << 4096.0;
        QTest::newRow("counts become K") << 0.0 << 12345.0 << "" << QStringList{"0K", "5K", "10K", "15K"} << 15000.0;
        QTest::newRow("small rates") << 0.0 << 0.3 << "kb/s" << QStringList{"0.0kb/s", "0.1kb/s", "0.2kb/s", "0.3kb/s"}
                                     << 0.3;
        QTest::newRow("negative") << -5.0 << 5.0 << "次" << QStringList{"-5次", "0次", "5次"} << 5.0;
        QTest::newRow("inverted range") << 5.0 << 1.0 << "MB" << QStringList{"0MB", "1MB"} << 1.0;
    }
    void scales() {
        QFETCH(double, lo);
        QFETCH(double, hi);
        QFETCH(QString, unit);
        const CScaleData s = CPerformanceMonitorWnd::GetScaleData(lo, hi, unit);
        QTEST(Texts(s), "texts");
        QFETCH(double, top);
        QVERIFY(qAbs(s.dMax - top) < 1e-9);
        QCOMPARE(s.marks.last().dValue, s.dMax);
        QVERIFY(s.dMin <= std::min(lo, 0.0));
    }

    void timeScale() {
        QCOMPARE(Texts(CPerformanceMonitorWnd::GetTimeScaleData(37)), QStringList({"0s", "10s", "20s", "30s", "40s"}));
        QCOMPARE(Texts(CPerformanceMonitorWnd::GetTimeScaleData(0)), QStringList({"0s", "1s"}));
        QCOMPARE(CPerformanceMonitorWnd::GetTimeScaleData(400).marks.size(), 5);  // two-minute steps
    }

    void chartsAndData() {
        const int before = CAppListenerManager::instance()->SubscriberCount();
        auto* wnd = new CPerformanceMonitorWnd(nullptr);
        QCOMPARE(CAppListenerManager::instance()->SubscriberCount(), before + 1);
        QCOMPARE(wnd->Chart(0)->Title(), QStringLiteral("内存/Cpu使用率"));
        QCOMPARE(wnd->Chart(1)->SeriesName(2), QStringLiteral("Total size of IO reads "));
        QCOMPARE(wnd->Chart(1)->SeriesColorToken(3), QStringLiteral("ct_lime"));
        QCOMPARE(wnd->Chart(2)->LegendText(0), QStringLiteral("tcp 接收: 0.00kb/s"));
        QCOMPARE(wnd->Chart(3)->SeriesName(1), QStringLiteral("当前QObject数"));

        CAppInformationSet set;
        const qint64 t0 = QDateTime(QDate(2026, 3, 2), QTime(9, 30, 0)).toMSecsSinceEpoch();
        set.i64StartMs = t0;
        for (int i = 0; i < 3; ++i) {
            CAppInformation s;
            s.i64TimeMs = t0 + i * 1000 + 7;
            s.dMemoryMB = 100.0 + i * 11.725;
            s.dCpuPercent = 12.5 * i;
            s.i64IOReadTimes = 3 * i;
            s.i64IOReadBytes = 1500 * i;
            s.dTcpRecvKBps = 50.0 * i;
            s.dTcpSentKBps = 1.25;
            s.i64TcpRecvBytes = 204800;
            s.i64TcpSentBytes = 1024;
            s.i64TotalRequests = 17;
            s.i64TotalPushes = 5;
            s.i64UpstreamBytes = 2048;
            set.vecSamples.append(s);
        }
        wnd->ChartContext()->SetAppInformationSet(set);
        wnd->UpdateData();

        QCOMPARE(wnd->Chart(0)->SeriesData(0).size(), 3);
        QCOMPARE(wnd->Chart(0)->SeriesData(1).at(2), QPointF(2.007, 25.0));
        QCOMPARE(wnd->Chart(2)->LegendText(0), QStringLiteral("tcp recv: 100.00kb/s"));
        QCOMPARE(wnd->Chart(2)->LegendText(1), QStringLiteral("tcp send: 1.25kb/s"));
        QCOMPARE(wnd->TotalsLabel(6)->text(), QStringLiteral("已接收 200.00kb"));
        QCOMPARE(wnd->TotalsLabel(7)->text(), QStringLiteral("已发送 1.00kb"));
        QCOMPARE(wnd->TotalsLabel(0)->text(), QStringLiteral("总请求数: 17"));
        QCOMPARE(wnd->TotalsLabel(1)->text(), QStringLiteral("总Push数: 5"));
        QCOMPARE(wnd->TotalsLabel(2)->text(), QStringLiteral("上行: 2.00kb"));
        QCOMPARE(wnd->TotalsLabel(5)->text(), QStringLiteral("总接收: 200.00kb"));
        // Scales follow the data: memory up to 123.45 MB in whole steps, IO bytes in KB.
        QCOMPARE(wnd->Chart(0)->VerticalMarks(LLineChart::LeftAxis).last().strText, QStringLiteral("150MB"));
        QCOMPARE(wnd->Chart(1)->VerticalMarks(LLineChart::RightAxis).last().strText, QStringLiteral("3KB"));
        QCOMPARE(wnd->Chart(0)->HorizontalMarks().last().strText, QStringLiteral("3s"));

        wnd->resize(900, 900);
        wnd->show();
        QVERIFY(QTest::qWaitForWindowExposed(wnd));
        QVERIFY(wnd->Chart(0)->ShowHoverAt(1));
        const QString hover = wnd->Chart(0)->HoverText();
        QVERIFY2(hover.contains(QStringLiteral("时间:09:30:01:007")), qPrintable(hover));
        QVERIFY(hover.contains(QStringLiteral("内存: 111.72MB")) || hover.contains(QStringLiteral("内存: 111.73MB")));
        QVERIFY(hover.contains(QStringLiteral("Cpu使用率: 12.50%")));
        QCOMPARE(wnd->Chart(0)->HoverScaleText(), QStringLiteral("1s"));
        QVERIFY(wnd->Chart(1)->ShowHoverAt(2));
        QVERIFY(wnd->Chart(1)->HoverText().contains(QStringLiteral("IO Read times: 6次")));
        QVERIFY(wnd->Chart(1)->HoverText().contains(QStringLiteral("Total size of IO reads : 3000字节")));
        QVERIFY(wnd->Chart(2)->ShowHoverAt(2));
        QVERIFY(wnd->Chart(2)->HoverText().contains(QStringLiteral("tcp 接收: 100.00kb")));
        QVERIFY(!wnd->Chart(3)->ShowHoverAt(3));  // past the last sample
        QVERIFY(wnd->Chart(3)->HoverText().isEmpty());

        // The hover box follows the theme: its colour lines are written again.
        const QString light = wnd->Chart(0)->HoverText();
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        QVERIFY(wnd->Chart(0)->HoverText() != light);

        delete wnd;
        QCOMPARE(CAppListenerManager::instance()->SubscriberCount(), before);
    }

    void ioAndObjectTables() {
        FrameWork::AddIORead(QStringLiteral("/data/quotes/tick.db"), 10);
        FrameWork::AddIORead(QStringLiteral("/data/quotes/tick.db"), 10);
        FrameWork::AddIOWrite(QStringLiteral("/data/quotes/tick.db"), 5);
        CIOStatisticsDialog io;
        io.Refresh();
        QTableWidget* t = io.Table();
        const QList<QTableWidgetItem*> found = t->findItems(QStringLiteral("/data/quotes/tick.db"), Qt::MatchExactly);
        QCOMPARE(found.size(), 1);
        const int row = found.first()->row();
        QCOMPARE(t->item(row, 1)->text(), QStringLiteral("2"));
        QCOMPARE(t->item(row, 2)->text(), QStringLiteral("1"));
        QCOMPARE(t->item(row, 3)->text(), QStringLiteral("3"));

        CAppListenerManager::instance()->InstallObjectHooks();
        auto* keep = new QObject;
        for (int i = 0; i < 4; ++i)
            new QTimer(keep);
        QCoreApplication::processEvents();
        delete keep->findChild<QTimer*>();
        CObjectStatisticsDialog objects;
        QCOMPARE(objects.windowTitle(), QStringLiteral("对象池"));
        objects.Refresh();
        const QList<QTableWidgetItem*> timers = objects.Table()->findItems(QStringLiteral("QTimer"), Qt::MatchExactly);
        QCOMPARE(timers.size(), 1);
        const int r = timers.first()->row();
        const qint64 active = objects.Table()->item(r, 1)->text().toLongLong();
        const qint64 destroyed = objects.Table()->item(r, 2)->text().toLongLong();
        QVERIFY(active >= 3);
        QVERIFY(destroyed >= 1);
        QCOMPARE(objects.Table()->item(r, 3)->text().toLongLong(), active + destroyed);
        delete keep;
        CAppListenerManager::instance()->UninstallObjectHooks();
    }

    void cardTiming() {
        LxCardCreatePerformanceHelper* helper = LxCardCreatePerformanceHelper::instance();
        QWidget card;
        auto* body = new QWidget(&card);
        new QWidget(body);
        new QWidget(body);
        (new QWidget(body))->hide();
        auto* folded = new QWidget(&card);
        folded->hide();
        new QWidget(folded);  // not hidden itself, but under a hidden parent
        new QWidget(folded);
        new QObject(&card);  // not a widget: not counted
        int total = 0;
        int visible = 0;
        LxCardCreatePerformanceHelper::GetChildrenCount(&card, &total, &visible);
        QCOMPARE(total, 7);
        QCOMPARE(visible, 3);

        QWidget allHidden;
        (new QWidget(&allHidden))->hide();
        (new QWidget(&allHidden))->hide();

        helper->ReportCardCreatePerformanceInfo(&card, QStringLiteral("Quote"), QStringLiteral("Row"), 10);
        helper->ReportCardCreatePerformanceInfo(&card, QStringLiteral("Quote"), QStringLiteral("Row"), 31);
        helper->ReportCardCreatePerformanceInfo(&allHidden, QStringLiteral("Feed"), QStringLiteral("Post"), 4);
        {
            lxtest::AssertRecorder asserts;
            helper->ReportCardCreatePerformanceInfo(nullptr, QStringLiteral("Feed"), QStringLiteral("Null"), 4);
            QCOMPARE(asserts.count(), 1);
        }
        QCOMPARE(helper->Infos().size(), 2);

        helper->ShowCreatePerformanceInfoWindow();
        QPointer<QTableView> first = helper->Window();
        helper->ShowCreatePerformanceInfoWindow();
        QTRY_VERIFY(!first);  // the first window is gone: one window at a time
        QTableView* view = helper->Window();
        QCOMPARE(view->windowTitle(), QStringLiteral("Card Create Performance Info"));
        auto* model = static_cast<QStandardItemModel*>(view->model());
        QCOMPARE(model->rowCount(), 2);
        QCOMPARE(model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("平均耗时（ms）"));
        QCOMPARE(model->item(0, 0)->text(), QStringLiteral("Feed-Post（1）"));
        QCOMPARE(model->item(0, 3)->data(Qt::DisplayRole).toDouble(), 0.0);
        QCOMPARE(model->item(1, 0)->text(), QStringLiteral("Quote-Row（2）"));
        QCOMPARE(model->item(1, 1)->data(Qt::DisplayRole).toDouble(), 20.5);
        QCOMPARE(model->item(1, 2)->data(Qt::DisplayRole).toDouble(), 7.0);
        QCOMPARE(model->item(1, 3)->data(Qt::DisplayRole).toDouble(), 3.0);
    }

    void statistics_data() {
        QTest::addColumn<QList<double>>("samples");
        QTest::addColumn<double>("fps");
        QTest::addColumn<double>("average");
        QTest::addColumn<double>("valid");
        QTest::addColumn<double>("max");
        QTest::newRow("empty") << QList<double>() << 0.0 << 0.0 << 0.0 << 0.0;
        QTest::newRow("idle widget") << QList<double>{0, 0, 0, 0} << 0.0 << 0.0 << 0.0 << 0.0;
        QTest::newRow("all at or below 10") << QList<double>{10.0, 4.0, 7.0} << 7.0 << 7.0 << 0.0 << 10.0;
        QTest::newRow("mixed") << QList<double>{60.0, 0.0, 30.0, 9.0, 11.0} << 11.0 << 22.0
                               << (60.0 + 30.0 + 11.0) / 3.0 << 60.0;
    }
    void statistics() {
        QFETCH(QList<double>, samples);
        QObject watched;
        CFpsHelper helper(&watched, QString());
        for (double s : samples)
            helper.AppendSample(s);
        QTEST(helper.Fps(), "fps");
        QTEST(helper.AverageFps(), "average");
        QTEST(helper.ValidAverageFps(), "valid");
        QTEST(helper.MaxFps(), "max");
    }

    // Two minutes of samples are kept: the peak of an older sample drops out with it.
    void historyCap() {
        QObject watched;
        CFpsHelper helper(&watched, QStringLiteral("w"));
        helper.AppendSample(500.0);
        for (int i = 1; i <= CFpsHelper::kMaxSamples; ++i)
            helper.AppendSample(i);
        QCOMPARE(helper.History().size(), CFpsHelper::kMaxSamples);
        QCOMPARE(helper.History().first(), 1.0);
        QCOMPARE(helper.MaxFps(), 120.0);
        helper.Stop();
        QVERIFY(helper.History().isEmpty());
    }

    void countsPaintEvents() {
        QWidget w;
        w.resize(40, 30);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        CFpsHelper helper(&w, QStringLiteral("行情列表"));
        QCOMPARE(helper.Name(), QStringLiteral("行情列表"));
        QCOMPARE(CFpsHelper(&w, QString()).Name(), QStringLiteral("行情列表"));  // kept on the object

        helper.Start();
        for (int i = 0; i < 3; ++i)
            w.repaint();
        QCOMPARE(helper.FrameCount(), 3);
        QTest::qWait(20);
        helper.Compute();
        QCOMPARE(helper.FrameCount(), 0);
        QVERIFY(helper.Fps() > 0);
        helper.Stop();
        w.repaint();
        QCOMPARE(helper.FrameCount(), 0);
        QVERIFY(helper.History().isEmpty());

        QObject plain;
        QCOMPARE(CFpsHelper(&plain, QString()).Name(), QStringLiteral("QObject"));
    }

    void counterAndDialogRows() {
        CFpsFrameCounter* counter = CFpsFrameCounter::Singleton();
        QWidget top;
        top.move(30, 40);
        auto* child = new QWidget(&top);
        child->setGeometry(5, 6, 70, 20);
        auto* gone = new QWidget(&top);
        top.show();
        counter->AddWidget(child, QStringLiteral("K线"));
        counter->AddWidget(child, QStringLiteral("again"));
        counter->AddWidget(nullptr, QStringLiteral("null"));
        counter->AddWidget(gone, QString());
        QCOMPARE(counter->GetFpsHelpers().size(), 2);
        QCOMPARE(counter->HelperOf(child)->Name(), QStringLiteral("K线"));
        delete gone;

        CFpsHelper* helper = counter->HelperOf(child);
        helper->AppendSample(30.0);
        helper->AppendSample(2.5);
        CFpsMonitorDialog dialog;
        QCOMPARE(dialog.windowTitle(), QStringLiteral("FPS监控工具"));
        dialog.OnUpdateFps();
        QTableWidget* table = dialog.d_func()->pTable;
        QCOMPARE(table->rowCount(), 1);  // the destroyed widget has no row
        QCOMPARE(table->item(0, 0)->text(), QStringLiteral("K线"));
        const QPoint g = child->mapToGlobal(QPoint(0, 0));
        QCOMPARE(table->item(0, 1)->text(), QStringLiteral("(%1, %2, 70, 20)").arg(g.x()).arg(g.y()));
        QCOMPARE(table->item(0, 2)->text(), QStringLiteral("2.50"));
        QCOMPARE(table->item(0, 3)->text(), QStringLiteral("16.25"));
        QCOMPARE(table->item(0, 4)->text(), QStringLiteral("30.00"));
        QCOMPARE(table->item(0, 5)->text(), QStringLiteral("30.00"));
        QVERIFY(helper->IsCatching());

        // The counter's second tick reaches the dialog through fpsUpdated.
        counter->Start();
        QTRY_VERIFY_WITH_TIMEOUT(helper->History().size() == 1, 3000);
        counter->RemoveWidget(child);
        QCOMPARE(counter->GetFpsHelpers().size(), 1);  // the dead widget's helper stays, inert
        QVERIFY(!counter->GetFpsHelpers().first()->Object());
    }

    void blinkingFrame() {
        QWidget target;
        target.setGeometry(100, 120, 80, 50);
        target.show();
        CFpsMonitorDialog dialog;
        CFpsMonitorDialogPrivate* d = dialog.d_func();
        dialog.HighLightObject(nullptr);
        QObject plain;
        dialog.HighLightObject(&plain);
        QVERIFY(!d->pHighlight);

        dialog.HighLightObject(&target);
        QVERIFY(d->pHighlight);
        QCOMPARE(d->pHighlight->size(), target.size());
        QCOMPARE(d->pHighlight->pos(), target.mapToGlobal(QPoint(0, 0)));
        QVERIFY(d->pHighlight->windowFlags() & Qt::WindowTransparentForInput);
        QVERIFY(d->pHighlight->testAttribute(Qt::WA_TransparentForMouseEvents));
        QTRY_VERIFY(d->pHighlight->isVisible());  // first tick: 13, odd
        QTRY_VERIFY(!d->pHighlight->isVisible());
        // Clicking again while blinking restarts the count.
        QTRY_VERIFY(d->i32BlinkCount < 10);
        QPointer<QDialog> frame = d->pHighlight;
        dialog.HighLightObject(&target);
        QCOMPARE(d->i32BlinkCount, CFpsMonitorDialogPrivate::kBlinkTicks);
        QCOMPARE(d->pHighlight, frame);  // one frame, reused
        QTRY_VERIFY_WITH_TIMEOUT(!d->pBlinkTimer->isActive(), 4000);
        QVERIFY(!d->pHighlight->isVisible());
        QCOMPARE(d->i32BlinkCount, CFpsMonitorDialogPrivate::kBlinkTicks);

        // A row whose widget is gone does nothing.
        auto* doomed = new QWidget;
        CFpsFrameCounter::Singleton()->AddWidget(doomed, QStringLiteral("doomed"));
        auto* other = new QWidget;
        CFpsFrameCounter::Singleton()->AddWidget(other, QStringLiteral("other"));
        dialog.OnUpdateFps();
        QTableWidgetItem* item = dialog.d_func()->pTable->item(0, 2);
        delete doomed;
        dialog.OnItemClicked(item);
        QVERIFY(!d->pBlinkTimer->isActive());
        dialog.OnItemClicked(dialog.d_func()->pTable->item(1, 3));
        QVERIFY(d->pBlinkTimer->isActive());
        QCOMPARE(d->pHighlight->size(), other->size());
        delete other;
    }
};

QTEST_MAIN(TestPerformanceMonitor)
#include "tst_PerformanceMonitor.moc"
