// Common filter words ("CommonFilter.dat") and the log statistics dialog: the file format, damaged
// and newer files, the dialog's add, delete and pick, and numeric sorting of the statistics.

#include <LxCore/ProductPath.h>
#include <LxUIKit/DevTools/Log/LogFilterDialog.h>
#include <LxUIKit/DevTools/Log/LogStatisticsDialog.h>

#include <QDataStream>
#include <QLineEdit>
#include <QTableView>
#include <QTableWidget>
#include <QtCharts/QPieSeries>
#include <QtCharts/QPieSlice>
#include <QtTest>

#include "LxTestSupport.h"

namespace {
QByteArray Words(const QStringList& words, QDataStream::Version version = QDataStream::Qt_5_15) {
    QByteArray out;
    QDataStream s(&out, QIODevice::WriteOnly);
    s.setVersion(version);
    s << words;
    return out;
}
}  // namespace

class TestLogFilter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void streams_data();
    void streams();
    void dialogAddsDeletesAndPicks();
    void statisticsSortAndShare();
};

void TestLogFilter::streams_data() {
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QStringList>("words");
    const QStringList words{QStringLiteral("NWCX"), QStringLiteral("超时"), QString()};
    const QByteArray good = Words(words);
    QTest::newRow("round trip") << good << true << words;
    QTest::newRow("empty list") << Words({}) << true << QStringList();
    QTest::newRow("newer version appends data") << good + QByteArray("\x00\x00\x00\x07more", 8) << true << words;
    QTest::newRow("cut short") << good.left(good.size() - 3) << false << QStringList();
    QTest::newRow("no count") << QByteArray("\x00\x00", 2) << false << QStringList();
    QTest::newRow("forged count") << QByteArray("\xff\xff\xff\xf0\x00\x00\x00\x00", 8) << false << QStringList();
    QTest::newRow("odd string length") << QByteArray(
                                              "\x00\x00\x00\x01\x00\x00\x00\x03"
                                              "abc",
                                              11)
                                       << false << QStringList();
}

void TestLogFilter::streams() {
    QFETCH(QByteArray, data);
    QFETCH(bool, ok);
    QFETCH(QStringList, words);
    lxtest::LogCapture capture;
    QStringList out{QStringLiteral("stale")};
    QCOMPARE(CLogFilterDialog::ParseFilterWords(data, &out), ok);
    QCOMPARE(out, words);
    if (!ok)
        QVERIFY(capture.contains(QStringLiteral("common filter words:")));
    QCOMPARE(CLogFilterDialog::SerializeFilterWords(words), Words(words));
}

void TestLogFilter::dialogAddsDeletesAndPicks() {
    lxtest::TempProductRoot root;
    {
        // A damaged file: the dialog opens with an empty list and says so in the log.
        lxtest::WriteFile(CLogFilterDialog::DataFilePath(), QByteArray("\x00\x00\x00\x09\x00", 5));
        lxtest::LogCapture capture;
        CLogFilterDialog dlg;
        QVERIFY(dlg.Words().isEmpty());
        QVERIFY(capture.contains(QStringLiteral("common filter words:")));
    }
    CLogFilterDialog dlg;
    dlg.lineEdit()->setText(QStringLiteral("order"));
    dlg.onAddClicked();
    dlg.lineEdit()->setText(QStringLiteral("push seq"));
    dlg.onAddClicked();
    QVERIFY(dlg.lineEdit()->text().isEmpty());
    {
        CLogFilterDialog again;  // kept across runs
        QCOMPARE(again.Words(), (QStringList{QStringLiteral("order"), QStringLiteral("push seq")}));
    }
    QSignalSpy picked(&dlg, &CLogFilterDialog::itemSelected);
    dlg.onItemDoubleClicked(dlg.view()->model()->index(1, 0));
    QCOMPARE(picked.count(), 1);
    QCOMPARE(picked.at(0).at(0).toString(), QStringLiteral("push seq"));

    for (int i = 0; i < 2; ++i) {
        dlg.view()->setCurrentIndex(dlg.view()->model()->index(0, 0));
        dlg.onDeleteClicked();
    }
    QFile file(CLogFilterDialog::DataFilePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray(4, '\0'));  // an empty list: count 0
}

void TestLogFilter::statisticsSortAndShare() {
    FrameWork::LogStatisticsContext ctx;
    auto site = [](const char* module, const char* fn, int line, uint64_t count) {
        FrameWork::LogCallSite s;
        s.strModule = module;
        s.strFunction = fn;
        s.i32Line = line;
        s.u64Count = count;
        return s;
    };
    ctx.vecCallSites = {site("Trade", "Place", 9, 9), site("Quote", "Tick", 120, 100), site("Trade", "Fill", 1000, 10)};
    ctx.mapCountPerLevel = {{0x004, 100}, {0x008, 10}, {0x010, 9}};
    ctx.mapCountPerModule = {{"Trade", 19}, {"Quote", 100}};
    CLogStatisticsDialog dlg;
    dlg.SetData(ctx);
    QTableWidget* table = dlg.table();
    QCOMPARE(table->rowCount(), 3);
    // Numeric, not textual: 100, 10, 9 (as text "9" would come first).
    QCOMPARE(table->item(0, 3)->text(), QStringLiteral("100"));
    QCOMPARE(table->item(1, 3)->text(), QStringLiteral("10"));
    QCOMPARE(table->item(2, 3)->text(), QStringLiteral("9"));
    table->sortByColumn(2, Qt::AscendingOrder);
    QCOMPARE(table->item(0, 2)->text(), QStringLiteral("9"));
    QCOMPARE(table->item(2, 2)->text(), QStringLiteral("1000"));
    QVERIFY(table->isSortingEnabled());

    const QList<QtCharts::QPieSlice*> slices = dlg.levelSeries()->slices();
    QCOMPARE(slices.size(), 10);
    QCOMPARE(slices[0]->property("lx_name").toString(), QStringLiteral("Info"));
    QCOMPARE(slices[1]->property("lx_name").toString(), QStringLiteral("Waning"));
    QVERIFY(slices[0]->label().contains(QStringLiteral("次数:100")));
    QVERIFY(slices[0]->label().contains(QStringLiteral("84.0%")));
    QCOMPARE(dlg.moduleSeries()->slices().size(), 2);
    QCOMPARE(dlg.moduleSeries()->slices()[0]->property("lx_name").toString(), QStringLiteral("Quote"));
    const QVector<QColor> colors = CLogStatisticsDialog::GetRandColorList(10);
    QCOMPARE(colors.size(), 10);
    QSet<QRgb> distinct;
    for (const QColor& c : colors)
        distinct.insert(c.rgb());
    QCOMPARE(distinct.size(), 10);
}

QTEST_MAIN(TestLogFilter)
#include "tst_LogFilter.moc"
