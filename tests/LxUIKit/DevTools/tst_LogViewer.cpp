// The log viewer: collection from every thread in per-thread order, the store's cap and the text
// cut, the "#Qt#" rule, filters, the lazy list, auto-scroll, settings and the UI demo plug-in.
// Common filter words ("CommonFilter.dat"): the file format, damaged and newer files, the dialog's
// add, delete and pick. The log statistics dialog's numeric sorting and shares.

#include <LxCore/IniWrapper.h>
#include <LxCore/ProductPath.h>
#include <LxUIKit/DevTools/Log/LogFilterDialog.h>
#include <LxUIKit/DevTools/Log/LogStatisticsDialog.h>
#include <LxUIKit/DevTools/Log/LogViewerWnd.h>
#include <LxUIKit/DevTools/Log/LogViewerWnd_p.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/DevTools/LxDevTools_p.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDataStream>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>
#include <QtCharts/QPieSeries>
#include <QtCharts/QPieSlice>
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

// The filter bar's check box with this text.
QCheckBox* Box(const QWidget* wnd, const QString& text) {
    for (QCheckBox* box : wnd->findChildren<QCheckBox*>())
        if (box->text() == text)
            return box;
    return nullptr;
}

// Writes `count` records numbered from `first` from a worker thread (queued for the GUI thread).
void QueueFromWorker(int first, int count) {
    std::thread([first, count] {
        for (int i = 0; i < count; ++i)
            CLogViewerWnd::addMessage(Record(QString::number(first + i)));
    }).join();
}

QByteArray Words(const QStringList& words, QDataStream::Version version = QDataStream::Qt_5_15) {
    QByteArray out;
    QDataStream s(&out, QIODevice::WriteOnly);
    s.setVersion(version);
    s << words;
    return out;
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
    void init() {
        m_pRoot = std::make_unique<lxtest::TempProductRoot>();
        m_pWnd = new CLogViewerWnd;
    }
    void cleanup() {
        delete m_pWnd;
        m_pWnd = nullptr;
        m_pRoot.reset();
        devtools::log::detail::SetUiDemoFolderForTest(QString());
        devtools::log::detail::SetDrainTurnBudgetNs(-1);
        lxtest::ResetGlobals();
    }
    void storeKeepsCapAndCutsLongTexts() {
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
    void recordsNeedAVisibleWindow() {
        CLogViewerWnd::addMessage(Record(QStringLiteral("while hidden")));
        std::thread([] { CLogViewerWnd::addMessage(Record(QStringLiteral("hidden worker"))); }).join();
        m_pWnd->show();
        m_pWnd->FlashPendingMessage();
        QVERIFY(m_pWnd->Lines().isEmpty());
        CLogViewerWnd::addMessage(Record(QStringLiteral("while shown")));
        QCOMPARE(Messages(m_pWnd), QStringList{QStringLiteral("while shown")});
    }
    void typeAndLocation_data() {
        QTest::addColumn<QByteArray>("module");
        QTest::addColumn<int>("level");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("location");
        auto row = [](const char* name, const char* module, int level, int line, int type, const char* label,
                      const char* location) {
            QTest::newRow(name) << QByteArray(module) << level << line << type << QString(label) << QString(location);
        };
        row("plain", "Host", 0x004, 12, 0x004, "信息", "Host, Trading.cpp, Place, 12");
        row("qt category", "#Qt#", 0x004, 3, 0x204, "QT", "#Qt#, Trading.cpp, Place, 3");
        row("longer category", "#Qt#x", 0x004, 3, 0x004, "信息", "#Qt#x, Trading.cpp, Place, 3");
        row("no line", "Host", 0x010, -1, 0x010, "错误", "Host, Trading.cpp, Place, ");
    }
    void typeAndLocation() {
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
    void threadsKeepTheirOrderUnderLoad() {
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
    void mainThreadRecordDrainsTheQueueFirst() {
        m_pWnd->show();
        std::thread([] { CLogViewerWnd::addMessage(Record(QStringLiteral("worker first"))); }).join();
        QVERIFY(m_pWnd->Lines().isEmpty());  // still queued
        CLogViewerWnd::addMessage(Record(QStringLiteral("main second")));
        QCOMPARE(Messages(m_pWnd), (QStringList{QStringLiteral("worker first"), QStringLiteral("main second")}));
        std::thread([] { CLogViewerWnd::addMessage(Record(QStringLiteral("by the timer"))); }).join();
        QTRY_COMPARE_WITH_TIMEOUT(m_pWnd->Lines().size(), 3, 2000);
    }
    void drainKeepsWhatOneByOneWould_data() {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("queued");
        QTest::newRow("small") << 0 << 10;
        QTest::newRow("crossing the cap") << 29990 << 20;
        QTest::newRow("full plus one") << 30000 << 1;
        QTest::newRow("more than a store") << 100 << 45000;
        QTest::newRow("queue trimmed while writing") << 29500 << 70000;
    }
    void drainKeepsWhatOneByOneWould() {
        QFETCH(int, before);
        QFETCH(int, queued);
        for (int i = 0; i < before; ++i)
            m_pWnd->addMessageInMain(QString::number(i), QString(), LxLogType_Info);
        m_pWnd->show();
        QueueFromWorker(before, queued);
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
    void drainTurnsKeepOrderAndLoseNothing() {
        devtools::log::detail::SetDrainTurnBudgetNs(0);  // every turn stops after 64 lines
        for (int i = 0; i < 29000; ++i)
            m_pWnd->addMessageInMain(QString::number(i), QString(), LxLogType_Info);
        m_pWnd->show();
        constexpr int kQueued = 3000;  // crosses the cap: the store drops a block on the way
        QueueFromWorker(29000, kQueued);
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
        // The chunks the turns went through go back to the writers: a second flood fills them with
        // nothing left over from the first, and nothing lost.
        constexpr int kSecond = 2500;
        QueueFromWorker(total, kSecond);
        m_pWnd->FlashPendingMessage();
        const auto& after = m_pWnd->Lines();
        QCOMPARE(after.size(),
                 devtools::log::detail::StoreSizeAfter(0, total + kSecond, CLogViewerWnd::SaveInfoSize()));
        for (int i = 0; i < kSecond; ++i)
            QCOMPARE(after[after.size() - kSecond + i].strMessage, QString::number(total + i));
    }
    void filters_data() {
        QTest::addColumn<bool>("regExp");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("location");
        QTest::addColumn<bool>("match");
        auto row = [](const char* name, bool regExp, const char* filter, const char* message, const char* location,
                      bool match) {
            QTest::newRow(name) << regExp << QString(filter) << QString(message) << QString(location) << match;
        };
        row("plain, case-insensitive", false, "ERR", "an err here", "Host", true);
        row("plain, in location", false, "trading", "m", "Host, Trading.cpp", true);
        row("plain, absent", false, "zzz", "m", "Host", false);
        row("regexp at position 0 does not count", true, "abc", "abc1", "abc2", false);
        row("regexp later in message", true, "abc", "xabc", "", true);
        row("regexp later in location", true, "a.c", "abc", "_abc", true);
        row("broken regexp matches nothing", true, "a(", "xa(", "xa(", false);
    }
    void filters() {
        QFETCH(bool, regExp);
        QFETCH(QString, filter);
        QFETCH(QString, message);
        QFETCH(QString, location);
        QFETCH(bool, match);
        m_pWnd->show();
        Box(m_pWnd, QStringLiteral("正则表达式"))->setChecked(regExp);
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
    void typeMaskAndLazyRows() {
        m_pWnd->show();
        auto* view = m_pWnd->findChild<QTableView*>();
        for (int i = 0; i < 250; ++i)
            m_pWnd->addMessageInMain(QStringLiteral("info %1").arg(i), QString(), LxLogType_Info);
        m_pWnd->addMessageInMain(QStringLiteral("an error"), QString(), LxLogType_Error);
        QCOMPARE(view->model()->rowCount(), 251);  // caught up line by line
        Box(m_pWnd, QStringLiteral("信息"))->click();
        QCOMPARE(m_pWnd->FilterMask() & LxLogType_Info, 0);
        QCOMPARE(view->model()->rowCount(), 1);
        QCOMPARE(view->model()->index(0, 3).data().toString(), QStringLiteral("an error"));
        QCOMPARE(view->model()->index(0, 2).data().toString(), QStringLiteral("错误"));
        QCOMPARE(view->model()->index(0, 0).data(Qt::ForegroundRole).value<QBrush>().color(), QColor("#CF0000"));
        QVERIFY(!Box(m_pWnd, QStringLiteral("全选"))->isChecked());
        Box(m_pWnd, QStringLiteral("信息"))->click();
        // A filter change rebuilds the list lazily, in batches of 100 as the view asks for them.
        const int rows = view->model()->rowCount();
        QVERIFY(rows > 0 && rows < 251 && rows % 100 == 0);
        QVERIFY(view->model()->canFetchMore(QModelIndex()));
        view->model()->fetchMore(QModelIndex());
        QCOMPARE(view->model()->rowCount(), qMin(251, rows + 100));
        QVERIFY(m_pWnd->StatusText().contains(QStringLiteral("合计: <span style=\" color:#ff0000;\">251</span>")));
    }
    void recordLoggedWhileAddingIsDropped() {
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
    void autoScrollLeavesADraggedListAlone() {
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
    void clickShowsDetail() {
        m_pWnd->show();
        m_pWnd->addMessageInMain(QStringLiteral("first\nsecond line"), QStringLiteral("Host, a.cpp, f, 1"),
                                 LxLogType_Warning);
        auto* view = m_pWnd->findChild<QTableView*>();
        QCOMPARE(view->model()->index(0, 3).data().toString(), QStringLiteral("first second line"));
        m_pWnd->onListViewItemClicked(view->model()->index(0, 1));
        QVERIFY(m_pWnd->DetailText().startsWith(QStringLiteral("first\nsecond line")));
        QVERIFY(m_pWnd->DetailText().contains(QStringLiteral("Host, a.cpp, f, 1")));
    }
    void settingsRoundTrip() {
        m_pWnd->show();
        Box(m_pWnd, QStringLiteral("Web"))->click();
        Box(m_pWnd, QStringLiteral("调试"))->click();
        m_pWnd->findChild<QComboBox*>()->setEditText(QStringLiteral("Order"));
        const QSize size(m_pWnd->minimumSizeHint().width() + 20, 480);
        m_pWnd->setGeometry(QRect(QPoint(40, 50), size));
        m_pWnd->SaveConfigToCache();
        const int mask = m_pWnd->FilterMask();
        QCOMPARE(mask, LxLogType_All & ~LxLogType_Web & ~LxLogType_Debug);
        core::CIniWrapper ini(core::product_path::GetSettingsFile());
        QCOMPARE(ini.GetInt(QStringLiteral("StdOutDialog"), QStringLiteral("StdOutFilter")), mask);
        QCOMPARE(
            ini.GetString(QStringLiteral("StdOutDialog"), QStringLiteral("Geometry")),
            QStringLiteral("%1-%2-%3-480").arg(m_pWnd->geometry().x()).arg(m_pWnd->geometry().y()).arg(size.width()));
        delete m_pWnd;
        m_pWnd = new CLogViewerWnd;
        QCOMPARE(m_pWnd->FilterMask(), mask);
        QCOMPARE(m_pWnd->FilterText(), QStringLiteral("Order"));
        QCOMPARE(m_pWnd->size(), size);

        // Typing does not rewrite the file per keystroke, and what was typed is not lost when the
        // window goes before the save was due.
        m_pWnd->show();
        auto* filter = m_pWnd->findChild<QComboBox*>();
        filter->setEditText(QStringLiteral("Fil"));
        filter->setEditText(QStringLiteral("Fill"));
        QCOMPARE(ini.GetString(QStringLiteral("StdOutDialog"), QStringLiteral("StdOutFilterString")),
                 QStringLiteral("Order"));
        delete m_pWnd;
        m_pWnd = new CLogViewerWnd;
        QCOMPARE(m_pWnd->FilterText(), QStringLiteral("Fill"));
        // A broken regular expression frames the box in red, and a mended one takes the frame away.
        m_pWnd->show();
        filter = m_pWnd->findChild<QComboBox*>();
        Box(m_pWnd, QStringLiteral("正则表达式"))->click();
        filter->setEditText(QStringLiteral("a("));
        QVERIFY(filter->styleSheet().contains(QStringLiteral("#CF0000")));
        filter->setEditText(QStringLiteral("a"));
        QVERIFY(!filter->styleSheet().contains(QStringLiteral("#CF0000")));

        QVERIFY(!CLogViewerWnd::isAutoOpen());
        for (QPushButton* b : m_pWnd->findChildren<QPushButton*>())
            if (b->text() == QStringLiteral("自动打开"))
                b->click();
        QVERIFY(CLogViewerWnd::isAutoOpen());
    }
    void unavailableToolTellsTheUser() {
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
    void uiDemoPluginMissingOrLoaded() {
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
    void streams_data() {
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
    void streams() {
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
    void dialogAddsDeletesAndPicks() {
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
    void statisticsSortAndShare() {
        FrameWork::LogStatisticsContext ctx;
        auto site = [](const char* module, const char* fn, int line, uint64_t count) {
            FrameWork::LogCallSite s;
            s.strModule = module;
            s.strFunction = fn;
            s.i32Line = line;
            s.u64Count = count;
            return s;
        };
        ctx.vecCallSites = {site("Trade", "Place", 9, 9), site("Quote", "Tick", 120, 100),
                            site("Trade", "Fill", 1000, 10)};
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

private:
    CLogViewerWnd* m_pWnd = nullptr;
    std::unique_ptr<lxtest::TempProductRoot> m_pRoot;
};

QTEST_MAIN(TestLogViewer)
#include "tst_LogViewer.moc"
