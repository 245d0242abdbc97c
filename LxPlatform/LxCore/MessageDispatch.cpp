#include <LxCore/MessageDispatch.h>

#include <LxCore/LxCoreLog_p.h>
#include <LxCore/Post.h>

#include <algorithm>

std::atomic<uint64_t> _CMessageDispatch::s_u64Pushes{0};

uint64_t _CMessageDispatch::TotalPushCount() { return s_u64Pushes.load(); }

_CMessageDispatch* _CMessageDispatch::instance() {
    static _CMessageDispatch s;
    return &s;
}

uint64_t _CMessageDispatch::Bind(int i32MsgId, QObject* owner, Handler handler) {
    if (!LXCORE_ASSERT(owner && handler))
        return 0;
    LXCORE_ASSERT_MAIN_THREAD();
    Prune();
    const uint64_t id = m_u64NextId++;
    m_vecBindings.push_back(Binding{id, i32MsgId, owner, std::move(handler)});
    return id;
}

void _CMessageDispatch::Unbind(uint64_t u64BindingId) {
    m_vecBindings.erase(std::remove_if(m_vecBindings.begin(), m_vecBindings.end(),
                                       [&](const Binding& b) { return b.u64Id == u64BindingId; }),
                        m_vecBindings.end());
}

int _CMessageDispatch::Dispatch(int i32MsgId, const core::CProtoValue& params) {
    LXCORE_ASSERT_MAIN_THREAD();
    ++s_u64Pushes;
    // Handlers may bind or unbind while we iterate, so work on a snapshot of the ids.
    std::vector<uint64_t> ids;
    for (const Binding& b : m_vecBindings)
        if (b.i32MsgId == i32MsgId)
            ids.push_back(b.u64Id);
    int called = 0;
    for (uint64_t id : ids) {
        auto it =
            std::find_if(m_vecBindings.begin(), m_vecBindings.end(), [&](const Binding& b) { return b.u64Id == id; });
        if (it == m_vecBindings.end() || it->pOwner.isNull())
            continue;
        Handler h = it->handler;  // copy: the binding may go away inside the call
        h(i32MsgId, params);
        ++called;
    }
    Prune();
    return called;
}

void _CMessageDispatch::Post(int i32MsgId, const core::CProtoValue& params) {
    core::post::ToMain([i32MsgId, params] { _CMessageDispatch::instance()->Dispatch(i32MsgId, params); });
}

int _CMessageDispatch::BindingCount(int i32MsgId) {
    Prune();
    return int(std::count_if(m_vecBindings.begin(), m_vecBindings.end(),
                             [&](const Binding& b) { return b.i32MsgId == i32MsgId; }));
}

void _CMessageDispatch::Prune() {
    m_vecBindings.erase(
        std::remove_if(m_vecBindings.begin(), m_vecBindings.end(), [](const Binding& b) { return b.pOwner.isNull(); }),
        m_vecBindings.end());
}
