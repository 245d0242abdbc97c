// The log viewer: collection from every thread in per-thread order, the store's cap and the text
// cut, the "#Qt#" rule, filters, the lazy list, auto-scroll, settings and the UI demo plug-in.

#include <LxCore/IniWrapper.h>
#include <LxCore/ProductPath.h>
#include <LxUIKit/DevTools/Log/LogViewerWnd.h>
#include <LxUIKit/DevTools/Log/LogViewerWnd_p.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/DevTools/LxDevTools_p.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QtTest>

#include <algorithm>
#include <thread>

#include "LxTestSupport.h"

namespace {

FrameWork::LogContext Record(const QString& text, int level = FrameWork::kLogInfo, const char* module = "Host",
                             int line = 12) {
    FrameWork::LogContext ctx;
    ctx.i32Level = level;
    ctx.strModule = module;
    ctx.strFile = "src/host/Trading.cpp";
    ctx.strFunction = "Place";
    ctx.i32Line = line;
    ctx.strText = text;
    return ctx;
}

QStringList Messages(const CLogViewerWnd* wnd) {
    QStringList out;
    for (const auto& item : wnd->Lines())
        out << item.strMessage;
    return out;
}

}  // namespace

class TestLogViewer : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void storeKeepsCapAndCutsLongTexts();
    void recordsNeedAVisibleWindow();
    void typeAndLocation_data();
    void typeAndLocation();
    void threadsKeepTheirOrderUnderLoad();
    void mainThreadRecordDrainsTheQueueFirst();
    void drainKeepsWhatOneByOneWould_data();
    void drainKeepsWhatOneByOneWould();
    void drainTurnsKeepOrderAndLoseNothing();
    void filters_data();
    void filters();
    void typeMaskAndLazyRows();
    void recordLoggedWhileAddingIsDropped();
    void autoScrollLeavesADraggedListAlone();
    void clickShowsDetail();
    void settingsRoundTrip();
    void unavailableToolTellsTheUser();
    void uiDemoPluginMissingOrLoaded();

private:
    CLogViewerWnd* m_pWnd = nullptr;
    std::unique_ptr<lxtest::TempProductRoot> m_pRoot;
};

void TestLogViewer::init() {
    m_pRoot = std::make_unique<lxtest::TempProductRoot>();
    m_pWnd = new CLogViewerWnd;
}

void TestLogViewer::cleanup() {
    delete m_pWnd;
    m_pWnd = nullptr;
    m_pRoot.reset();
    devtools::log::detail::SetUiDemoFolderForTest(QString());
    devtools::log::detail::SetDrainTurnBudgetNs(-1);
    lxtest::ResetGlobals();
}

void TestLogViewer::storeKeepsCapAndCutsLongTexts() {
    QCOMPARE(CLogViewerWnd::SaveInfoSize(), 30000);
    QCOMPARE(CLogViewerWnd::Singleton(), m_pWnd);
    {
        lxtest::AssertRecorder rec;  // a second window is a programming error
        CLogViewerWnd second;
        QCOMPARE(rec.count(), 1);
    }
    for (int i = 1; i <= 30000; ++i)
        m_pWnd->addMessageInMain(QString::number(i), QString(), LxLogType_Info);
    QCOMPARE(m_pWnd->Lines().size(), 30000);
    m_pWnd->addMessageInMain(QStringLiteral("next"), QString(), LxLogType_Info);
    // The 30001st line dropped lines 1-1000 in one step.
    QCOMPARE(m_pWnd->Lines().size(), 29001);
    QCOMPARE(m_pWnd->Lines().first().strMessage, QStringLiteral("1001"));
    QCOMPARE(m_pWnd->Lines().first().i32Seq, 1001);
    QCOMPARE(m_pWnd->Lines().last().i32Seq, 30001);

    m_pWnd->onClearButtonClicked();
    const QString huge(20000, QLatin1Char('x'));
    m_pWnd->addMessageInMain(huge, QString(), LxLogType_Info);
    m_pWnd->addMessageInMain(huge.left(10240), QString(), LxLogType_Info);
    QCOMPARE(m_pWnd->Lines()[0].strMessage, huge.left(10240) + QStringLiteral("..."));
    QCOMPARE(m_pWnd->Lines()[1].strMessage, huge.left(10240));

    // Through the hook: a warning-level assertion for long texts, except protocol records.
    m_pWnd->show();
    lxtest::AssertRecorder rec;
    CLogViewerWnd::addMessage(Record(huge, FrameWork::kLogProtocol));
    QCOMPARE(rec.count(), 0);
    CLogViewerWnd::addMessage(Record(huge));
    QCOMPARE(rec.count(), 1);
    QCOMPARE(rec.asserts().front().i32Severity, int(FrameWork::kAssertWarning));
    QCOMPARE(m_pWnd->Lines().last().strMessage, huge.left(10240) + QStringLiteral("..."));
    // Invalid UTF-8 through the real hook arrives as replacement characters, never as a failure.
    FrameWork::_FW_InitStdOutInMainThread(&devtools::detail::OnLogRecord);
    FrameWork::WriteLogRaw(__FILE__, __LINE__, "f", FrameWork::kLogInfo, "Host", std::string("bad \xff\xfe end"));
    FrameWork::_FW_InitStdOutInMainThread({});
    QVERIFY(m_pWnd->Lines().last().strMessage.startsWith(QStringLiteral("bad ")));
    QVERIFY(m_pWnd->Lines().last().strMessage.contains(QChar(0xFFFD)));
}

void TestLogViewer::recordsNeedAVisibleWindow() {
    CLogViewerWnd::addMessage(Record(QStringLiteral("while hidden")));
    std::thread([] { CLogViewerWnd::addMessage(Record(QStringLiteral("hidden worker"))); }).join();
    m_pWnd->show();
    m_pWnd->FlashPendingMessage();
    QVERIFY(m_pWnd->Lines().isEmpty());
    CLogViewerWnd::addMessage(Record(QStringLiteral("while shown")));
    QCOMPARE(Messages(m_pWnd), QStringList{QStringLiteral("while shown")});
}

void TestLogViewer::typeAndLocation_data() {
    QTest::addColumn<QByteArray>("module");
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("location");
    QTest::newRow("plain") << QByteArray("Host") << 0x004 << 12 << 0x004 << "信息"
                           << "Host, Trading.cpp, Place, 12";
    QTest::newRow("qt category") << QByteArray("#Qt#") << 0x004 << 3 << 0x204 << "QT"
                                 << "#Qt#, Trading.cpp, Place, 3";
    QTest::newRow("longer category") << QByteArray("#Qt#x") << 0x004 << 3 << 0x004 << "信息"
                                     << "#Qt#x, Trading.cpp, Place, 3";
    QTest::newRow("no line") << QByteArray("Host") << 0x010 << -1 << 0x010 << "错误"
                             << "Host, Trading.cpp, Place, ";
}

void TestLogViewer::typeAndLocation() {
    QFETCH(QByteArray, module);
    QFETCH(int, level);
    QFETCH(int, line);
    QFETCH(int, type);
    QFETCH(QString, label);
    QFETCH(QString, location);
    m_pWnd->show();
    CLogViewerWnd::addMessage(Record(QStringLiteral("t"), level, module.constData(), line));
    QCOMPARE(int(m_pWnd->Lines().last().eType), type);
    QCOMPARE(m_pWnd->Lines().last().strLocation, location);
    QCOMPARE(devtools::log::detail::TypeLabel(type), label);
}

void TestLogViewer::threadsKeepTheirOrderUnderLoad() {
    m_pWnd->show();
    constexpr int kThreads = 4;
    constexpr int kEach = 25000;  // 100000 records: more than the store keeps
    std::vector<std::thread> workers;
    for (int t = 0; t < kThreads; ++t)
        workers.emplace_back([t] {
            for (int i = 0; i < kEach; ++i)
                CLogViewerWnd::addMessage(Record(QStringLiteral("%1:%2").arg(t).arg(i)));
        });
    for (int n = 0; n < 50; ++n) {  // the GUI thread drains while they write
        m_pWnd->FlashPendingMessage();
        QThread::msleep(2);
    }
    for (auto& w : workers)
        w.join();
    m_pWnd->FlashPendingMessage();
    const auto& lines = m_pWnd->Lines();
    QVERIFY(lines.size() <= CLogViewerWnd::SaveInfoSize());
    QVERIFY(lines.size() > CLogViewerWnd::SaveInfoSize() - 1000);
    int last[kThreads] = {-1, -1, -1, -1};
    for (int i = 0; i < lines.size(); ++i) {
        if (i > 0)
            QCOMPARE(lines[i].i32Seq, lines[i - 1].i32Seq + 1);
        const QStringList parts = lines[i].strMessage.split(QLatin1Char(':'));
        const int t = parts[0].toInt();
        const int n = parts[1].toInt();
        QVERIFY2(n > last[t], qPrintable(lines[i].strMessage));
        last[t] = n;
    }
    // Every record was counted, kept or not, and the newest record survived. (A thread that finished
    // early may have all of its records pushed out by the others: that depends on scheduling.)
    QCOMPARE(lines.last().i32Seq, kThreads * kEach);
    QVERIFY(std::any_of(std::begin(last), std::end(last), [](int n) { return n == kEach - 1; }));
}

void TestLogViewer::mainThreadRecordDrainsTheQueueFirst() {
    m_pWnd->show();
    std::thread([] { CLogViewerWnd::addMessage(Record(QStringLiteral("worker first"))); }).join();
    QVERIFY(m_pWnd->Lines().isEmpty());  // still queued
    CLogViewerWnd::addMessage(Record(QStringLiteral("main second")));
    QCOMPARE(Messages(m_pWnd), (QStringList{QStringLiteral("worker first"), QStringLiteral("main second")}));
    std::thread([] { CLogViewerWnd::addMessage(Record(QStringLiteral("by the timer"))); }).join();
    QTRY_COMPARE_WITH_TIMEOUT(m_pWnd->Lines().size(), 3, 2000);
}

void TestLogViewer::drainKeepsWhatOneByOneWould_data() {
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("queued");
    QTest::newRow("small") << 0 << 10;
    QTest::newRow("crossing the cap") << 29990 << 20;
    QTest::newRow("full plus one") << 30000 << 1;
    QTest::newRow("more than a store") << 100 << 45000;
    QTest::newRow("queue trimmed while writing") << 29500 << 70000;
}

void TestLogViewer::drainKeepsWhatOneByOneWould() {
    QFETCH(int, before);
    QFETCH(int, queued);
    for (int i = 0; i < before; ++i)
        m_pWnd->addMessageInMain(QString::number(i), QString(), LxLogType_Info);
    m_pWnd->show();
    std::thread([queued, before] {
        for (int i = 0; i < queued; ++i)
            CLogViewerWnd::addMessage(Record(QString::number(before + i)));
    }).join();
    m_pWnd->FlashPendingMessage();
    // Adding the same lines one by one: append, and past the cap drop the oldest 1000.
    int size = 0;
    for (int i = 0; i < before + queued; ++i)
        if (++size > CLogViewerWnd::SaveInfoSize())
            size -= 1000;
    const int total = before + queued;
    QCOMPARE(m_pWnd->Lines().size(), size);
    QCOMPARE(devtools::log::detail::StoreSizeAfter(0, total, CLogViewerWnd::SaveInfoSize()), size);
    QCOMPARE(m_pWnd->Lines().first().i32Seq, total - size + 1);
    QCOMPARE(m_pWnd->Lines().first().strMessage, QString::number(total - size));
    QCOMPARE(m_pWnd->Lines().last().i32Seq, total);
}

void TestLogViewer::drainTurnsKeepOrderAndLoseNothing() {
    devtools::log::detail::SetDrainTurnBudgetNs(0);  // every turn stops after 256 lines
    for (int i = 0; i < 29000; ++i)
        m_pWnd->addMessageInMain(QString::number(i), QString(), LxLogType_Info);
    m_pWnd->show();
    constexpr int kQueued = 3000;  // crosses the cap: the store drops a block on the way
    std::thread([] {
        for (int i = 0; i < kQueued; ++i)
            CLogViewerWnd::addMessage(Record(QString::number(29000 + i)));
    }).join();
    m_pWnd->DrainTurn();
    QVERIFY(m_pWnd->HasPendingMessages());
    QVERIFY(m_pWnd->Lines().last().strMessage != QString::number(29000 + kQueued - 1));
    // A GUI-thread record written now waits behind the worker's records, and the turns go on by
    // themselves until everything is in.
    CLogViewerWnd::addMessage(Record(QStringLiteral("main")));
    QVERIFY(m_pWnd->Lines().last().strMessage != QStringLiteral("main"));
    QTRY_VERIFY(!m_pWnd->HasPendingMessages());
    // The same lines as adding all 32001 one by one.
    const int total = 29000 + kQueued + 1;
    const int size = devtools::log::detail::StoreSizeAfter(0, total, CLogViewerWnd::SaveInfoSize());
    const auto& lines = m_pWnd->Lines();
    QCOMPARE(lines.size(), size);
    QCOMPARE(lines.last().strMessage, QStringLiteral("main"));
    QCOMPARE(lines.last().i32Seq, total);
    for (int i = 0; i + 1 < lines.size(); ++i) {
        QCOMPARE(lines[i].i32Seq, total - size + 1 + i);
        QCOMPARE(lines[i].strMessage, QString::number(total - size + i));
    }
}

void TestLogViewer::filters_data() {
    QTest::addColumn<bool>("regExp");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("location");
    QTest::addColumn<bool>("match");
    QTest::newRow("plain, case-insensitive") << false << "ERR"
                                             << "an err here"
                                             << "Host" << true;
    QTest::newRow("plain, in location") << false << "trading"
                                        << "m"
                                        << "Host, Trading.cpp" << true;
    QTest::newRow("plain, absent") << false << "zzz"
                                   << "m"
                                   << "Host" << false;
    QTest::newRow("regexp at position 0 does not count") << true << "abc"
                                                         << "abc1"
                                                         << "abc2" << false;
    QTest::newRow("regexp later in message") << true << "abc"
                                             << "xabc"
                                             << "" << true;
    QTest::newRow("regexp later in location") << true << "a.c"
                                              << "abc"
                                              << "_abc" << true;
    QTest::newRow("broken regexp matches nothing") << true << "a("
                                                   << "xa("
                                                   << "xa(" << false;
}

void TestLogViewer::filters() {
    QFETCH(bool, regExp);
    QFETCH(QString, filter);
    QFETCH(QString, message);
    QFETCH(QString, location);
    QFETCH(bool, match);
    m_pWnd->show();
    m_pWnd->findChildren<QCheckBox*>().at(0);  // the boxes exist
    for (QCheckBox* box : m_pWnd->findChildren<QCheckBox*>())
        if (box->text() == QStringLiteral("正则表达式"))
            box->setChecked(regExp);
    m_pWnd->findChild<QComboBox*>()->setEditText(filter);
    CLogViewerWnd::ItemData item;
    item.strMessage = message;
    item.strLocation = location;
    QCOMPARE(m_pWnd->IsTextMatchFilter(item), match);
    m_pWnd->addMessageInMain(message, location, LxLogType_Info);
    QCOMPARE(m_pWnd->Lines().last().bShown, match);
    if (filter == QStringLiteral("a("))
        QVERIFY(m_pWnd->StatusText().contains(QStringLiteral("a( (无效)")));
}

void TestLogViewer::typeMaskAndLazyRows() {
    m_pWnd->show();
    auto* view = m_pWnd->findChild<QTableView*>();
    for (int i = 0; i < 250; ++i)
        m_pWnd->addMessageInMain(QStringLiteral("info %1").arg(i), QString(), LxLogType_Info);
    m_pWnd->addMessageInMain(QStringLiteral("an error"), QString(), LxLogType_Error);
    QCOMPARE(view->model()->rowCount(), 251);  // caught up line by line
    for (QCheckBox* box : m_pWnd->findChildren<QCheckBox*>())
        if (box->text() == QStringLiteral("信息"))
            box->click();
    QCOMPARE(m_pWnd->FilterMask() & LxLogType_Info, 0);
    QCOMPARE(view->model()->rowCount(), 1);
    QCOMPARE(view->model()->index(0, 3).data().toString(), QStringLiteral("an error"));
    QCOMPARE(view->model()->index(0, 2).data().toString(), QStringLiteral("错误"));
    QCOMPARE(view->model()->index(0, 0).data(Qt::ForegroundRole).value<QBrush>().color(), QColor("#CF0000"));
    for (QCheckBox* box : m_pWnd->findChildren<QCheckBox*>())
        if (box->text() == QStringLiteral("全选"))
            QVERIFY(!box->isChecked());
    for (QCheckBox* box : m_pWnd->findChildren<QCheckBox*>())
        if (box->text() == QStringLiteral("信息"))
            box->click();
    // A filter change rebuilds the list lazily, in batches of 100 as the view asks for them.
    const int rows = view->model()->rowCount();
    QVERIFY(rows > 0 && rows < 251 && rows % 100 == 0);
    QVERIFY(view->model()->canFetchMore(QModelIndex()));
    view->model()->fetchMore(QModelIndex());
    QCOMPARE(view->model()->rowCount(), qMin(251, rows + 100));
    QVERIFY(m_pWnd->StatusText().contains(QStringLiteral("合计: <span style=\" color:#ff0000;\">251</span>")));
}

void TestLogViewer::recordLoggedWhileAddingIsDropped() {
    m_pWnd->show();
    auto* view = m_pWnd->findChild<QTableView*>();
    int inserted = 0;
    connect(view->model(), &QAbstractItemModel::rowsInserted, this, [&inserted] {
        ++inserted;
        CLogViewerWnd::addMessage(Record(QStringLiteral("logged from inside")));
    });
    CLogViewerWnd::addMessage(Record(QStringLiteral("outer")));
    QCOMPARE(inserted, 1);
    QCOMPARE(Messages(m_pWnd), QStringList{QStringLiteral("outer")});
}

void TestLogViewer::autoScrollLeavesADraggedListAlone() {
    m_pWnd->resize(800, 400);
    m_pWnd->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWnd));
    auto* view = m_pWnd->findChild<QTableView*>();
    for (int i = 0; i < 60; ++i)
        m_pWnd->addMessageInMain(QStringLiteral("line %1").arg(i), QString(), LxLogType_Info);
    QScrollBar* bar = view->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0 && bar->value() == bar->maximum());
    bar->setValue(0);
    // The user holds the left button (on the scroll bar): new lines do not move the list.
    QTest::mousePress(m_pWnd->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(QGuiApplication::mouseButtons() & Qt::LeftButton);
    m_pWnd->addMessageInMain(QStringLiteral("while dragging"), QString(), LxLogType_Info);
    QTest::qWait(250);
    QCOMPARE(bar->value(), 0);
    QTest::mouseRelease(m_pWnd->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    m_pWnd->addMessageInMain(QStringLiteral("after release"), QString(), LxLogType_Info);
    QTRY_COMPARE(bar->value(), bar->maximum());
}

void TestLogViewer::clickShowsDetail() {
    m_pWnd->show();
    m_pWnd->addMessageInMain(QStringLiteral("first\nsecond line"), QStringLiteral("Host, a.cpp, f, 1"),
                             LxLogType_Warning);
    auto* view = m_pWnd->findChild<QTableView*>();
    QCOMPARE(view->model()->index(0, 3).data().toString(), QStringLiteral("first second line"));
    m_pWnd->onListViewItemClicked(view->model()->index(0, 1));
    QVERIFY(m_pWnd->DetailText().startsWith(QStringLiteral("first\nsecond line")));
    QVERIFY(m_pWnd->DetailText().contains(QStringLiteral("Host, a.cpp, f, 1")));
}

void TestLogViewer::settingsRoundTrip() {
    m_pWnd->show();
    for (QCheckBox* box : m_pWnd->findChildren<QCheckBox*>())
        if (box->text() == QStringLiteral("Web") || box->text() == QStringLiteral("调试"))
            box->click();
    m_pWnd->findChild<QComboBox*>()->setEditText(QStringLiteral("Order"));
    const QSize size(m_pWnd->minimumSizeHint().width() + 20, 480);
    m_pWnd->setGeometry(QRect(QPoint(40, 50), size));
    m_pWnd->SaveConfigToCache();
    const int mask = m_pWnd->FilterMask();
    QCOMPARE(mask, LxLogType_All & ~LxLogType_Web & ~LxLogType_Debug);
    core::CIniWrapper ini(core::product_path::GetSettingsFile());
    QCOMPARE(ini.GetInt(QStringLiteral("StdOutDialog"), QStringLiteral("StdOutFilter")), mask);
    QCOMPARE(ini.GetString(QStringLiteral("StdOutDialog"), QStringLiteral("Geometry")),
             QStringLiteral("%1-%2-%3-480").arg(m_pWnd->geometry().x()).arg(m_pWnd->geometry().y()).arg(size.width()));
    delete m_pWnd;
    m_pWnd = new CLogViewerWnd;
    QCOMPARE(m_pWnd->FilterMask(), mask);
    QCOMPARE(m_pWnd->FilterText(), QStringLiteral("Order"));
    QCOMPARE(m_pWnd->size(), size);

    QVERIFY(!CLogViewerWnd::isAutoOpen());
    for (QPushButton* b : m_pWnd->findChildren<QPushButton*>())
        if (b->text() == QStringLiteral("自动打开"))
            b->click();
    QVERIFY(CLogViewerWnd::isAutoOpen());
}

void TestLogViewer::unavailableToolTellsTheUser() {
    if (!devtools::IsAvailable()) {
        m_pWnd->show();
        QVERIFY(!m_pWnd->isVisible());  // silent without the tools
        return;
    }
    core::app_setting::SetBool(QStringLiteral("dev_auto_open_std_out"), true);
    m_pWnd->setToolAvailable(false);
    m_pWnd->show();
    QVERIFY(!m_pWnd->isVisible());
    QVERIFY(!CLogViewerWnd::isAutoOpen());
    bool toast = false;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* label = qobject_cast<QLabel*>(w))
            toast = toast || label->text().contains(QStringLiteral("该工具仅在内网可用！更多信息请联系平台。"));
    QVERIFY(toast);
}

void TestLogViewer::uiDemoPluginMissingOrLoaded() {
    lxtest::LogCapture capture;
    QTemporaryDir empty;
    devtools::log::detail::SetUiDemoFolderForTest(empty.path());
    m_pWnd->showUiDemo();
    QVERIFY(capture.hasExact(QStringLiteral("LxStdUiDemo load failed")));

#ifdef LX_TEST_NOT_A_DEMO_PLUGIN
    // A library without the entry point.
    QFile::copy(QStringLiteral(LX_TEST_NOT_A_DEMO_PLUGIN), empty.filePath(QStringLiteral("libLxStdUiDemo.so")));
    capture.clear();
    m_pWnd->showUiDemo();
    QVERIFY(capture.contains(QStringLiteral("LxStdUiDemo showMainWnd resolve failed: ")));
#endif

#ifdef LX_TEST_UI_DEMO_FOLDER
    devtools::log::detail::SetUiDemoFolderForTest(QStringLiteral(LX_TEST_UI_DEMO_FOLDER));
    capture.clear();
    m_pWnd->showUiDemo();
    QVERIFY(!capture.contains(QStringLiteral("LxStdUiDemo")));
    QWidget* demo = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QStringLiteral("LxStdUiDemoMainWnd") && w->isVisible())
            demo = w;
    QVERIFY(demo);
    // It shows the standard UI library's controls (by class name: the plug-in brings its own
    // copy of the kit, so casts across the two would not be meaningful).
    QSet<QString> classes;
    for (QWidget* w : demo->findChildren<QWidget*>())
        classes.insert(QString::fromLatin1(w->metaObject()->className()));
    for (const char* name : {"LText", "LTitle", "LLink", "LCheck", "LRadio", "LSwitch", "LComboBox", "LLineEdit",
                             "LIconButton", "LTabBarBase", "LLineChart", "LSlideshowBase"})
        QVERIFY2(classes.contains(QString::fromLatin1(name)), name);
    // The theme switch flips the theme live (the plug-in's own theme manager: read it through the
    // window's colours) and flips it back.
    QCoreApplication::processEvents();  // let the window settle (and take its screenshots if asked)
    auto* themeSwitch = demo->findChild<QAbstractButton*>(QStringLiteral("DemoThemeSwitch"));
    QVERIFY(themeSwitch);
    const QString before = demo->styleSheet();
    themeSwitch->click();
    QVERIFY(demo->styleSheet() != before);
    themeSwitch->click();
    QCOMPARE(demo->styleSheet(), before);
    demo->close();
#endif
}

QTEST_MAIN(TestLogViewer)
#include "tst_LogViewer.moc"
