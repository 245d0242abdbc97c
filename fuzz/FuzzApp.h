#pragma once
// The one Qt application of a fuzz process, on the offscreen platform. Qt's own warnings are
// silenced: hostile inputs make Qt warn on nearly every run, which would drown libFuzzer's output
// and slow it down; the kit's log lines still go to its log file.

#include <QApplication>

namespace lx_fuzz {

inline QApplication* App() {
    static QApplication* s_pApp = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        static int argc = 1;
        static char arg0[] = "lxuikit_fuzz";
        static char* argv[] = {arg0, nullptr};
        return new QApplication(argc, argv);
    }();
    return s_pApp;
}

}  // namespace lx_fuzz
