// Developer tools entry: the gate and the shortcuts, the popup watch, the log hook, the
// unknown-scheme handler and the modal bypass under a real application-modal dialog.

#include <LxCore/Scheme.h>
#include <LxStdUI/LDialog.h>
#include <LxStdUI/MultiLang.h>
#include <LxUIKit/DevTools/LModalBypassHelper.h>
#include <LxUIKit/DevTools/Log/LogViewerWnd.h>
#include <LxUIKit/DevTools/LxDevTools.h>
#include <LxUIKit/DevTools/LxDevTools_p.h>
#include <LxUIKit/DevTools/Spy/SpyToolWnd.h>

#include <private/qguiapplication_p.h>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QWindow>
#include <QtTest>

#include <thread>

#include "LxTestSupport.h"

namespace {
// Counts the ShortcutOverride events that reach it.
class KeyProbe : public QWidget {
public:
    int i32Overrides = 0;

protected:
    bool event(QEvent* e) override {
        if (e->type() == QEvent::ShortcutOverride)
            ++i32Overrides;
        return QWidget::event(e);
    }
};

bool Blocked(QWidget* w) { return QGuiApplicationPrivate::instance()->isWindowBlocked(w->windowHandle()); }
}  // namespace

class TestDevTools : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { m_root = std::make_unique<lxtest::TempProductRoot>(); }
    void cleanup() {
        devtools::auto_test::InitAutoTestFunction({});
        if (CLogViewerWnd* wnd = CLogViewerWnd::Instance())
            wnd->hide();
        for (QWidget* w : QApplication::topLevelWidgets())
            if (qobject_cast<QDialog*>(w))
                w->close();
        lxtest::ResetGlobals();
    }
    void shortcutDecisions_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("available");
        QTest::addColumn<bool>("consumed");
        const int ctrl = Qt::ControlModifier;
        QTest::newRow("ctrl+f9") << int(Qt::Key_F9) << ctrl << true << true;
        QTest::newRow("ctrl+f9 unavailable still consumed") << int(Qt::Key_F9) << ctrl << false << true;
        QTest::newRow("ctrl+shift+f9") << int(Qt::Key_F9) << int(ctrl | Qt::ShiftModifier) << true << true;
        QTest::newRow("ctrl+f10 unavailable passed on") << int(Qt::Key_F10) << ctrl << false << false;
        QTest::newRow("f9 alone") << int(Qt::Key_F9) << int(Qt::NoModifier) << true << false;
        QTest::newRow("f10 alone") << int(Qt::Key_F10) << int(Qt::NoModifier) << true << false;
        QTest::newRow("shift+f9") << int(Qt::Key_F9) << int(Qt::ShiftModifier) << true << false;
        QTest::newRow("ctrl+f8") << int(Qt::Key_F8) << ctrl << true << false;
    }
    void shortcutDecisions() {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(bool, available);
        QFETCH(bool, consumed);
        QWidget target;
        QKeyEvent ev(QEvent::ShortcutOverride, key, Qt::KeyboardModifiers(modifiers));
        QCOMPARE(devtools::detail::FilterApplicationEvent(&target, &ev, available), consumed);
        if (!available || key != Qt::Key_F9 || !(modifiers & Qt::ControlModifier))
            QVERIFY(!CLogViewerWnd::Instance() || !CLogViewerWnd::Instance()->isVisible());
    }
    void ctrlF9ShowsRestoresAndRaises() {
        if (!devtools::IsAvailable())
            QSKIP("the window exists only with the developer tools");
        QWidget target;
        QKeyEvent ev(QEvent::ShortcutOverride, Qt::Key_F9, Qt::ControlModifier);
        QVERIFY(devtools::detail::FilterApplicationEvent(&target, &ev, true));
        CLogViewerWnd* wnd = CLogViewerWnd::Instance();
        QVERIFY(wnd && wnd->isVisible());
        QCOMPARE(wnd->windowTitle(), QStringLiteral("超级开发者工具（快捷键 Ctrl+F9）"));
        wnd->showMinimized();
        QVERIFY(wnd->isMinimized());
        QVERIFY(devtools::detail::FilterApplicationEvent(&target, &ev, true));
        QVERIFY(!wnd->isMinimized());
        QVERIFY(wnd->isVisible());
    }
    void initInstallsWhatTheGateAllows() {
        devtools::Init();
        QCOMPARE(devtools::IsInitialized(), devtools::IsAvailable());
        KeyProbe probe;
        QKeyEvent f9(QEvent::ShortcutOverride, Qt::Key_F9, Qt::ControlModifier);
        QKeyEvent f10(QEvent::ShortcutOverride, Qt::Key_F10, Qt::ControlModifier);
        QApplication::sendEvent(&probe, &f9);
        QApplication::sendEvent(&probe, &f10);
        // With the tools the application filter eats Ctrl+F9 and Ctrl+F10 (which opens the inspector);
        // without them both keys reach the widget.
        QCOMPARE(probe.i32Overrides, devtools::IsAvailable() ? 0 : 2);
        QCOMPARE(currentSpyToolWnd() != nullptr, devtools::IsAvailable());
        delete currentSpyToolWnd();  // it picks while open: later cases need their clicks

        // The installed filter watches every Show event delivered in the application.
        {
            QWidget holder;
            auto* stray = new QWidget(&holder);
            stray->QObject::setParent(nullptr);
            lxtest::AssertRecorder rec;
            QShowEvent shown;
            QApplication::sendEvent(stray, &shown);
            QCOMPARE(rec.count(), devtools::IsAvailable() ? 1 : 0);
            delete stray;
        }

        // Without the tools nothing is added (an earlier row may have made the window by hand).
        CLogViewerWnd* existing = CLogViewerWnd::Instance();
        const int tabsBefore = existing ? existing->findChild<QTabWidget*>()->count() : 0;
        bool made = false;
        devtools::AddCustomTab(QStringLiteral("Probe"), core::CSafeFunction<QWidget*()>(qApp, [&made]() -> QWidget* {
                                   made = true;
                                   return new QLabel(QStringLiteral("probe page"));
                               }));
        if (!devtools::IsAvailable()) {
            QCOMPARE(CLogViewerWnd::Instance(), existing);
            if (existing)
                QCOMPARE(existing->findChild<QTabWidget*>()->count(), tabsBefore);
            QVERIFY(!made);
            return;
        }
        auto* tabs = CLogViewerWnd::Instance()->findChild<QTabWidget*>();
        QVERIFY(tabs);
        QStringList titles;
        for (int i = 0; i < tabs->count(); ++i)
            titles << tabs->tabText(i);
        QCOMPARE(titles,
                 (QStringList{QStringLiteral("标准输出"), QStringLiteral("性能监控"), QStringLiteral("测试界面"),
                              QStringLiteral("单元测试"), QStringLiteral("Probe")}));
        QVERIFY(!made);  // pages are made when first opened
        tabs->setCurrentIndex(2);
        auto* placeholder = tabs->widget(2)->findChild<QLabel*>();
        QVERIFY(placeholder);
        QCOMPARE(placeholder->text(), QStringLiteral("欢迎来到无人的荒漠! 搜索我，你可以学会很方便地往这里添加Tab!"));
        tabs->setCurrentIndex(4);
        QVERIFY(made);
        tabs->setCurrentIndex(0);
    }
    void popupWatch_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("asserts");
        QTest::newRow("stray widget") << "stray" << 1;
        QTest::newRow("declared popup") << "declared" << 0;
        QTest::newRow("window") << "window" << 0;
        QTest::newRow("child") << "child" << 0;
    }
    void popupWatch() {
        QFETCH(QString, kind);
        QFETCH(int, asserts);
        QWidget parent;
        auto* w = new QWidget(&parent);
        w->setObjectName(QStringLiteral("strayOne"));
        if (kind != QLatin1String("child"))
            w->QObject::setParent(nullptr);  // a widget cut loose: no parent, no window flag
        if (kind == QLatin1String("declared"))
            w->setProperty("popup_widget", true);
        if (kind == QLatin1String("window"))
            w->setWindowFlags(Qt::Tool);
        lxtest::AssertRecorder rec;
        lxtest::LogCapture capture;
        QShowEvent show;
        for (int i = 0; i < 2; ++i)
            QVERIFY(!devtools::detail::FilterApplicationEvent(w, &show, true));  // never consumed
        QCOMPARE(rec.count(), 2 * asserts);
        const QString text = QStringLiteral("suspected unexpected popup classname = QWidget objectname = strayOne");
        QCOMPARE(capture.texts().count(text), 2 * asserts);
        if (asserts) {
            const auto a = rec.asserts().front();
            QCOMPARE(a.strFile, std::string("LxPlatform/LxUIKit/DevTools/LxDevTools"));
            QCOMPARE(a.i32Line, 86);
            QCOMPARE(a.strExpression, std::string("false"));
            QCOMPARE(a.i32Severity, 3);
            const FrameWork::LogContext r = capture.records()[capture.texts().indexOf(text)];
            QCOMPARE(r.i32Level, 16);
            QCOMPARE(r.i32Line, 87);
            QCOMPARE(r.strFunction, std::string("eventFilter"));
            QCOMPARE(r.strModule, std::string("LxUIKit"));
        }
        if (kind != QLatin1String("child"))
            delete w;
    }
    void logHookSkipsEmptyAndFeedsViewerFirst() {
        if (!devtools::IsAvailable())
            QSKIP("the viewer collects only with the developer tools");
        CLogViewerWnd* wnd = CLogViewerWnd::Singleton();
        wnd->show();
        QStringList seen;
        bool viewerHadIt = false;
        bool onMain = true;
        devtools::auto_test::InitAutoTestFunction([&](const FrameWork::LogContext& ctx) {
            seen << ctx.strText;
            onMain = onMain && QThread::currentThread() == qApp->thread();
            viewerHadIt = !wnd->Lines().isEmpty() && wnd->Lines().last().strMessage == ctx.strText;
        });
        FrameWork::LogContext ctx;
        ctx.bMainThread = true;
        ctx.strModule = "Host";
        devtools::detail::OnLogRecord(ctx);  // empty: neither the viewer nor the callback
        const int before = wnd->Lines().size();
        ctx.strText = QStringLiteral("hook record");
        devtools::detail::OnLogRecord(ctx);
        QCOMPARE(wnd->Lines().size(), before + 1);
        QCOMPARE(seen, QStringList{QStringLiteral("hook record")});
        QVERIFY(viewerHadIt);

        std::thread worker([] {
            FrameWork::LogContext w;
            w.strModule = "Host";
            w.strText = QStringLiteral("from worker");
            devtools::detail::OnLogRecord(w);
        });
        worker.join();
        QTRY_COMPARE(seen.size(), 2);
        QCOMPARE(seen.last(), QStringLiteral("from worker"));
        QVERIFY(onMain);
    }
    void unknownSchemeShowsTipAndLogs() {
        devtools::scheme::InitSchemeFunction();
        QWidget host;
        lxtest::LogCapture capture;
        QVERIFY(!core::scheme::OpenUrl(QStringLiteral("nowhere://page?id=7"), &host));
        LDialog* dlg = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<LDialog*>(w); d && d->isVisible())
                dlg = d;
        QVERIFY(dlg);
        QCOMPARE(dlg->lxStyle(), 2);
        QCOMPARE(dlg->title(), lxstdui_multi_lang::gui_helper::textTip());
        QCOMPARE(dlg->content(), lxstdui_multi_lang::gui_helper::textPageLoadFailed());
        QCOMPARE(dlg->confirmText(), lxstdui_multi_lang::gui_helper::textIKnow());
        const int at = capture.texts().indexOf(QStringLiteral("Load scheme url fail!!! url = nowhere://page?id=7"));
        QVERIFY(at >= 0);
        const FrameWork::LogContext r = capture.records()[at];
        QCOMPARE(r.i32Level, 4);
        QCOMPARE(r.i32Line, 374);
        QCOMPARE(r.strFunction, std::string("operator()"));
        dlg->close();
    }
    void modalBypassKeepsToolWindowUsable() {
        QWidget mainWnd;
        mainWnd.show();
        QWidget tool;
        auto* button = new QPushButton(QStringLiteral("press"), &tool);
        button->setGeometry(10, 10, 80, 30);
        tool.resize(200, 100);
        tool.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tool));
        lx_devtools::LModalBypassHelper::Attach(&tool);

        QDialog modal;
        modal.setWindowModality(Qt::ApplicationModal);
        modal.show();
        QVERIFY(QTest::qWaitForWindowExposed(&modal));
        // The application's modality is unchanged for everyone else.
        QVERIFY(Blocked(&mainWnd));
        QVERIFY(!Blocked(&tool));
        QCOMPARE(tool.windowHandle()->transientParent(), modal.windowHandle());

        int clicks = 0;
        connect(button, &QPushButton::clicked, [&clicks] { ++clicks; });
        QTest::mouseClick(tool.windowHandle(), Qt::LeftButton, {}, button->geometry().center());
        QCOMPARE(clicks, 1);

        // A second modal: the tool follows it the next time it is shown.
        QDialog second;
        second.setWindowModality(Qt::ApplicationModal);
        second.show();
        QVERIFY(QTest::qWaitForWindowExposed(&second));
        tool.hide();
        tool.show();
        QCOMPARE(tool.windowHandle()->transientParent(), second.windowHandle());
        QVERIFY(!Blocked(&tool));
        QTest::mouseClick(tool.windowHandle(), Qt::LeftButton, {}, button->geometry().center());
        QCOMPARE(clicks, 2);
        second.close();
        modal.close();
        QVERIFY(!Blocked(&mainWnd));
    }
    void attachFindsTheSameHelper() {
        QVERIFY(!lx_devtools::LModalBypassHelper::Attach(nullptr));
        auto* w = new QWidget;
        auto* a = lx_devtools::LModalBypassHelper::Attach(w);
        QVERIFY(a);
        QCOMPARE(lx_devtools::LModalBypassHelper::Attach(w), a);
        QCOMPARE(w->findChildren<lx_devtools::LModalBypassHelper*>().size(), 1);
        QPointer<lx_devtools::LModalBypassHelper> guard(a);
        delete w;
        QVERIFY(guard.isNull());  // dies with its target
        QEvent stray(QEvent::WindowBlocked);
        QApplication::sendEvent(qApp, &stray);  // no helper left to trip over it
    }

private:
    std::unique_ptr<lxtest::TempProductRoot> m_root;
};

QTEST_MAIN(TestDevTools)
#include "tst_DevTools.moc"
