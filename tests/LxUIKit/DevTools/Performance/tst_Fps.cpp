// FPS monitor: statistics over known sample sequences, the history cap, paint counting, the
// counter's helper list, the dialog's rows and the blinking highlight frame.
#include <LxUIKit/DevTools/Performance/FpsFrameCounter.h>
#include <LxUIKit/DevTools/Performance/FpsHelper.h>
#include <LxUIKit/DevTools/Performance/FpsMonitorDialog.h>
#include <LxUIKit/DevTools/Performance/FpsMonitorDialog_p.h>

#include <QTableWidget>
#include <QTimer>
#include <QtTest>

class TestFps : public QObject {
    Q_OBJECT
private slots:
    void cleanup() {
        CFpsFrameCounter* counter = CFpsFrameCounter::Singleton();
        counter->Stop();
        counter->Clear();
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
        QCOMPARE(w.property("fpshelper_name").toString(), QStringLiteral("行情列表"));
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

QTEST_MAIN(TestFps)
#include "tst_Fps.moc"
