#pragma once
// LModalBypassHelper keeps a tool window usable while an application-modal dialog is open, without
// changing the application's modality: the dialog stays modal for every other window.
//
// Qt blocks every window that is not a transient descendant of the active modal window. The helper
// makes the modal window the tool window's transient parent whenever the tool window is shown or
// told it is blocked, asks Qt to recompute the blocked state at once, and swallows the blocked
// notification. It is a child of its target and dies with it.
//
//   lx_devtools::LModalBypassHelper::Attach(toolWindow);  // once, when the window builds itself

#include <LxUIKit/LxUIKitExport.h>

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace lx_devtools {

class LXUIKIT_EXPORT LModalBypassHelper : public QObject {
    Q_OBJECT
public:
    // The existing helper of `w`, or a new one; null for a null widget. At most one per widget.
    static LModalBypassHelper* Attach(QWidget* w);

    explicit LModalBypassHelper(QWidget* target);

    // Re-parents the target's window to the current modal window (if any, and not the target
    // itself) and refreshes Qt's blocked state of the target's window.
    void SyncTransientParent();

    bool eventFilter(QObject* obj, QEvent* ev) override;

private:
    QPointer<QWidget> m_target;
};

}  // namespace lx_devtools
