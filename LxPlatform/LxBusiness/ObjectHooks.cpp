#include <LxBusiness/ObjectHooks_p.h>

#include <LxBusiness/LxBusinessLog_p.h>

#include <private/qhooks_p.h>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <algorithm>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

namespace lxbusiness {
namespace hooks {
namespace {

constexpr int kPending = -1;
constexpr int kPlainObject = 0;  // index of "QObject": objects whose class could not be looked up

struct Entry {
    int i32Class;
    bool bWidget;
};

// Posted to itself: looks up the classes of new objects at the next turn of the event loop.
class Resolver : public QObject {
public:
    using QObject::QObject;
    ~Resolver() override;
    bool event(QEvent* e) override {
        if (e->type() != QEvent::User)
            return QObject::event(e);
        ResolvePending();
        return true;
    }
};

struct State {
    std::mutex mutex;
    bool bInstalled = false;   // counting
    bool bInChainAdd = false;  // our function sits in Qt's hook slot or in someone's chain
    bool bInChainRemove = false;
    quintptr prevAdd = 0;
    quintptr prevRemove = 0;
    std::thread::id guiThread;
    std::unordered_map<QObject*, Entry> live;
    std::vector<QObject*> pending;
    bool bResolvePosted = false;
    Resolver* pResolver = nullptr;
    std::vector<QString> vecNames;
    std::unordered_map<const QMetaObject*, int> mapIndex;
    std::vector<qint64> vecDestroyed;
    qint64 i64LiveWidgets = 0;
    qint64 i64TotalObjects = 0;
    qint64 i64TotalWidgets = 0;

    void Reset() {
        live.clear();
        pending.clear();
        vecNames.assign(1, QStringLiteral("QObject"));
        mapIndex.clear();
        mapIndex[&QObject::staticMetaObject] = kPlainObject;
        vecDestroyed.assign(1, 0);
        i64LiveWidgets = i64TotalObjects = i64TotalWidgets = 0;
    }
};

State& S() {
    static State* s = new State;  // never destroyed: hooks may fire during static destruction
    return *s;
}

Resolver::~Resolver() {
    std::lock_guard<std::mutex> lock(S().mutex);
    if (S().pResolver == this)
        S().pResolver = nullptr;
}

void OnAdd(QObject* object) {
    State& s = S();
    quintptr prev = 0;
    Resolver* post = nullptr;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        prev = s.prevAdd;
        if (s.bInstalled) {
            const bool widget = object->isWidgetType();  // set before QObject's constructor runs
            const bool gui = std::this_thread::get_id() == s.guiThread;
            s.live[object] = Entry{gui ? kPending : kPlainObject, widget};
            ++s.i64TotalObjects;
            if (widget) {
                ++s.i64LiveWidgets;
                ++s.i64TotalWidgets;
            }
            if (gui) {
                s.pending.push_back(object);
                if (!s.bResolvePosted && s.pResolver) {
                    s.bResolvePosted = true;
                    post = s.pResolver;
                }
            }
        }
    }
    if (post)
        QCoreApplication::postEvent(post, new QEvent(QEvent::User));
    if (prev)
        // NOLINTNEXTLINE(performance-no-int-to-ptr): Qt keeps hook functions as integers
        reinterpret_cast<QHooks::AddQObjectCallback>(prev)(object);
}

void OnRemove(QObject* object) {
    State& s = S();
    quintptr prev = 0;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        prev = s.prevRemove;
        if (s.bInstalled) {
            auto it = s.live.find(object);
            if (it != s.live.end()) {  // objects made before the install are not known
                const int cls = it->second.i32Class == kPending ? kPlainObject : it->second.i32Class;
                ++s.vecDestroyed[size_t(cls)];
                if (it->second.bWidget)
                    --s.i64LiveWidgets;
                s.live.erase(it);
            }
        }
    }
    if (prev)
        // NOLINTNEXTLINE(performance-no-int-to-ptr): Qt keeps hook functions as integers
        reinterpret_cast<QHooks::RemoveQObjectCallback>(prev)(object);
}

}  // namespace

void Install() {
    State& s = S();
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        if (s.bInstalled)
            return;
    }
    // Made before the hooks count anything, outside the lock (its construction runs the hooks).
    auto* resolver = new Resolver(QCoreApplication::instance());
    bool chainedAdd = false;
    bool chainedRemove = false;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        s.Reset();
        s.guiThread = std::this_thread::get_id();
        s.pResolver = resolver;
        s.bResolvePosted = false;
        // Still in the chain from an earlier install (someone hooked over us): stay where we are.
        if (!s.bInChainAdd) {
            s.prevAdd = qtHookData[QHooks::AddQObject];
            qtHookData[QHooks::AddQObject] = reinterpret_cast<quintptr>(&OnAdd);
            s.bInChainAdd = true;
        }
        if (!s.bInChainRemove) {
            s.prevRemove = qtHookData[QHooks::RemoveQObject];
            qtHookData[QHooks::RemoveQObject] = reinterpret_cast<quintptr>(&OnRemove);
            s.bInChainRemove = true;
        }
        s.bInstalled = true;
        chainedAdd = s.prevAdd != 0;
        chainedRemove = s.prevRemove != 0;
    }
    // Logged outside the lock: writing a log line may make objects, which runs the hooks.
    LXBUSINESS_LOG_INFO("object hooks installed (chained: add {}, remove {})", chainedAdd, chainedRemove);
}

void Uninstall() {
    State& s = S();
    Resolver* resolver = nullptr;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        if (!s.bInstalled)
            return;
        s.bInstalled = false;
        if (qtHookData[QHooks::AddQObject] == reinterpret_cast<quintptr>(&OnAdd)) {
            qtHookData[QHooks::AddQObject] = s.prevAdd;
            s.prevAdd = 0;
            s.bInChainAdd = false;
        }
        if (qtHookData[QHooks::RemoveQObject] == reinterpret_cast<quintptr>(&OnRemove)) {
            qtHookData[QHooks::RemoveQObject] = s.prevRemove;
            s.prevRemove = 0;
            s.bInChainRemove = false;
        }
        s.live.clear();
        s.pending.clear();
        resolver = s.pResolver;
        s.pResolver = nullptr;
    }
    delete resolver;
}

bool IsInstalled() {
    std::lock_guard<std::mutex> lock(S().mutex);
    return S().bInstalled;
}

Counts GetCounts() {
    State& s = S();
    std::lock_guard<std::mutex> lock(s.mutex);
    Counts c;
    c.i64LiveObjects = qint64(s.live.size());
    c.i64LiveWidgets = s.i64LiveWidgets;
    c.i64TotalObjects = s.i64TotalObjects;
    c.i64TotalWidgets = s.i64TotalWidgets;
    return c;
}

void ResolvePending() {
    State& s = S();
    std::vector<QObject*> candidates;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        s.bResolvePosted = false;
        if (std::this_thread::get_id() != s.guiThread)
            return;
        candidates.swap(s.pending);
        // Addresses are reused: keep only objects that are alive and still waiting.
        auto end = std::remove_if(candidates.begin(), candidates.end(), [&](QObject* o) {
            auto it = s.live.find(o);
            return it == s.live.end() || it->second.i32Class != kPending;
        });
        candidates.erase(end, candidates.end());
    }
    // GUI-thread objects cannot die while this runs on the GUI thread; metaObject() is called
    // without the lock because it may make objects of its own.
    std::vector<const QMetaObject*> metas;
    metas.reserve(candidates.size());
    for (QObject* o : candidates)
        metas.push_back(o->metaObject());
    std::lock_guard<std::mutex> lock(s.mutex);
    for (size_t i = 0; i < candidates.size(); ++i) {
        auto it = s.live.find(candidates[i]);
        if (it == s.live.end() || it->second.i32Class != kPending)
            continue;
        auto idx = s.mapIndex.find(metas[i]);
        if (idx == s.mapIndex.end()) {
            idx = s.mapIndex.emplace(metas[i], int(s.vecNames.size())).first;
            s.vecNames.push_back(QString::fromLatin1(metas[i]->className()));
            s.vecDestroyed.push_back(0);
        }
        it->second.i32Class = idx->second;
    }
}

QMap<QString, qint64> ActiveByClass() {
    ResolvePending();
    State& s = S();
    std::lock_guard<std::mutex> lock(s.mutex);
    QMap<QString, qint64> out;
    for (const auto& kv : s.live) {
        const int cls = kv.second.i32Class == kPending ? kPlainObject : kv.second.i32Class;
        out[s.vecNames[size_t(cls)]] += 1;
    }
    return out;
}

QMap<QString, qint64> DestroyedByClass() {
    ResolvePending();
    State& s = S();
    std::lock_guard<std::mutex> lock(s.mutex);
    QMap<QString, qint64> out;
    for (size_t i = 0; i < s.vecDestroyed.size(); ++i)
        if (s.vecDestroyed[i] > 0)
            out[s.vecNames[i]] += s.vecDestroyed[i];
    return out;
}

}  // namespace hooks
}  // namespace lxbusiness
