// A minimal host: the start-up order of a real one, its delegates, and one widget of the kit.
#include <LxUIKit/LxUIKit.h>

#include <QApplication>
#include <QLabel>

#include <cstdio>

// A host's own formatter for Qt strings: the kit's headers must not bring a second one.
template <>
struct fmt::formatter<QString> : fmt::formatter<fmt::string_view> {
    template <typename Ctx>
    auto format(const QString& s, Ctx& ctx) const -> decltype(ctx.out()) {
        const QByteArray utf8 = s.toUtf8();
        return fmt::formatter<fmt::string_view>::format(fmt::string_view(utf8.constData(), size_t(utf8.size())), ctx);
    }
};

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
    LX_LOG_INFO("Consumer", "host started: {}", QStringLiteral("ok"));
    lxuikit::Uninit_LxUiKit_OnProcessExit_MainThread();
    std::printf("consumer %s\n", ok ? "ok" : "FAILED");
    return ok ? 0 : 1;
}
