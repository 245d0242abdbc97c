#pragma once
// _CMessageDispatch: process-wide numbered messages from the host to whoever bound them (flyouts
// follow the main window this way). A binding lives as long as its owner object: once the owner is
// destroyed it is never called again. Dispatch runs on the GUI thread; Post queues from any thread.

#include <LxCore/LxCoreExport.h>
#include <LxCore/ProtoValue.h>

#include <QObject>
#include <QPointer>

#include <atomic>
#include <cstdint>
#include <functional>
#include <vector>

// NOLINTNEXTLINE(bugprone-reserved-identifier): a name the host's code calls
class LXCORE_EXPORT _CMessageDispatch {
public:
    using Handler = std::function<void(int i32MsgId, const core::CProtoValue& params)>;

    static _CMessageDispatch* instance();

    // Returns a binding id (0 when refused: no owner or no handler).
    uint64_t Bind(int i32MsgId, QObject* owner, Handler handler);
    void Unbind(uint64_t u64BindingId);
    // Calls every live binding of the message in binding order; returns how many were called.
    int Dispatch(int i32MsgId, const core::CProtoValue& params = core::CProtoValue());
    void Post(int i32MsgId, const core::CProtoValue& params = core::CProtoValue());
    int BindingCount(int i32MsgId);
    // Messages dispatched since process start (the pushes the host delivered), any thread.
    static uint64_t TotalPushCount();

private:
    struct Binding {
        uint64_t u64Id;
        int i32MsgId;
        QPointer<QObject> pOwner;
        Handler handler;
    };
    void Prune();
    std::vector<Binding> m_vecBindings;
    uint64_t m_u64NextId = 1;
    static std::atomic<uint64_t> s_u64Pushes;
};
