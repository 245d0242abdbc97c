#include <LxUIKit/DevTools/LxDevTools.h>

#include <LxCore/Post.h>
#include <LxCore/Scheme.h>
#include <LxStdUI/LDialog.h>
#include <LxStdUI/MultiLang.h>
#include <LxUIKit/DevTools/Log/LogViewerWnd.h>
#include <LxUIKit/DevTools/LxDevTools_p.h>
#include <LxUIKit/DevTools/Performance/FpsMonitorDialog.h>
#include <LxUIKit/DevTools/Performance/PerformanceMonitorWnd.h>
#include <LxUIKit/DevTools/Spy/SpyToolWnd.h>
#include <LxUIKit/DevTools/UnitTest/UnitTestWnd.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QThread>
#include <QWidget>
#include <QWindow>

namespace devtools {
namespace {

bool g_bInitialized = false;
// Receives every record after the log viewer. Swapped on the main thread only, without a lock.
std::function<void(const FrameWork::LogContext&)> g_autoTestLogCallback;

// Sees every event of every object once installed on the application. Stateless; never deleted.
class DevToolShortcutHandler : public QObject {
public:
    bool eventFilter(QObject* obj, QEvent* ev) override {
        if (detail::FilterApplicationEvent(obj, ev, IsAvailable()))
            return true;
        return QObject::eventFilter(obj, ev);
    }
};

void CheckUnexpectedPopup(QObject* obj) {
    if (obj->isWindowType() || obj->parent() || !obj->isWidgetType())
        return;
    auto* w = static_cast<QWidget*>(obj);
    const QVariant declared = w->property("popup_widget");
    if (declared.isValid() && declared.toBool())
        return;
    if (w->windowFlags() & Qt::Window)
        return;
    FrameWork::_FW_OnAssertFailed(3, "LxUIKit", __FILE__, 86, "false");
    FrameWork::WriteLogRaw(__FILE__, 87, "eventFilter", 16, "LxUIKit",
                           lx_log_detail::Format("suspected unexpected popup classname = {} objectname = {}",
                                                 w->metaObject()->className(), w->objectName()));
}

void OnUnknownScheme(const QString& url, QObject* context) {
    auto* dlg = new LDialog(nullptr);
    dlg->setLxStyle(2);
    dlg->setTitle(lxstdui_multi_lang::gui_helper::textTip());
    dlg->setContent(lxstdui_multi_lang::gui_helper::textPageLoadFailed());
    dlg->setConfirmText(lxstdui_multi_lang::gui_helper::textIKnow());
    QWidget* parentWidget = context && context->isWidgetType() ? static_cast<QWidget*>(context) : nullptr;
    dlg->showCenter(parentWidget, -1);  // no width: the dialog takes its own size
    FrameWork::WriteLogRaw(__FILE__, 374, "operator()", 4, "LxUIKit",
                           lx_log_detail::Format("Load scheme url fail!!! url = {}", url));
}

core::CSafeFunction<QWidget*()> AppGuarded(std::function<QWidget*()> fn) {
    return core::CSafeFunction<QWidget*()>(QCoreApplication::instance(), std::move(fn));
}

}  // namespace

namespace detail {

bool FilterApplicationEvent(QObject* obj, QEvent* ev, bool bAvailable) {
    switch (ev->type()) {
    case QEvent::ShortcutOverride: {
        auto* key = static_cast<QKeyEvent*>(ev);
        if (!(key->modifiers() & Qt::ControlModifier))
            return false;
        if (key->key() == Qt::Key_F9) {
            // Consumed even without the tools, so the key never reaches the application's own
            // shortcuts in one build and not in the other.
            if (bAvailable) {
                CLogViewerWnd* wnd = CLogViewerWnd::Singleton();
                if (wnd->isMinimized())
                    wnd->showNormal();
                else
                    wnd->show();
                wnd->raise();
            }
            return true;
        }
        if (key->key() == Qt::Key_F10) {
            if (!bAvailable)
                return false;
            initSpyToolWnd(true);
            return true;
        }
        return false;
    }
    case QEvent::Show: CheckUnexpectedPopup(obj); return false;
    default: return false;
    }
}

void OnLogRecord(const FrameWork::LogContext& ctx) {
    if (ctx.strText.isEmpty())
        return;
    CLogViewerWnd::addMessage(ctx);
    if (ctx.bMainThread) {
        if (g_autoTestLogCallback)
            g_autoTestLogCallback(ctx);
        return;
    }
    // The callback is main-thread state: a worker's record is handed over to the main loop.
    if (g_autoTestLogCallback && QCoreApplication::instance() && !QCoreApplication::closingDown()) {
        core::post::ToMain([copy = ctx]() {
            if (g_autoTestLogCallback)
                g_autoTestLogCallback(copy);
        });
    }
}

}  // namespace detail

void Init() {
    if (!IsAvailable())
        return;
    if (g_bInitialized)
        return;
    if (!LXUIKIT_ASSERT_MAIN_THREAD())
        return;
    g_bInitialized = true;
    QCoreApplication::instance()->installEventFilter(new DevToolShortcutHandler);

    CLogViewerWnd* wnd = CLogViewerWnd::Singleton();
    if (CLogViewerWnd::isAutoOpen())
        wnd->show();

    wnd->AddUserTab(QStringLiteral("性能监控"),
                    AppGuarded([]() -> QWidget* { return new CPerformanceMonitorWnd(nullptr); }));
    wnd->AddUserTab(
        QStringLiteral("测试界面"), AppGuarded([]() -> QWidget* {
            return new QLabel(QStringLiteral("欢迎来到无人的荒漠! 搜索我，你可以学会很方便地往这里添加Tab!"));
        }));
    wnd->AddUserTab(QStringLiteral("单元测试"), AppGuarded([]() -> QWidget* { return new CUnitTestWnd(nullptr); }));

    // A hook installed before the tools (a host's own log sink) keeps receiving every record.
    FrameWork::StdOutCallback previous = FrameWork::GetStdOutHook();
    if (previous) {
        FrameWork::_FW_InitStdOutInMainThread([previous](const FrameWork::LogContext& ctx) {
            detail::OnLogRecord(ctx);
            previous(ctx);
        });
    } else {
        FrameWork::_FW_InitStdOutInMainThread(&detail::OnLogRecord);
    }
    LXUIKIT_LOG_INFO("developer tools initialised");
}

bool IsInitialized() { return g_bInitialized; }

void AddCustomTab(const QString& title, core::CSafeFunction<QWidget*()> factory) {
    if (!IsAvailable())
        return;
    CLogViewerWnd::Singleton()->AddUserTab(title, std::move(factory));
}

void SetReportEnabled(bool enabled) { ILxUISpyReporter::SetEnabled(enabled); }

namespace fps {
void ShowFpsMonitor() { CFpsMonitorDialog::ShowDialog(); }
}  // namespace fps

namespace scheme {
void InitSchemeFunction() { core::scheme::RegisterUnknowSchemeCallBack(&OnUnknownScheme); }
}  // namespace scheme

namespace auto_test {
void InitAutoTestFunction(std::function<void(const FrameWork::LogContext&)> cb) {
    g_autoTestLogCallback = std::move(cb);
}
}  // namespace auto_test

}  // namespace devtools
