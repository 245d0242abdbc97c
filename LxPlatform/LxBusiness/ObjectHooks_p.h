#pragma once
// Bookkeeping of QObjects through Qt's object hooks (qtHookData AddQObject / RemoveQObject).
// The hooks run on whatever thread makes or destroys an object, so the state sits behind a mutex;
// it is never destroyed, because objects keep dying during static destruction.
//
// Install() remembers the hooks already in place and calls them after its own; Uninstall() puts
// them back, unless someone installed a hook over ours meanwhile, in which case ours stays in
// the chain and only passes calls on.

#include <QMap>
#include <QString>

namespace lxbusiness {
namespace hooks {

struct Counts {
    qint64 i64LiveObjects = 0;
    qint64 i64LiveWidgets = 0;
    qint64 i64TotalObjects = 0;
    qint64 i64TotalWidgets = 0;
};

// GUI thread. Installing again while installed does nothing; a fresh install starts from zero.
void Install();
void Uninstall();
bool IsInstalled();

Counts GetCounts();
// Looks up the class of GUI-thread objects made since the last look-up (GUI thread).
void ResolvePending();
// Class name -> count. Both resolve pending objects first.
QMap<QString, qint64> ActiveByClass();
QMap<QString, qint64> DestroyedByClass();

}  // namespace hooks
}  // namespace lxbusiness
