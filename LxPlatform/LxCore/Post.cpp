#include <LxCore/Post.h>

#include <LxCore/LxCoreLog_p.h>
#include <LxCore/ThreadSanitizer_p.h>

#include <QCoreApplication>
#include <QEvent>
#include <QThread>
#include <QTimer>

namespace core {
namespace post {

namespace {

// A task travels to the main thread as an event of its own, posted to a receiver that lives there.
// Tasks and Qt's queued calls share the main thread's event queue, so they run in the order they
// were posted.
class CTaskEvent : public QEvent {
public:
    explicit CTaskEvent(std::function<void()> task) : QEvent(Type()), m_task(std::move(task)) {}

    static QEvent::Type Type() {
        static const auto s_type = static_cast<QEvent::Type>(QEvent::registerEventType());
        return s_type;
    }

    std::function<void()> m_task;
};

class CTaskReceiver : public QObject {
public:
    bool event(QEvent* e) override {
        if (e->type() != CTaskEvent::Type())
            return QObject::event(e);
        auto* task = static_cast<CTaskEvent*>(e);
        LX_TSAN_ACQUIRE(task);
        // Moved out first: the task may post again or spin an event loop of its own.
        const std::function<void()> run = std::move(task->m_task);
        run();
        return true;
    }
};

// Made on the first post, in whichever thread that is, and handed to the main thread. It outlives
// the application object on purpose: tasks posted while one application ends and the next starts
// (test programs do that) still find it.
QObject* Receiver(QCoreApplication* app) {
    static QObject* const s_receiver = [app] {
        auto* receiver = new CTaskReceiver;
        receiver->moveToThread(app->thread());
        return receiver;
    }();
    return s_receiver;
}

}  // namespace

void ToMain(std::function<void()> task) {
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || !task) {
        LXCORE_LOG_WARN("post::ToMain dropped a task: {}", app ? "empty task" : "no application");
        return;
    }
    auto* event = new CTaskEvent(std::move(task));
    LX_TSAN_RELEASE(event);
    QCoreApplication::postEvent(Receiver(app), event);
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
