#include <LxUIKit/DevTools/LModalBypassHelper.h>

#include <private/qguiapplication_p.h>
#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

namespace lx_devtools {
namespace {
const char kHelperName[] = "__LModalBypassHelper__";
}

LModalBypassHelper* LModalBypassHelper::Attach(QWidget* w) {
    if (!w)
        return nullptr;
    if (auto* existing = w->findChild<LModalBypassHelper*>(QLatin1String(kHelperName), Qt::FindDirectChildrenOnly))
        return existing;
    return new LModalBypassHelper(w);
}

LModalBypassHelper::LModalBypassHelper(QWidget* target) : QObject(target), m_target(target) {
    setObjectName(QLatin1String(kHelperName));
    if (QCoreApplication* app = QCoreApplication::instance())
        app->installEventFilter(this);
    if (target && target->windowHandle())
        SyncTransientParent();
}

void LModalBypassHelper::SyncTransientParent() {
    if (!m_target)
        return;
    QWindow* handle = m_target->windowHandle();
    if (!handle)
        return;
    QWindow* modal = QGuiApplication::modalWindow();
    if (!modal || modal == handle)
        return;
    if (handle->transientParent() != modal)
        handle->setTransientParent(modal);
    // Qt keeps the blocked flag until the next modality change: refresh it now.
    QGuiApplicationPrivate::updateBlockedStatus(handle);
}

bool LModalBypassHelper::eventFilter(QObject* obj, QEvent* ev) {
    if (!m_target)
        return false;
    if (ev->type() == QEvent::Show && obj == m_target) {
        SyncTransientParent();
        return false;
    }
    if (ev->type() == QEvent::WindowBlocked) {
        QWindow* handle = m_target->windowHandle();
        if (handle && obj == handle) {
            SyncTransientParent();
            return true;
        }
    }
    return false;
}

}  // namespace lx_devtools
