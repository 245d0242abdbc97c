// A minimal host: the start-up order of a real one, its delegates, and one widget of the kit.
#include <LxUIKit/LxUIKit.h>

#include <QApplication>
#include <QLabel>

#include <cstdio>

int main(int argc, char* argv[]) {
    const core::CoreInitParam param = gui::GetCoreInitParamVeryFirst();
    QApplication app(argc, argv);
    core::InitCore(param);

    int reports = 0;
    lxuikit_report::setReportDelegate([&](const std::string&, int, const Json::Value&) { return ++reports > 0; });
    lxuikit_web::setShowWebViewDelegate([](const QString&) {});
    lxuikit::Init_LxUiKit_AfterProcessStart_MainThread();

    core::pattern::CLazyLoadWidget lazy(nullptr, core::CSafeFunction<QWidget*()>([] { return new QLabel("hi"); }));
    lazy.show();
    lxuikit::Init_LxUiKit_AfterLoginWndShowed_MainThread();

    const bool ok = lxuikit_report::Report("consumer_started", 1, Json::Value()) && lazy.IsContentCreated() &&
                    reports == 1 && devtools::IsAvailable() == (LX_DEVTOOLS_ENABLED != 0);
    lxuikit::Uninit_LxUiKit_OnProcessExit_MainThread();
    std::printf("consumer %s\n", ok ? "ok" : "FAILED");
    return ok ? 0 : 1;
}
