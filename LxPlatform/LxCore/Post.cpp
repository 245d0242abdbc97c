#include <LxCore/Post.h>

#include <LxCore/LxCoreLog_p.h>

#include <QCoreApplication>
#include <QMetaObject>
#include <QTimer>

namespace core {
namespace post {

void ToMain(std::function<void()> task) {
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || !task) {
        LXCORE_LOG_WARN("post::ToMain dropped a task: {}", app ? "empty task" : "no application");
        return;
    }
    QMetaObject::invokeMethod(app, std::move(task), Qt::QueuedConnection);
}

void ToMainDelay(std::function<void()> task, int i32DelayMs) {
    if (i32DelayMs <= 0) {
        ToMain(std::move(task));
        return;
    }
    // The timer must be started by the main thread, so hop there first.
    ToMain([task = std::move(task), i32DelayMs]() mutable {
        QTimer::singleShot(i32DelayMs, QCoreApplication::instance(), std::move(task));
    });
}

}  // namespace post
}  // namespace core
