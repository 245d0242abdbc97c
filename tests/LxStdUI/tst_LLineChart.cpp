// Line chart: hover at the nearest sample with the callback's texts, the wheel zoom and the drag
// keeping the visible range inside the data and telling the callback, the double click restoring
// it, series bounds and the point cap.
#include <LxStdUI/ILLineChartCallBack.h>
#include <LxStdUI/LLineChart.h>

#include "LxTestSupport.h"

#include <QtCharts/QChartView>
#include <QtTest>

QT_CHARTS_USE_NAMESPACE

namespace {
struct Recorder : ILLineChartCallBack {
    QString GetHoverText(LLineChart*, int i, double x) override { return QStringLiteral("#%1 @%2").arg(i).arg(x); }
    QString GetHoverScaleText(LLineChart*, double x) override { return QStringLiteral("%1s").arg(x); }
    void OnZoom(LLineChart*, double f) override { zooms << f; }
    void OnDrag(LLineChart*, double) override { ++drags; }
    void OnVisibleRangeChanged(LLineChart*, double lo, double hi) override { range = {lo, hi}; }
    QList<double> zooms;
    int drags = 0;
    QPair<double, double> range{-1, -1};
};
}  // namespace

class TestLLineChart : public QObject {
    Q_OBJECT
private slots:
    void hoverZoomDrag() {
        LLineChart chart;
        auto rec = std::make_shared<Recorder>();
        chart.SetCallBack(rec);
        chart.AddSeries(QStringLiteral("a"), QStringLiteral("ct_text_link"));
        QVector<QPointF> pts;
        for (int i = 0; i <= 100; ++i)
            pts << QPointF(i, i % 7);
        chart.SetSeriesData(0, pts);
        chart.SetVerticalScale(LLineChart::LeftAxis, 0, 10, {{0, "0"}, {10, "10"}});
        chart.SetHorizontalScale(0, 100, {{0, "0s"}, {50, "50s"}, {100, "100s"}});
        QCOMPARE(rec->range, qMakePair(0.0, 100.0));
        chart.resize(600, 300);
        chart.show();
        QVERIFY(QTest::qWaitForWindowExposed(&chart));

        QVERIFY(chart.ShowHoverAt(40));
        QCOMPARE(chart.HoverText(), QStringLiteral("#40 @40"));
        QCOMPARE(chart.HoverScaleText(), QStringLiteral("40s"));
        QVERIFY(!chart.ShowHoverAt(101));
        QCOMPARE(chart.HoverIndex(), -1);

        // The pointer over the plot picks the nearest sample.
        QChartView* view = chart.findChild<QChartView*>();
        QVERIFY(view);
        const QPointF mid = view->chart()->plotArea().center();
        QTest::mouseMove(view->viewport(), view->mapFromScene(mid));
        QTRY_VERIFY(chart.HoverIndex() >= 45 && chart.HoverIndex() <= 55);

        // Zooming in keeps the newest end in view; it never zooms out past the data.
        QWheelEvent in(QPointF(mid), view->mapToGlobal(mid.toPoint()), QPoint(), QPoint(0, 120), Qt::NoButton,
                       Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view->viewport(), &in);
        QCOMPARE(rec->zooms, QList<double>{1.25});
        QCOMPARE(rec->range, qMakePair(20.0, 100.0));
        QWheelEvent out(QPointF(mid), view->mapToGlobal(mid.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                        Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view->viewport(), &out);
        QCoreApplication::sendEvent(view->viewport(), &out);
        QCOMPARE(rec->range, qMakePair(0.0, 100.0));
        QCOMPARE(rec->zooms.size(), 2);  // the second step out changed nothing

        // Dragging right shows older samples, bounded by the first one.
        QCoreApplication::sendEvent(view->viewport(), &in);
        const QPoint p = view->mapFromScene(mid);
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QMouseEvent move(QEvent::MouseMove, p + QPoint(2000, 0), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &move);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, p + QPoint(2000, 0));
        QVERIFY(rec->drags >= 1);
        QCOMPARE(rec->range, qMakePair(0.0, 80.0));
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QCOMPARE(rec->range, qMakePair(0.0, 100.0));
    }

    void seriesBoundsAndCap() {
        LLineChart chart;
        const int s = chart.AddSeries(QStringLiteral("b"), QStringLiteral("ct_text_red"), LLineChart::RightAxis);
        QVector<QPointF> many;
        for (int i = 0; i < LLineChart::kMaxPoints + 10; ++i)
            many << QPointF(i, 1);
        chart.SetSeriesData(s, many);
        QCOMPARE(chart.SeriesData(s).size(), LLineChart::kMaxPoints);
        QCOMPARE(chart.SeriesData(s).first().x(), 10.0);  // the newest kept
        chart.SetLegendText(s, QStringLiteral("rate 5"));
        QCOMPARE(chart.LegendText(s), QStringLiteral("rate 5"));
        lxtest::AssertRecorder asserts;
        chart.SetSeriesData(3, many);
        QCOMPARE(chart.SeriesName(-1), QString());
        QCOMPARE(asserts.count(), 2);
    }
};

QTEST_MAIN(TestLLineChart)
#include "tst_LLineChart.moc"
